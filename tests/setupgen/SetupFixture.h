#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "platform/Forwarding.h"
#include "setupgen/CFileGroups.h"
#include "support/basStr.h"
#include "support/Findings.h"
#include "support/RecordingUser.h"
#include "TestMachine.h"

namespace bxvbwiz {

// Counts the calls.
class WatchedProfiles : public ForwardingProfileStrings {
 public:
  using ForwardingProfileStrings::ForwardingProfileStrings;
  int calls = 0;

  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string& file) override {
    return ++calls, ForwardingProfileStrings::GetString(section, key, defaultValue, size, file);
  }
  bool WriteString(ProfileText section, ProfileText key, ProfileText value,
                   const std::string& file) override {
    return ++calls, ForwardingProfileStrings::WriteString(section, key, value, file);
  }
};

class WatchedFiles : public ForwardingFileSystem {
 public:
  using ForwardingFileSystem::ForwardingFileSystem;
  int lookUps = 0;
  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    return ++lookUps, ForwardingFileSystem::Find(pattern, found);
  }
};

// A machine with the product, Visual Basic 6, a project in C:\App (output in C:\App\Out) and an empty setup
// project in C:\Setup. What else lies on it is added before the first call of run().
class SetupFixture : public ::testing::Test {
 protected:
  struct Run {
    Run(Platform& machine, User& user)
        : profiles(machine.profiles),
          files(machine.files),
          platform{machine.registry, machine.facts,    files,         profiles,         machine.processes,
                   machine.guids,    machine.settings, machine.clock, machine.codePage, machine.strings} {
      session.log.Init();
      session.user = global.user = &user;
      session.findings = &findings;
    }
    WatchedProfiles profiles;
    WatchedFiles files;
    Platform platform;
    Session session{platform, StartMode::Automation};
    SessionScope scope{session};
    Findings findings{platform.strings};
    basGlobal global{platform};
    NumberedKeys lists{profiles};
    CFileGroups groups{platform, global, [] { return "C:\\App\\App.vbp"; }, lists};
  };

  SetupFixture() {
    disk.InstallProduct();
    disk.LogSettings({{"LogLevel", "1"}});
    Put("App\\App.vbp", "Type=Exe\r\nPath32=\"Out\"\r\n");
    for (const char* file : {"File Groups\\a", "Component Definitions\\a", "Text Substitutions\\a",
                             "Script Files\\a", "Media\\Default\\a", "Shell Objects\\a"})
      Put(std::string("Setup\\") + file, "");
  }
  // Creates a file of drive C:.
  void Put(const std::string& path, const std::string& bytes) { disk.Write(OnDisk(path), bytes); }
  // A file of drive C: as it is stored.
  std::string Stored(const std::string& path) {
    run().platform.profiles.Flush();
    return disk.Read(OnDisk(path));
  }
  // The same on one line, its line ends as blanks; they must all be CR LF.
  std::string Words(const std::string& path) {
    std::string text = *ReplaceAll(Stored(path), "\r\n", " ");
    if (!text.empty()) text.pop_back();
    return text;
  }
  Run& run() {
    if (!run_) run_ = std::make_unique<Run>(disk.platform(), user);
    return *run_;
  }

  static constexpr const char* kSetup = "C:\\Setup\\";
  TestMachine disk;
  RecordingUser user;

 private:
  static std::string OnDisk(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return "drive_c/" + path;
  }
  std::unique_ptr<Run> run_;
};

struct Pair {
  const char* given;
  const char* expected;
};

}  // namespace bxvbwiz
