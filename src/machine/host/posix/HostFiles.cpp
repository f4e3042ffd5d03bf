#include <dirent.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "machine/host/posix/PosixFile.h"

// What lies in a folder, and changes of names and attributes.
namespace bxvbwiz::host {
namespace {

constexpr mode_t kNewFolderMode = 0777;  // less the umask
constexpr mode_t kAllWrite = S_IWUSR | S_IWGRP | S_IWOTH;

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
  // Opened for reading, because the owner may set the time of a read-only file too.
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
  return file.IsOpen() ? SetFileModified(file.Get(), nanoseconds) : LastError();
}

}  // namespace bxvbwiz::host
