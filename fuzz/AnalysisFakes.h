#pragma once

#include <string>
#include <string_view>

#include "platform/machine/ProfileEngine.h"
#include "project/CProject.h"
#include "support/basLogging.h"
#include "support/FakePlatform.h"
#include "sysinfo/RegConstants.h"

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
  explicit SameProfile(std::string_view bytes) : engine_(*this, bytes) {}
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
  explicit AnalysisFakes(std::string_view bytes) : files(bytes), parts(bytes) {
    for (const char* version : {"1.0", "2.a", "3.0"}) {
      registry.Make(RegConstants::HKeyClassesRoot, "TypeLib\\{A}\\" + std::string(version) + "\\0\\win32")
          .values = {{"", {RegConstants::RegSz, std::string("C:\\a.ocx\\1\0", 11)}}};
    }
    registry.Make(RegConstants::HKeyClassesRoot, "TypeLib\\{B}\\junk");
    registry.Make(RegConstants::HKeyLocalMachine, kBorvexWizardKey);
    global.user = &user;
  }

  class AlternatingUser : public RecordingUser {
   public:
    Button ShowMessage(const Message&) override { return (yes_ = !yes_) ? Button::Yes : Button::No; }

   private:
    bool yes_ = false;
  };

  FakeRegistry registry;
  SameFiles files;
  SameProfile parts;
  Platform platform{registry, parts, files, parts, parts, parts, parts, parts, parts, parts};
  Session session{platform, StartMode::Automation};
  SessionScope scope{session};
  AlternatingUser user;
  NoFacts builder;
  basGlobal global{platform};
  AnalysisContext context{platform, user, global, builder};
};

}  // namespace bxvbwiz
