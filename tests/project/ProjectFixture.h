#pragma once

#include <memory>
#include <string>
#include <vector>

#include "project/CProject.h"
#include "support/basFile.h"
#include "TestSession.h"

namespace bxvbwiz {

// Finds a file where its path says, or else in the given folders, and remembers its calls as
// "destination|path|dep file".
class FindingBuilder : public FileGroupBuilder {
 public:
  void GetFileGroupInfo(const std::string& destination, const std::string& filePath,
                        const std::string& depFile, const FileRecord*, FileRecord& target) override {
    calls.push_back(destination + "|" + filePath + "|" + depFile);
    std::vector<std::string> places = folders;
    if (!GetPathFolder(filePath).empty()) places.insert(places.begin(), GetPathFolder(filePath));
    for (const std::string& place : places) {
      if (!FolderHoldsFile(*files, FixPath(place), GetPathFileName(filePath))) continue;
      target.LinkResolves = true;
      target.FileLinkPath = place;
      return;
    }
  }

  FileSystem* files = nullptr;
  std::vector<std::string> folders;
  std::vector<std::string> calls;
};

// A machine with the product and Visual Basic 6, and a user who agrees. Add to its registry before calling
// context().
class ProjectFixture : public TestSession {
 protected:
  ProjectFixture() {
    disk.InstallProduct();
    user.otherwise = Button::Yes;
  }
  // An empty path registers the version without one.
  void Register(const std::string& guid, const std::string& version, const std::string& path) {
    const std::string key = "[HKEY_CLASSES_ROOT\\TypeLib\\" + guid + "\\" + version;
    const std::string data = *ReplaceAll(path, "\\", "\\\\");
    disk.Registry(path.empty() ? key + "]\r\n" : key + "\\0\\win32]\r\n@=\"" + data + "\"\r\n");
  }
  basGlobal& global() {
    if (!global_) {
      global_ = std::make_unique<basGlobal>(platform());
      global_->user = &user;
    }
    return *global_;
  }
  AnalysisContext& context() {
    if (!context_) {
      global().LoadSystemFiles();
      builder.files = &platform().files;
      executables_ = std::make_unique<Executables>(platform());
      context_ = std::make_unique<AnalysisContext>(
          AnalysisContext{platform(), user, global(), builder, *executables_});
    }
    return *context_;
  }

  FindingBuilder builder;

 private:
  std::unique_ptr<basGlobal> global_;
  std::unique_ptr<Executables> executables_;
  std::unique_ptr<AnalysisContext> context_;
};

}  // namespace bxvbwiz
