#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SystemError.h"

// What a machine folder needs of the computer that it lies on and the standard library does not have. Paths
// are paths of this computer in UTF-8, with "/" between the names on every system. No declaration here shows
// a type of an operating system.
namespace bxvbwiz::host {

enum class FileKind { Missing, File, Folder, Link, Other };

struct FileStatus {
  FileKind kind = FileKind::Missing;
  bool writable = false;  // the owner's permission, which also binds a user who may do everything
  std::uint64_t size = 0;
  std::int64_t modifiedNanoseconds = 0;  // since 1970
  std::uint64_t inode = 0;
  std::uint64_t device = 0;
  std::uint32_t permissions = 0;  // as the system has them; only ContentOptions takes them
};

// What lies at `path`; a link is not followed. Missing when it cannot be looked at.
FileStatus StatusOf(const std::string& path);

// The absolute path without links; empty when it leads nowhere.
std::string RealPath(const std::string& path);
// Whether a path needs no current folder (nor, on Windows, a current drive).
bool IsAbsolutePath(const std::string& path);

// The names in a folder without "." and "..", in no order. False when it cannot be read.
bool ListNames(const std::string& folder, std::vector<std::string>& names);

// A file opened for reading. Anything but a regular file is refused, at once.
class InputFile {
 public:
  InputFile() = default;
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  SystemError Open(const std::string& path);
  const FileStatus& Status() const { return status_; }  // when it was opened
  // Reads up to `size` bytes, fewer only at the file's end, and gives their number.
  SystemError Read(char* buffer, std::size_t size, std::size_t& count);
  // The same from `offset` on; do not use both for a file.
  SystemError ReadAt(std::uint64_t offset, char* buffer, std::size_t size, std::size_t& count);

 private:
  std::intptr_t file_ = -1;  // the system's handle; -1: none
  FileStatus status_;
};

// What a file written by ReplaceContent gets besides its bytes.
struct ContentOptions {
  std::optional<std::uint32_t> permissions;  // of a FileStatus; without: a new file's
  std::optional<std::int64_t> modifiedNanoseconds;
  // Waits until the bytes are on the disk before the old file goes. It is what takes the time; a file that
  // replaces none has nothing to lose in a power failure.
  bool flush = true;
};

// Makes `bytes` the content of `path`: a temporary file in the same folder is renamed over it, so that there
// is always the old file or the new one. On a failure nothing remains of the attempt.
SystemError ReplaceContent(const std::string& path, std::string_view bytes, const ContentOptions& options);

// Copies small files that are new in a folder. Both folders are opened once, where file by file every call
// would walk two whole paths.
class FolderCopy {
 public:
  // A folder that cannot be opened shows in CopyNew.
  FolderCopy(const std::string& source, const std::string& target);
  ~FolderCopy();
  FolderCopy(const FolderCopy&) = delete;
  FolderCopy& operator=(const FolderCopy&) = delete;

  // Copies a file with its permissions and its time; it appears whole or not at all. Gives the target
  // folder's status after it. False when nothing was done: it is missing, large, no regular file, not new, it
  // failed, a folder is not open, or this system has no way to do it. The usual way then does it or says why
  // not.
  bool CopyNew(const std::string& name, FileStatus& target);

 private:
  // The system's handles, where it has a use for them; -1: none.
  [[maybe_unused]] std::intptr_t source_ = -1;
  [[maybe_unused]] std::intptr_t target_ = -1;
};

// Adds `bytes` at the end of a regular file, which is created when it is missing. On a failure what was added
// is taken back, where the system allows it.
SystemError AppendContent(const std::string& path, std::string_view bytes);

// A file or folder gets another name. AlreadyExists when there is something of that name.
SystemError Rename(const std::string& from, const std::string& to);
SystemError RemoveFile(const std::string& path);
SystemError MakeFolder(const std::string& path);
SystemError SetWritable(const std::string& path, bool writable);
SystemError SetModified(const std::string& path, std::int64_t nanoseconds);  // last access as well

// A program that was started. It goes on when the object goes.
class Program {
 public:
  virtual ~Program() = default;
  // True when it has ended within `milliseconds`.
  virtual bool Wait(std::uint32_t milliseconds) = 0;
};

struct ProgramStart {
  std::string program;
  std::vector<std::string> arguments;  // without the program itself
  std::string folder;                  // its current folder
  std::string variable;                // "NAME=value", added to this process's environment
};

// Starts a program without a shell. It has no standard input, so that it cannot wait for a user, and its
// standard output goes to standard error, so that it does not mix with ours. Null when it cannot be started.
std::unique_ptr<Program> Start(const ProgramStart& start);

// The characters (UTF-16) of a double-byte code page, by code: a single byte, or lead byte * 256 + trail
// byte; 0 where there is none. Empty when this computer does not know the code page.
std::vector<char16_t> DoubleByteCharacters(int codePage);

// A letter or digit of any script.
bool IsLetterOrDigit(char32_t character);

// Unpredictable bytes; false when there are none to be had.
bool RandomBytes(unsigned char* bytes, std::size_t count);

struct DateTime {
  int year = 0;
  int month = 0;  // 1 to 12
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

// Date and time of `seconds` since 1970, in this computer's time zone or in UTC.
DateTime DateTimeOf(std::int64_t seconds, bool utc);

}  // namespace bxvbwiz::host
