#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "project/CProject.h"
#include "support/basFile.h"
#include "support/Findings.h"
#include "support/RecordingUser.h"
#include "TestMachine.h"

namespace bxvbwiz {

inline std::string Join(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) joined += (joined.empty() ? "" : ", ") + text;
  return joined;
}

// Answers by the message's number, Yes where the table says nothing.
class AnsweringUser : public RecordingUser {
 public:
  Button ShowMessage(const Message& message) override {
    messages.push_back(std::to_string(NumberOf(message.number)) + "/" + std::to_string(message.style) + " " +
                       message.text.substr(0, message.text.find(" is ")));
    const auto answer = answers.find(message.number);
    return answer == answers.end() ? Button::Yes : answer->second;
  }

  std::map<TextId, Button> answers;
};

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

// A machine with the product and Visual Basic 6. What stands in its registry is added before context().
class ProjectFixture : public ::testing::Test {
 protected:
  ProjectFixture() { disk.InstallProduct(); }

  // An empty path registers the version without one.
  void Register(const std::string& guid, const std::string& version, const std::string& path) {
    const std::string key = "[HKEY_CLASSES_ROOT\\TypeLib\\" + guid + "\\" + version;
    std::string data;
    for (const char character : path) data.append(character == '\\' ? 2 : 1, character);
    disk.Registry(path.empty() ? key + "]\r\n" : key + "\\0\\win32]\r\n@=\"" + data + "\"\r\n");
  }
  // Creates a file of drive C:, given by its Windows path.
  void Put(std::string path, const std::string& bytes) {
    std::replace(path.begin(), path.end(), '\\', '/');
    disk.Write("drive_c/" + path.substr(3), bytes);
  }
  AnalysisContext& context() {
    if (!run_) run_ = std::make_unique<Run>(disk.platform(), user, builder);
    return run_->context;
  }
  Findings& findings() {
    context();
    return run_->findings;
  }

  TestMachine disk;
  AnsweringUser user;
  FindingBuilder builder;

 private:
  struct Run {
    Run(Platform& platform, User& user, FindingBuilder& builder)
        : session(platform, StartMode::Automation),
          scope(session),
          global(platform),
          context{platform, user, global, builder},
          findings(platform.strings) {
      global.user = &user;
      session.findings = &findings;
      builder.files = &platform.files;
      global.LoadSystemFiles();
    }
    Session session;
    SessionScope scope;
    basGlobal global;
    AnalysisContext context;
    Findings findings;
  };
  std::unique_ptr<Run> run_;
};

}  // namespace bxvbwiz
