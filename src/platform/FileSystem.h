#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SystemError.h"

namespace bxvbwiz {

// File attribute bits, as FILE_ATTRIBUTE_* in winnt.h.
constexpr std::uint32_t kAttributeReadOnly = 1;
constexpr std::uint32_t kAttributeHidden = 2;
constexpr std::uint32_t kAttributeSystem = 4;
constexpr std::uint32_t kAttributeDirectory = 16;
constexpr std::uint32_t kAttributeArchive = 32;
constexpr std::uint32_t kAttributeNormal = 128;

// Arguments of Open, as in winnt.h and fileapi.h.
constexpr std::uint32_t kGenericRead = 0x80000000;
constexpr std::uint32_t kGenericWrite = 0x40000000;
constexpr std::uint32_t kShareRead = 1;
constexpr std::uint32_t kShareWrite = 2;
constexpr std::uint32_t kShareDelete = 4;
constexpr std::uint32_t kOpenExisting = 3;

// A point in time as FILETIME counts it: units of 100 ns since 1601-01-01 UTC.
using FileTime = std::uint64_t;
constexpr std::int64_t kUnixEpoch = 116444736000000000;  // 1970-01-01
constexpr std::int64_t kNanosecondsPerUnit = 100;
constexpr std::int64_t kUnitsPerSecond = 10000000;

// One entry of a directory listing.
struct FoundFile {
  std::string name;
  std::uint32_t attributes = 0;
  FileTime written = 0;  // when its content was last changed; 0 when that is unknown
};

// An open file; kInvalidFile is INVALID_HANDLE_VALUE.
using FileHandle = std::intptr_t;
constexpr FileHandle kInvalidFile = -1;

// A read-only view of a whole file. The bytes stay valid as long as the object lives.
class FileView {
 public:
  virtual ~FileView() = default;
  virtual std::string_view Bytes() const = 0;
};

enum class WriteMode { Create, Append };  // both create a missing file; Create truncates

// Files and folders. Paths are Windows paths in UTF-8, names are found without regard to case; a relative
// path starts at the current directory. Every call gives SystemError::Success or the system's code.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // FindFirstFileA, FindNextFileA, FindClose: the entries that match `pattern` (wildcards "*" and "?" in its
  // last part), ".", ".." and hidden ones included, by name. FileNotFound when nothing matches,
  // PathNotFound when the folder is missing.
  virtual SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) = 0;

  // CreateFileA on an existing file; kInvalidFile when that fails. Close is CloseHandle.
  virtual FileHandle Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                          std::uint32_t disposition, std::uint32_t attributes) = 0;
  virtual bool Close(FileHandle file) = 0;
  // SetFileTime, all three times.
  virtual bool SetTimes(FileHandle file, FileTime time) = 0;

  // The whole file as it stands. Only regular files can be read.
  virtual SystemError Read(const std::string& path, std::string& bytes) = 0;
  // Writes or appends all of `bytes`, not decoded. A file that a failed call created may remain.
  virtual SystemError Write(const std::string& path, std::string_view bytes, WriteMode mode) = 0;
  // CreateFileA (read, share read), CreateFileMappingA and MapViewOfFile of the whole file. An empty file
  // cannot be mapped: it gives an empty view instead, so that its reader can report what is wrong.
  virtual SystemError Map(const std::string& path, std::unique_ptr<FileView>& view) = 0;

  // CopyFileA, overwriting; the copy has the attributes of the source.
  virtual SystemError Copy(const std::string& source, const std::string& target) = 0;
  // Copies the files `names` of the folder `source` into the folder `target`, each as Copy does and in this
  // order, and calls `done` for each with its index and the result. Both paths end in a backslash. `done` may
  // throw, which ends the copying, and may change the copy that it is called for, but nothing else in the two
  // folders. A system may copy them together when that is faster.
  virtual void CopyFiles(const std::string& source, const std::string& target,
                         const std::vector<std::string>& names,
                         const std::function<void(std::size_t, SystemError)>& done) {
    for (std::size_t i = 0; i < names.size(); ++i) done(i, Copy(source + names[i], target + names[i]));
  }
  virtual SystemError Rename(const std::string& source, const std::string& target) = 0;  // MoveFileA
  virtual SystemError Delete(const std::string& path) = 0;                               // DeleteFileA
  virtual SystemError MakeDirectory(const std::string& path) = 0;                        // CreateDirectoryA
  virtual SystemError SetAttributes(const std::string& path, std::uint32_t attributes) = 0;

  // SearchPathA with the default search order; the path found, or empty. 260-byte buffer.
  virtual std::string Search(const std::string& name) = 0;
  // GetFullPathNameA: `path` against the current directory, "." and ".." resolved; the file need not exist.
  virtual SystemError FullPath(const std::string& path, std::string& full) = 0;
  // GetCurrentDirectoryA and SetCurrentDirectoryA.
  virtual std::string CurrentDirectory() = 0;
  virtual SystemError ChangeDirectory(const std::string& path) = 0;
};

}  // namespace bxvbwiz
