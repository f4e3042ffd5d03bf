#include "machine/OpenFiles.h"

#include <algorithm>
#include <utility>

#include "text/Text.h"

namespace bxvbwiz {
namespace {

// What a file with this access needs the others to share.
std::uint32_t ShareNeeded(std::uint32_t access) {
  return ((access & kGenericRead) != 0 ? kShareRead : 0) | ((access & kGenericWrite) != 0 ? kShareWrite : 0);
}

}  // namespace

FileHandle OpenFiles::Open(const std::string& hostPath, std::uint32_t access, std::uint32_t share) {
  if (IsLocked(hostPath, ShareNeeded(access))) return kInvalidFile;
  for (const auto& [handle, file] : files_) {
    if (file.hostPath == hostPath && (ShareNeeded(file.access) & ~share) != 0) return kInvalidFile;
  }
  const FileHandle handle = std::exchange(next_, next_ + 4);
  files_[handle] = {hostPath, access, share};
  return handle;
}

const OpenFiles::OpenFile* OpenFiles::Find(FileHandle file) const {
  const auto found = files_.find(file);
  return found == files_.end() ? nullptr : &found->second;
}

bool OpenFiles::IsLocked(const std::string& hostPath, std::uint32_t shareNeeded) const {
  return std::any_of(files_.begin(), files_.end(), [&](const auto& entry) {
    return entry.second.hostPath == hostPath && (entry.second.share & shareNeeded) != shareNeeded;
  });
}

bool OpenFiles::HasFileBelow(const std::string& hostFolder) const {
  const std::string prefix = hostFolder + "/";
  return std::any_of(files_.begin(), files_.end(),
                     [&](const auto& entry) { return StartsWith(entry.second.hostPath, prefix); });
}

}  // namespace bxvbwiz
