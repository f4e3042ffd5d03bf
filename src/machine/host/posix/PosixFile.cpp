#include "machine/host/posix/PosixFile.h"

#include <unistd.h>

#include <cerrno>

#include "machine/host/posix/HostErrors.h"

namespace bxvbwiz::host {
namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

std::int64_t ModifiedNanoseconds(const struct stat& status) {
#ifdef __APPLE__
  const timespec& time = status.st_mtimespec;
#else
  const timespec& time = status.st_mtim;
#endif
  return static_cast<std::int64_t>(time.tv_sec) * kNanosecondsPerSecond + time.tv_nsec;
}

}  // namespace

Descriptor::~Descriptor() {
  if (file_ >= 0) close(file_);
}

SystemError Descriptor::Close() {
  const int result = close(file_);
  file_ = -1;
  return result == 0 || errno == EINTR ? SystemError::Success : LastError();
}

SystemError LastError() {
  return ErrorOf(errno);
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
  // Without set-user-id bits, which must not go to a file with other content.
  result.permissions = status.st_mode & 0777;
  return result;
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

}  // namespace bxvbwiz::host
