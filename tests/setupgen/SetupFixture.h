#pragma once

#include <memory>
#include <string>

#include "setupgen/CFileGroups.h"
#include "TestSession.h"

namespace bxvbwiz {

// A machine with the product, Visual Basic 6, a project in C:\App (output in C:\App\Out) and an empty setup
// project in C:\Setup.
class SetupFixture : public TestSession {
 protected:
  struct Output {
    explicit Output(Platform& platform, User& user)
        : global(platform), lists(platform.profiles), executables(platform) {
      global.user = &user;
      groups = std::make_unique<CFileGroups>(
          platform, global, [] { return "C:\\App\\App.vbp"; }, lists, executables);
    }
    basGlobal global;
    NumberedKeys lists;
    Executables executables;
    std::unique_ptr<CFileGroups> groups;
  };

  SetupFixture() {
    disk.InstallProduct();
    Put("C:\\App\\App.vbp", "Type=Exe\r\nPath32=\"Out\"\r\n");
    for (const char* folder : {"File Groups", "Component Definitions", "Text Substitutions", "Script Files"})
      Put("C:\\Setup\\" + std::string(folder) + "\\a", "");
  }
  // A file of drive C: on one line, its line ends as blanks; they must all be CR LF.
  std::string Words(const std::string& path) {
    std::string text = *ReplaceAll(Stored(path), "\r\n", " ");
    if (!text.empty()) text.pop_back();
    return text;
  }
  CFileGroups& groups() { return *output().groups; }
  NumberedKeys& lists() { return output().lists; }

  static constexpr const char* kSetup = "C:\\Setup\\";

 private:
  Output& output() {
    if (!output_) output_ = std::make_unique<Output>(platform(), user);
    return *output_;
  }
  std::unique_ptr<Output> output_;
};

struct Pair {
  const char* given;
  const char* expected;
};

}  // namespace bxvbwiz
