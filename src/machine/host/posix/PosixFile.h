#pragma once

#include <fcntl.h>
#include <sys/stat.h>

#include "machine/host/Host.h"

// What the files of this folder share.
namespace bxvbwiz::host {

// Without O_NONBLOCK opening a pipe with no writer would block for ever.
constexpr int kReading = O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC;

// A file descriptor that is closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int file) : file_(file) {}
  ~Descriptor();
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  bool IsOpen() const { return file_ >= 0; }
  int Get() const { return file_; }
  // Closes it now: only then some file systems report a full disk.
  SystemError Close();

 private:
  int file_;
};

// The error of the last call, which `errno` holds.
SystemError LastError();

FileStatus FromStat(const struct stat& status);

// Sets the times of the last change and of the last access.
SystemError SetFileModified(int file, std::int64_t nanoseconds);

}  // namespace bxvbwiz::host
