#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "machine/host/Host.h"
#include "machine/host/posix/HostErrors.h"

namespace bxvbwiz::host {
namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
// Without O_NONBLOCK a pipe with no writer would block for ever.
constexpr int kReading = O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC;
constexpr mode_t kNewFileMode = 0666;  // less the umask
constexpr mode_t kNewFolderMode = 0777;
constexpr mode_t kAllWrite = S_IWUSR | S_IWGRP | S_IWOTH;

std::int64_t ModifiedNanoseconds(const struct stat& status) {
#ifdef __APPLE__
  const timespec& time = status.st_mtimespec;
#else
  const timespec& time = status.st_mtim;
#endif
  return static_cast<std::int64_t>(time.tv_sec) * kNanosecondsPerSecond + time.tv_nsec;
}

FileStatus FromStat(const struct stat& status) {
  FileStatus result;
  result.kind = S_ISREG(status.st_mode)   ? FileKind::File
                : S_ISDIR(status.st_mode) ? FileKind::Folder
                : S_ISLNK(status.st_mode) ? FileKind::Link
                                          : FileKind::Other;
  result.writable = (status.st_mode & S_IWUSR) != 0;
  result.size = static_cast<std::uint64_t>(status.st_size);
  result.modifiedNanoseconds = ModifiedNanoseconds(status);
  result.inode = static_cast<std::uint64_t>(status.st_ino);
  result.device = static_cast<std::uint64_t>(status.st_dev);
  // Set-user-id bits must not pass on to bytes that somebody else wrote.
  result.permissions = status.st_mode & 0777;
  return result;
}

SystemError LastError() {
  return ErrorOf(errno);
}

// A descriptor that is closed on every way out.
class Descriptor {
 public:
  explicit Descriptor(int file) : file_(file) {}
  ~Descriptor() {
    if (file_ >= 0) close(file_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  bool IsOpen() const { return file_ >= 0; }
  int Get() const { return file_; }
  // The last moment at which a full disk can show.
  SystemError Close() {
    const int result = close(file_);
    file_ = -1;
    return result == 0 || errno == EINTR ? SystemError::Success : LastError();
  }

 private:
  int file_;
};

SystemError WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return LastError();
    if (written == 0) return SystemError::DiskFull;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return SystemError::Success;
}

SystemError SetFileModified(int file, std::int64_t nanoseconds) {
  std::int64_t seconds = nanoseconds / kNanosecondsPerSecond;
  std::int64_t rest = nanoseconds % kNanosecondsPerSecond;
  if (rest < 0) {
    rest += kNanosecondsPerSecond;
    --seconds;
  }
  timespec time = {};
  time.tv_sec = static_cast<decltype(time.tv_sec)>(seconds);
  time.tv_nsec = static_cast<decltype(time.tv_nsec)>(rest);
  const timespec times[] = {time, time};
  return futimens(file, times) == 0 ? SystemError::Success : LastError();
}

// The mask that the system applies to a new file's mode may have taken some of the permissions.
SystemError SetPermissions(int file, mode_t permissions) {
  struct stat status = {};
  if (fstat(file, &status) != 0) return LastError();
  if ((status.st_mode & 0777) == permissions) return SystemError::Success;
  return fchmod(file, permissions) == 0 ? SystemError::Success : LastError();
}

SystemError FillNewFile(int file, std::string_view bytes, const ContentOptions& options) {
  if (options.permissions) {
    if (const SystemError error = SetPermissions(file, *options.permissions); error != SystemError::Success)
      return error;
  }
  SystemError error = WriteAll(file, bytes);
  if (error == SystemError::Success && options.modifiedNanoseconds)
    error = SetFileModified(file, *options.modifiedNanoseconds);
  if (error == SystemError::Success && options.flush && fsync(file) != 0) error = LastError();
  return error;
}

// A name in the folder of `path` that no other file has, unless somebody guesses it; creation checks that.
std::string TemporaryName(const std::string& path) {
  static std::atomic<unsigned> count{0};
  std::string name = path.substr(0, path.rfind('/') + 1);
  name.append(".bxvbwiz-").append(std::to_string(getpid()));
  return name.append("-").append(std::to_string(++count)).append(".tmp");
}

}  // namespace

FileStatus StatusOf(const std::string& path) {
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0 ? FromStat(status) : FileStatus();
}

std::string RealPath(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
  return real ? real.get() : std::string();
}

bool IsAbsolutePath(const std::string& path) {
  return !path.empty() && path.front() == '/';
}

bool ListNames(const std::string& folder, std::vector<std::string>& names) {
  names.clear();
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder.c_str()), &closedir);
  if (!stream) return false;
  errno = 0;
  while (const dirent* entry = readdir(stream.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  return errno == 0;
}

InputFile::~InputFile() {
  if (file_ >= 0) close(static_cast<int>(file_));
}

SystemError InputFile::Open(const std::string& path) {
  const int file = open(path.c_str(), kReading);
  if (file < 0) return LastError();
  file_ = file;
  struct stat status = {};
  if (fstat(file, &status) != 0) return LastError();
  status_ = FromStat(status);
  return status_.kind == FileKind::File ? SystemError::Success : SystemError::AccessDenied;
}

SystemError InputFile::Read(char* buffer, std::size_t size, std::size_t& count) {
  count = 0;
  while (count < size) {
    const ssize_t got = read(static_cast<int>(file_), buffer + count, size - count);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return LastError();
    if (got == 0) break;
    count += static_cast<std::size_t>(got);
  }
  return SystemError::Success;
}

SystemError InputFile::ReadAt(std::uint64_t offset, char* buffer, std::size_t size, std::size_t& count) {
  count = 0;
  while (count < size) {
    const ssize_t got =
        pread(static_cast<int>(file_), buffer + count, size - count, static_cast<off_t>(offset + count));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return LastError();
    if (got == 0) break;
    count += static_cast<std::size_t>(got);
  }
  return SystemError::Success;
}

SystemError ReplaceContent(const std::string& path, std::string_view bytes, const ContentOptions& options) {
  const mode_t mode = options.permissions.value_or(kNewFileMode);
  std::string temporary;
  int file = -1;
  do {
    temporary = TemporaryName(path);
    file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
  } while (file < 0 && errno == EEXIST);
  if (file < 0) return LastError();
  Descriptor descriptor(file);
  SystemError error = FillNewFile(descriptor.Get(), bytes, options);
  const SystemError closed = descriptor.Close();
  if (error == SystemError::Success) error = closed;
  if (error == SystemError::Success && rename(temporary.c_str(), path.c_str()) != 0) error = LastError();
  if (error != SystemError::Success) unlink(temporary.c_str());
  return error;
}

#ifdef O_TMPFILE

FolderCopy::FolderCopy(const std::string& source, const std::string& target)
    : source_(open(source.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
      target_(open(target.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

FolderCopy::~FolderCopy() {
  if (source_ >= 0) close(static_cast<int>(source_));
  if (target_ >= 0) close(static_cast<int>(target_));
}

bool FolderCopy::CopyNew(const std::string& name, FileStatus& target) {
  char bytes[16'384];  // what counts as small
  struct stat status = {};
  {
    const Descriptor source(openat(static_cast<int>(source_), name.c_str(), kReading));
    if (!source.IsOpen() || fstat(source.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    if (status.st_size > static_cast<off_t>(sizeof(bytes))) return false;
    if (read(source.Get(), bytes, sizeof(bytes)) != status.st_size) return false;
  }
  // A file without a name, which gets its own at last: nobody meets half of it, and nothing remains of a
  // failure.
  const FileStatus from = FromStat(status);
  Descriptor copy(openat(static_cast<int>(target_), ".", O_WRONLY | O_TMPFILE | O_CLOEXEC, from.permissions));
  if (!copy.IsOpen()) return false;
  const std::string_view content(bytes, static_cast<std::size_t>(from.size));
  if (FillNewFile(copy.Get(), content, {from.permissions, from.modifiedNanoseconds, false}) !=
      SystemError::Success)
    return false;
  const std::string nameless = "/proc/self/fd/" + std::to_string(copy.Get());
  if (linkat(AT_FDCWD, nameless.c_str(), static_cast<int>(target_), name.c_str(), AT_SYMLINK_FOLLOW) != 0)
    return false;
  if (copy.Close() != SystemError::Success) {
    unlinkat(static_cast<int>(target_), name.c_str(), 0);
    return false;
  }
  if (fstat(static_cast<int>(target_), &status) == 0) target = FromStat(status);
  return true;
}

#else  // Only Linux has files without a name.

FolderCopy::FolderCopy(const std::string& /*source*/, const std::string& /*target*/) {}
FolderCopy::~FolderCopy() = default;
bool FolderCopy::CopyNew(const std::string& /*name*/, FileStatus& /*target*/) {
  return false;
}

#endif

SystemError AppendContent(const std::string& path, std::string_view bytes) {
  Descriptor file(
      open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC, kNewFileMode));
  if (!file.IsOpen()) return LastError();
  struct stat status = {};
  if (fstat(file.Get(), &status) != 0) return LastError();
  if (!S_ISREG(status.st_mode)) return SystemError::AccessDenied;
  const SystemError error = WriteAll(file.Get(), bytes);
  // What was written of a text that did not fit would stand before the whole text when it is tried again.
  if (error != SystemError::Success && ftruncate(file.Get(), status.st_size) != 0) return LastError();
  const SystemError closed = file.Close();
  return error == SystemError::Success ? closed : error;
}

SystemError Rename(const std::string& from, const std::string& to) {
#ifdef RENAME_NOREPLACE
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
    return SystemError::Success;
  if (errno != EINVAL && errno != ENOSYS) return LastError();  // not every file system knows the flag
#endif
  struct stat status = {};
  if (lstat(to.c_str(), &status) == 0) return SystemError::AlreadyExists;
  return rename(from.c_str(), to.c_str()) == 0 ? SystemError::Success : LastError();
}

SystemError RemoveFile(const std::string& path) {
  return unlink(path.c_str()) == 0 ? SystemError::Success : LastError();
}

SystemError MakeFolder(const std::string& path) {
  return mkdir(path.c_str(), kNewFolderMode) == 0 ? SystemError::Success : LastError();
}

SystemError SetWritable(const std::string& path, bool writable) {
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0) return LastError();
  const mode_t mode = status.st_mode & 07777;
  const mode_t wanted = writable ? mode | S_IWUSR : mode & ~kAllWrite;
  if (wanted == mode) return SystemError::Success;
  return chmod(path.c_str(), wanted) == 0 ? SystemError::Success : LastError();
}

SystemError SetModified(const std::string& path, std::int64_t nanoseconds) {
  // Opened for reading: a file that became read-only meanwhile can still be stamped by its owner.
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
  return file.IsOpen() ? SetFileModified(file.Get(), nanoseconds) : LastError();
}

}  // namespace bxvbwiz::host
