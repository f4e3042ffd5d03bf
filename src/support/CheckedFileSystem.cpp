#include "support/CheckedFileSystem.h"

#include "support/Findings.h"

namespace bxvbwiz {
namespace {

SystemError Check(SystemError error, const std::string& path, FindingId failure) {
  if (error != SystemError::Success && !MeansMissing(error)) {
    AddFinding(failure, {path, ErrorCode(error)});
  }
  return error;
}

std::string CheckFolder(std::string folder, FindingId failure) {
  if (folder.empty()) AddFinding(failure);
  return folder;
}

}  // namespace

SystemError CheckedFileSystem::Find(const std::string& pattern, std::vector<FoundFile>& found) {
  return Check(ForwardingFileSystem::Find(pattern, found), pattern, FindingId::FileSearchFailed);
}

SystemError CheckedFileSystem::Map(const std::string& path, std::unique_ptr<FileView>& view) {
  return Check(ForwardingFileSystem::Map(path, view), path, FindingId::FileUnreadable);
}

std::string CheckedFacts::WindowsDirectory(std::size_t size) {
  return CheckFolder(inner_.WindowsDirectory(size), FindingId::WindowsFolderUnknown);
}

std::string CheckedFacts::SystemDirectory(std::size_t size) {
  return CheckFolder(inner_.SystemDirectory(size), FindingId::SystemFolderUnknown);
}

}  // namespace bxvbwiz
