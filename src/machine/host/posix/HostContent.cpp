#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string>

#include "machine/host/posix/PosixFile.h"

// Reading, writing and copying of files.
namespace bxvbwiz::host {
namespace {

constexpr mode_t kNewFileMode = 0666;  // less the umask

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

// The umask may have removed some of a new file's permissions.
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

// A name in the folder of `path` that most likely no other file has; creating the file makes sure.
std::string TemporaryName(const std::string& path) {
  static std::atomic<unsigned> count{0};
  std::string name = path.substr(0, path.rfind('/') + 1);
  name.append(".bxvbwiz-").append(std::to_string(getpid()));
  return name.append("-").append(std::to_string(++count)).append(".tmp");
}

}  // namespace

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

namespace {

// Enters a file without a name into a folder.
bool GiveName(int file, int folder, const char* name) {
  if (linkat(file, "", folder, name, AT_EMPTY_PATH) == 0) return true;
  // Linux before 6.10 allows that to the superuser only.
  const std::string nameless = "/proc/self/fd/" + std::to_string(file);
  return errno == ENOENT && linkat(AT_FDCWD, nameless.c_str(), folder, name, AT_SYMLINK_FOLLOW) == 0;
}

}  // namespace

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
  // A file without a name, which gets its own when it is complete: no reader sees half of it, and a failure
  // leaves no trace.
  const FileStatus from = FromStat(status);
  Descriptor copy(openat(static_cast<int>(target_), ".", O_WRONLY | O_TMPFILE | O_CLOEXEC, from.permissions));
  if (!copy.IsOpen()) return false;
  const std::string_view content(bytes, static_cast<std::size_t>(from.size));
  if (FillNewFile(copy.Get(), content, {from.permissions, from.modifiedNanoseconds, false}) !=
      SystemError::Success)
    return false;
  if (!GiveName(copy.Get(), static_cast<int>(target_), name.c_str())) return false;
  if (copy.Close() != SystemError::Success) {
    unlinkat(static_cast<int>(target_), name.c_str(), 0);
    return false;
  }
  if (fstat(static_cast<int>(target_), &status) == 0) target = FromStat(status);
  return true;
}

#else  // only Linux has files without a name

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
  // Otherwise the part that was written would come before the whole text at the next try.
  if (error != SystemError::Success && ftruncate(file.Get(), status.st_size) != 0) return LastError();
  const SystemError closed = file.Close();
  return error == SystemError::Success ? closed : error;
}

}  // namespace bxvbwiz::host
