#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/machine/CodePages.h"
#include "platform/machine/MachineRegistry.h"
#include "platform/machine/ProfileEngine.h"
#include "project/CProject.h"
#include "support/basLogging.h"
#include "support/FakePlatform.h"

// A machine in memory for the fuzz targets of the project's readers.
namespace bxvbwiz {

// Every path is a file that holds the same bytes, so that a project finds its output and its forms.
class SameFiles : public FakeFiles {
 public:
  explicit SameFiles(std::string_view content) : content_(content) {}
  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    found = {{pattern.substr(pattern.rfind('\\') + 1), kAttributeArchive}};
    return SystemError::Success;
  }
  SystemError Read(const std::string&, std::string& bytes) override {
    return bytes = content_, SystemError::Success;
  }
  SystemError FullPath(const std::string& path, std::string& full) override {
    return full = path, SystemError::Success;
  }

 private:
  std::string content_;
};

// Every profile file holds the same bytes.
class SameProfile : public FakeParts {
 public:
  SameProfile(const CodePage& codePage, std::string_view bytes) : engine_(codePage, bytes) {}
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

// The machine and what an analysis needs besides. Each question is answered the other way than the one
// before.
struct AnalysisFakes {
  explicit AnalysisFakes(std::string_view bytes) : files(bytes), parts(*codePage, bytes) {
    global.user = &user;
  }

  static constexpr const char* kRegistry =
      "REGEDIT4\n"
      "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\1.0\\0\\win32]\n@=\"C:\\\\a.ocx\\\\1\"\n"
      "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\2.a\\0\\win32]\n@=\"b.ocx\"\n"
      "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\3.0]\n[HKEY_CLASSES_ROOT\\TypeLib\\{B}\\junk]\n"
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex Professional\\6.0\\VBWiz]\n";

  class AlternatingUser : public RecordingUser {
   public:
    Button ShowMessage(const Message&) override { return (yes_ = !yes_) ? Button::Yes : Button::No; }

   private:
    bool yes_ = false;
  };

  std::unique_ptr<CodePage> codePage = MakeCodePage(1252);
  MachineRegistry registry{kRegistry, *codePage};
  SameFiles files;
  SameProfile parts;
  Platform platform{registry, parts, files, parts, parts, parts, parts, parts, *codePage, parts};
  Session session{platform, StartMode::Automation};
  SessionScope scope{session};
  AlternatingUser user;
  NoFacts builder;
  basGlobal global{platform};
  AnalysisContext context{platform, user, global, builder};
};

}  // namespace bxvbwiz
