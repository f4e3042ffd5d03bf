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

// What a machine folder needs of this computer and the standard library does not offer. Paths are paths of
// this computer in UTF-8, with "/" between the names on every system. No declaration here shows a type of an
// operating system.
namespace bxvbwiz::host {

enum class FileKind { Missing, File, Folder, Link, Other };

struct FileStatus {
  FileKind kind = FileKind::Missing;
  bool writable = false;  // the owner's permission, which counts for the superuser too
  std::uint64_t size = 0;
  std::int64_t modifiedNanoseconds = 0;  // since 1970
  std::uint64_t inode = 0;
  std::uint64_t device = 0;
  std::uint32_t permissions = 0;  // in the form of the system, for ContentOptions
};

// What is at `path`; a link is not followed. Missing when that cannot be found out.
FileStatus StatusOf(const std::string& path);

// The absolute path with links resolved; empty when there is nothing at `path`.
std::string RealPath(const std::string& path);
// Whether a path needs neither the current folder nor, on Windows, the current drive.
bool IsAbsolutePath(const std::string& path);

// Whether `path` lies in `folder` or deeper. Both are absolute, without links and ".." in them.
inline bool IsBelow(std::string_view path, std::string_view folder) {
  return path.size() > folder.size() && path.substr(0, folder.size()) == folder &&
         (folder == "/" || path[folder.size()] == '/');
}

// The names in a folder without "." and "..", in no order. False when it cannot be read.
bool ListNames(const std::string& folder, std::vector<std::string>& names);

// A file opened for reading. Anything except a regular file is refused without waiting.
class InputFile {
 public:
  InputFile() = default;
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  SystemError Open(const std::string& path);
  const FileStatus& Status() const { return status_; }  // at the time of opening
  // Reads `size` bytes from `offset` on, fewer only at the file's end, and gives their number.
  SystemError ReadAt(std::uint64_t offset, char* buffer, std::size_t size, std::size_t& count);

 private:
  std::intptr_t file_ = -1;  // the system's handle; -1: none
  FileStatus status_;
};

// What ReplaceContent gives a file besides its bytes.
struct ContentOptions {
  std::optional<std::uint32_t> permissions;  // of a FileStatus; default permissions if not given
  std::optional<std::int64_t> modifiedNanoseconds;
  // Waits until the bytes are on the disk before they replace the old file. That takes most of the time, and
  // a new file has no old one to lose in a power failure.
  bool flush = true;
};

// Makes `bytes` the content of `path`: a temporary file in the same folder is renamed over it, so that there
// is always the old file or the new one. A failure leaves no trace.
SystemError ReplaceContent(const std::string& path, std::string_view bytes, const ContentOptions& options);

// Copies small files to a folder that does not have them yet. Both folders are opened only once; copying file
// by file would resolve two whole paths for each.
class FolderCopy {
 public:
  // When a folder cannot be opened, CopyNew always gives false.
  FolderCopy(const std::string& source, const std::string& target);
  ~FolderCopy();
  FolderCopy(const FolderCopy&) = delete;
  FolderCopy& operator=(const FolderCopy&) = delete;

  // Copies a file with its permissions and its time; the copy appears whole or not at all. Gives the target
  // folder's new status. False when nothing was done: the file is missing, large, not a regular one or not
  // new, the copying failed, or this system has no fast way. The caller then copies the usual way, which
  // gives the error.
  bool CopyNew(const std::string& name, FileStatus& target);

 private:
  // The system's handles, if it uses them; -1: none.
  [[maybe_unused]] std::intptr_t source_ = -1;
  [[maybe_unused]] std::intptr_t target_ = -1;
};

// Adds `bytes` to the end of a regular file, which is created when it is missing. A failure takes back what
// was added, if the system allows it.
SystemError AppendContent(const std::string& path, std::string_view bytes);

// Gives a file or folder another name. AlreadyExists when something has that name already.
SystemError Rename(const std::string& from, const std::string& to);
SystemError RemoveFile(const std::string& path);
SystemError MakeFolder(const std::string& path);
SystemError SetWritable(const std::string& path, bool writable);
SystemError SetModified(const std::string& path, std::int64_t nanoseconds);  // last access as well

// A program that was started. Destroying the object does not end it.
class Program {
 public:
  virtual ~Program() = default;
  // True when it ends within `milliseconds`.
  virtual bool Wait(std::uint32_t milliseconds) = 0;
};

struct ProgramStart {
  std::string program;
  std::vector<std::string> arguments;  // without the program itself
  std::string folder;                  // its current folder
  std::string variable;                // "NAME=value", added to this process's environment
};

// Starts a program without a shell. Its standard input is empty, so that it cannot wait for a user, and its
// standard output goes to standard error, so that it does not mix with ours. Null when it cannot be started.
std::unique_ptr<Program> Start(const ProgramStart& start);

// The characters (UTF-16) of a double-byte code page, by code: a single byte, or lead byte * 256 + trail
// byte; 0 where there is none. Empty when this computer does not know the code page.
std::vector<char16_t> DoubleByteCharacters(int codePage);

// A letter or digit of any script.
bool IsLetterOrDigit(char32_t character);

// Fills `bytes` with unpredictable bytes; false when the system has none.
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
