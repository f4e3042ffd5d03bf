#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "platform/FileSystem.h"

namespace bxvbwiz {

// The open files of a machine folder, and what each forbids to others while it is open.
class OpenFiles {
 public:
  struct OpenFile {
    std::string hostPath;
    std::uint32_t access;
    std::uint32_t share;
  };

  // kInvalidFile when the file is already open and either side does not share what the other may do.
  FileHandle Open(const std::string& hostPath, std::uint32_t access, std::uint32_t share);
  bool Close(FileHandle file) { return files_.erase(file) != 0; }
  // Null when there is no such handle.
  const OpenFile* Find(FileHandle file) const;
  // Whether an open file forbids an access (share bits) to it.
  bool IsLocked(const std::string& hostPath, std::uint32_t shareNeeded) const;
  bool IsEmpty() const { return files_.empty(); }
  bool HasFileBelow(const std::string& hostFolder) const;

 private:
  std::unordered_map<FileHandle, OpenFile> files_;
  FileHandle next_ = 4;
};

}  // namespace bxvbwiz
