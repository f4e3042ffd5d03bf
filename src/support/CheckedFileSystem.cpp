#include "support/CheckedFileSystem.h"

#include "support/basLogging.h"

namespace bxvbwiz {
namespace {

SystemError Check(SystemError error, const std::string& path, const char* what) {
  if (error != SystemError::Success && !MeansMissing(error)) {
    TellFailure("The file " + path + " could not be " + what + ErrorCodeText(error) + ".");
  }
  return error;
}

std::string CheckFolder(std::string folder, const char* name) {
  if (folder.empty()) TellFailure(std::string("The system did not name its ") + name + " folder.");
  return folder;
}

}  // namespace

SystemError CheckedFileSystem::Find(const std::string& pattern, std::vector<FoundFile>& found) {
  return Check(ForwardingFileSystem::Find(pattern, found), pattern, "looked for");
}

SystemError CheckedFileSystem::Map(const std::string& path, std::unique_ptr<FileView>& view) {
  return Check(ForwardingFileSystem::Map(path, view), path, "read");
}

std::string CheckedFacts::WindowsDirectory(std::size_t size) {
  return CheckFolder(inner_.WindowsDirectory(size), "Windows");
}

std::string CheckedFacts::SystemDirectory(std::size_t size) {
  return CheckFolder(inner_.SystemDirectory(size), "system");
}

}  // namespace bxvbwiz
