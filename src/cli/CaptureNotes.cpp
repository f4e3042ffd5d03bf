#include "cli/CaptureNotes.h"

#include <algorithm>
#include <optional>

#include "project/basGlobal.h"
#include "support/basFile.h"
#include "sysinfo/Key.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kLongestValue = 1 << 20;  // far more than any caller's buffer
constexpr std::size_t kPathBuffer = 260;        // MAX_PATH

// A key by its full path.
struct KeyPath {
  explicit KeyPath(std::string_view full) {
    const std::size_t end = std::min(full.find('\\'), full.size());
    for (const PredefinedKey& key : kPredefinedKeys) {
      if (full.substr(0, end) == key.name) root = key.handle;
    }
    if (root != 0) path = full.substr(std::min(end + 1, full.size()));
  }
  RegistryHandle root = 0;
  std::string path;
};

class CaptureNotes : public CallHook {
 public:
  CaptureNotes(Platform& source, CapturedMachine& captured)
      : source_(source), captured_(captured), registry_(captured.platform().registry) {}

  void After(const SeamCall& call, SystemError error) override {
    constexpr struct {
      std::string_view call;
      void (CaptureNotes::*note)(const SeamCall&);
    } kNotes[] = {
        {"OpenKey", &CaptureNotes::NoteKey},      {"CreateKey", &CaptureNotes::NoteKey},
        {"EnumKey", &CaptureNotes::NoteKey},      {"EnumValue", &CaptureNotes::NoteValue},
        {"QueryValue", &CaptureNotes::NoteValue}, {"Find", &CaptureNotes::NoteList},
        {"Open", &CaptureNotes::NoteList},        {"Read", &CaptureNotes::NoteContent},
        {"Map", &CaptureNotes::NoteContent},      {"GetString", &CaptureNotes::NoteProfile},
        {"Search", &CaptureNotes::NoteFound},     {"ChangeDirectory", &CaptureNotes::NoteFolder},
    };
    // A value that is too long for the caller is there all the same.
    if (error != SystemError::Success && error != SystemError::MoreData) return;
    for (const auto& row : kNotes) {
      if (row.call == call.name) (this->*row.note)(call);
    }
  }

 private:
  // The key, or the subkey that was listed.
  void NoteKey(const SeamCall& call) {
    KeyPath key(call.subject);
    if (!call.detail.empty()) key.path.append(key.path.empty() ? "" : "\\").append(call.detail);
    RegistryHandle made = 0;
    if (Make(key, made)) registry_.CloseKey(made);
  }

  void NoteValue(const SeamCall& call) {
    const KeyPath key(call.subject);
    const std::string name(call.detail);
    RegistryHandle from = 0;
    RegistryHandle to = 0;
    RegistryData data;
    if (source_.registry.OpenKey(key.root, key.path, kKeyRead, from) != SystemError::Success) return;
    if (source_.registry.QueryValue(from, name, kLongestValue, data) == SystemError::Success &&
        Make(key, to)) {
      registry_.SetValue(to, name, data);
      registry_.CloseKey(to);
    }
    source_.registry.CloseKey(from);
  }

  bool Make(const KeyPath& key, RegistryHandle& made) {
    return registry_.CreateKey(key.root, key.path, 0, kKeyAllAccess, made) == SystemError::Success;
  }

  void NoteList(const SeamCall& call) {
    const std::string folder = FolderOf(Full(call.subject));
    std::vector<FoundFile> found;
    source_.files.Find(std::string(call.subject), found);
    // An old setup project only keeps its name from a new one.
    if (!found.empty() && call.subject.find('*') != std::string_view::npos && IsOldSetupProject(folder))
      return captured_.AddFolder(folder);
    for (const FoundFile& file : found) {
      const std::string path = folder + "\\" + file.name;
      if (file.name == "." || file.name == "..") {
        captured_.AddFolder(folder);
      } else if ((file.attributes & kAttributeDirectory) != 0) {
        captured_.AddFolder(path);
      } else {
        captured_.AddName(path);
        if ((file.attributes & kAttributeReadOnly) != 0) captured_.AddReadOnly(path);
      }
    }
  }

  // Whether a folder lies in the data folder, as the setup projects do.
  bool IsOldSetupProject(const std::string& folder) {
    if (!dataFolder_) {
      const auto main = Key::Root(source_.registry, RegConstants::HKeyCurrentUser);
      const auto key = main->OpenSubKeyForReading(kBorvexMainKey);
      const auto value = key == nullptr ? nullptr : key->Values().Item(std::string("DataFile"));
      dataFolder_ = value == nullptr ? "" : Full(FixPath(value->Text()));
    }
    return EqualsIgnoreCase(FixPath(FolderOf(folder)), *dataFolder_);
  }

  void NoteContent(const SeamCall& call) { TakeContent(Full(call.subject)); }

  void NoteProfile(const SeamCall& call) {
    const bool isBare = call.subject.find_first_of("\\/:") == std::string_view::npos;
    TakeContent(isBare ? source_.facts.WindowsDirectory(kPathBuffer).append("\\").append(call.subject)
                       : Full(call.subject));
  }

  void NoteFound(const SeamCall& call) { captured_.AddName(source_.files.Search(std::string(call.subject))); }

  void NoteFolder(const SeamCall&) { captured_.AddFolder(source_.files.CurrentDirectory()); }

  void TakeContent(const std::string& path) {
    std::string bytes;
    if (!captured_.HasContent(path) && source_.files.Read(path, bytes) == SystemError::Success)
      captured_.AddContent(path, bytes);
  }

  std::string Full(std::string_view path) {
    std::string full;
    const std::string given(path);
    return source_.files.FullPath(given, full) == SystemError::Success ? full : given;
  }

  Platform& source_;
  CapturedMachine& captured_;
  Registry& registry_;                     // of the captured machine
  std::optional<std::string> dataFolder_;  // once it was asked for, with a backslash at its end
};

}  // namespace

std::unique_ptr<CallHook> MakeCaptureNotes(Platform& source, CapturedMachine& captured) {
  return std::make_unique<CaptureNotes>(source, captured);
}

}  // namespace bxvbwiz
