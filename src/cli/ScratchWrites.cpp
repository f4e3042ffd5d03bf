#include "cli/ScratchWrites.h"

#include <algorithm>

#include "text/Text.h"

namespace bxvbwiz {
namespace {

bool IsFolder(const std::vector<FoundFile>& found) {
  return found.size() == 1 && (found[0].attributes & kAttributeDirectory) != 0;
}

}  // namespace

std::string ScratchFiles::Full(const std::string& path) {
  std::string full;
  return FullPath(path, full) == SystemError::Success ? full : path;
}

bool ScratchFiles::IsMade(const std::string& path) {
  const std::string full = UpperCase(Full(path));
  return std::any_of(made_.begin(), made_.end(), [&](const std::string& folder) {
    return StartsWith(full, folder) && (full.size() == folder.size() || full[folder.size()] == '\\');
  });
}

SystemError ScratchFiles::Copy(const std::string& source, const std::string& target) {
  if (!IsMade(target)) return ForwardingFileSystem::Copy(source, target);
  std::string bytes;
  SystemError error = Read(source, bytes);
  if (error == SystemError::Success) error = Scratch().Write(target, bytes, WriteMode::Create);
  std::vector<FoundFile> found;
  const bool readOnly = error == SystemError::Success && Find(source, found) == SystemError::Success &&
                        (found[0].attributes & kAttributeReadOnly) != 0;
  return readOnly ? Scratch().SetAttributes(target, kAttributeReadOnly) : error;
}

SystemError ScratchFiles::MakeDirectory(const std::string& path) {
  const std::string full = Full(path.back() == '\\' ? FolderOf(path) : path);
  if (!IsMade(full)) {
    // What the machine would say, without asking it to make the folder.
    std::vector<FoundFile> found;
    if (Find(full, found) == SystemError::Success) return SystemError::AlreadyExists;
    const std::string parent = FolderOf(full);
    const bool isRoot = parent.size() == 2;
    if (!isRoot && (Find(parent, found) != SystemError::Success || !IsFolder(found)))
      return SystemError::PathNotFound;
    scratch_.AddFolder(parent);
    made_.push_back(UpperCase(full));
  }
  return Scratch().MakeDirectory(full);
}

void ScratchFiles::MakeFolder(const std::string& path) {
  const std::string full = Full(path.back() == '\\' ? FolderOf(path) : path);
  std::vector<FoundFile> found;
  if (IsMade(full) || Find(full, found) == SystemError::Success) return;
  scratch_.AddFolder(full);
  made_.push_back(UpperCase(full));
}

std::vector<std::string> ScratchProfileStrings::Flush() {
  std::vector<std::string> files = ForwardingProfileStrings::Flush();
  for (std::string& file : scratch_.Flush()) files.push_back(std::move(file));
  return files;
}

}  // namespace bxvbwiz
