#pragma once

#include <string>
#include <string_view>

#include "machine/ProfileEngine.h"
#include "platform/Forwarding.h"
#include "project/CProject.h"
#include "support/basLogging.h"
#include "support/RecordingUser.h"
#include "TestMachine.h"

// A machine for the fuzz targets of the project's readers, whose files are all the same.
namespace bxvbwiz {

// Every path is a file that holds the same bytes, so that a project finds its output and its forms.
class SameFiles : public ForwardingFileSystem {
 public:
  SameFiles(FileSystem& inner, std::string_view content) : ForwardingFileSystem(inner), content_(content) {}
  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    found = {{pattern.substr(pattern.rfind('\\') + 1), kAttributeArchive}};
    return SystemError::Success;
  }
  SystemError Read(const std::string&, std::string& bytes) override {
    return bytes = content_, SystemError::Success;
  }

 private:
  std::string content_;
};

// Every profile file holds the same bytes.
class SameProfile : public ForwardingProfileStrings {
 public:
  SameProfile(Platform& machine, std::string_view bytes)
      : ForwardingProfileStrings(machine.profiles), engine_(machine.codePage, bytes) {}
  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string&) override {
    if (!section) return {};
    std::string text;
    if (key) {
      text = engine_.Value(*section, *key).value_or(std::string(defaultValue));
    } else if (const auto keys = engine_.Keys(*section)) {
      for (const std::string& name : *keys) text += name + '\0';
    }
    return text.substr(0, size - 1);
  }

 private:
  ProfileEngine engine_;
};

class NoFacts : public FileGroupBuilder {
 public:
  void GetFileGroupInfo(const std::string&, const std::string&, const std::string&, const FileRecord*,
                        FileRecord&) override {}
};

// Answers each question the other way than the one before.
class AlternatingUser : public RecordingUser {
 public:
  Button ShowMessage(const Message&) override { return (yes_ = !yes_) ? Button::Yes : Button::No; }

 private:
  bool yes_ = false;
};

// The one machine of a target.
inline Platform& FuzzedMachine() {
  struct Fuzzed : TestMachine {
    Fuzzed() {
      Registry(
          "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\1.0\\0\\win32]\n@=\"C:\\\\a.ocx\\\\1\"\n"
          "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\2.a\\0\\win32]\n@=\"b.ocx\"\n"
          "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\3.0]\n[HKEY_CLASSES_ROOT\\TypeLib\\{B}\\junk]\n"
          "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex Professional\\6.0\\VBWiz]\n"
          "\"DepFile\"=\"C:\\\\\"\n");
    }
  };
  static Fuzzed machine;
  return machine.platform();
}

// The machine and what an analysis needs besides.
struct AnalysisFakes {
  explicit AnalysisFakes(std::string_view bytes) : files(machine.files, bytes), profiles(machine, bytes) {
    global.user = &user;
  }

  Platform& machine = FuzzedMachine();
  SameFiles files;
  SameProfile profiles;
  Platform platform{machine.registry, machine.facts,    files,         profiles,         machine.processes,
                    machine.guids,    machine.settings, machine.clock, machine.codePage, machine.strings};
  Session session{platform, StartMode::Automation};
  SessionScope scope{session};
  AlternatingUser user;
  NoFacts builder;
  basGlobal global{platform};
  AnalysisContext context{platform, user, global, builder};
};

}  // namespace bxvbwiz
