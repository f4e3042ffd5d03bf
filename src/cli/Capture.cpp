#include <algorithm>
#include <iostream>
#include <map>
#include <optional>

#include "cli/Commands.h"
#include "cli/MachineCopy.h"
#include "cli/ProjectList.h"
#include "cli/ScratchComputer.h"
#include "project/basGlobal.h"
#include "support/basFile.h"
#include "sysinfo/Key.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kLongestValue = 1 << 20;  // far more than any caller's buffer

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

// Records what a run asks a machine for in a machine folder. It asks the machine once more for what the call
// gave, so that what is only in the scratch machine is not recorded.
class Recording : public Recorder {
 public:
  Recording(Platform& source, const std::string& folder)
      : source_(source), captured_(std::filesystem::u8path(folder), source) {}

  void Save() override {
    for (const std::string& path : readOnly_) files_.SetAttributes(path, kAttributeReadOnly);
    captured_.Save();
  }
  bool IsComplete() const override { return notCaptured_.empty(); }
  // Files that could not be captured, because their path is none or the disk is full, each once.
  const std::vector<std::string>& NotCaptured() const { return notCaptured_; }
  std::size_t FileCount() const { return isKnown_.size(); }
  bool HoldsProject() const {
    return std::any_of(isKnown_.begin(), isKnown_.end(),
                       [](const auto& file) { return EndsWith(file.first, ".VBP"); });
  }

  void After(const SeamCall& call, SystemError error) override {
    constexpr struct {
      std::string_view call;
      void (Recording::*note)(const SeamCall&);
    } kNotes[] = {
        {"OpenKey", &Recording::NoteKey},      {"CreateKey", &Recording::NoteKey},
        {"EnumKey", &Recording::NoteKey},      {"EnumValue", &Recording::NoteValue},
        {"QueryValue", &Recording::NoteValue}, {"Find", &Recording::NoteList},
        {"Open", &Recording::NoteList},        {"Read", &Recording::NoteContent},
        {"Map", &Recording::NoteContent},      {"GetString", &Recording::NoteProfile},
        {"Search", &Recording::NoteFound},     {"ChangeDirectory", &Recording::NoteFolder},
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
    const KeyPath path(call.subject);
    const std::string name(call.detail);
    const auto key = Key::Root(source_.registry, path.root)->OpenSubKeyForReading(path.path);
    RegistryHandle made = 0;
    RegistryData data;
    if (key == nullptr ||
        source_.registry.QueryValue(key->Handle(), name, kLongestValue, data) != SystemError::Success ||
        !Make(path, made))
      return;
    registry_.SetValue(made, name, data);
    registry_.CloseKey(made);
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
        AddName(path);
        if ((file.attributes & kAttributeReadOnly) != 0) readOnly_.push_back(path);
      }
    }
  }

  // Whether a folder lies in the data folder, as the setup projects do.
  bool IsOldSetupProject(const std::string& folder) {
    if (!dataFolder_) {
      const auto key = Key::Root(source_.registry, kHKeyCurrentUser)->OpenSubKeyForReading(kBorvexMainKey);
      const auto value = key == nullptr ? nullptr : key->Values().Item(std::string("DataFile"));
      dataFolder_ = value == nullptr ? "" : Full(FixPath(value->Text()));
    }
    return EqualsIgnoreCase(FixPath(FolderOf(folder)), *dataFolder_);
  }

  void NoteContent(const SeamCall& call) { AddContent(Full(call.subject)); }

  void NoteProfile(const SeamCall& call) {
    const bool isBare = call.subject.find_first_of("\\/:") == std::string_view::npos;
    AddContent(isBare ? source_.facts.WindowsDirectory(kPathBuffer).append("\\").append(call.subject)
                      : Full(call.subject));
  }

  void NoteFound(const SeamCall& call) { AddName(source_.files.Search(std::string(call.subject))); }

  void NoteFolder(const SeamCall&) { captured_.AddFolder(source_.files.CurrentDirectory()); }

  // Adds an empty file in place of one whose content was not read.
  void AddName(const std::string& path) {
    if (isKnown_.count(UpperCase(path)) == 0) Write(path, {}, false);
  }

  // Adds a file as it is when it is first read.
  void AddContent(const std::string& path) {
    const auto known = isKnown_.find(UpperCase(path));
    std::string bytes;
    if (known != isKnown_.end() && known->second) return;
    if (source_.files.Read(path, bytes) == SystemError::Success) Write(path, bytes, true);
  }

  void Write(const std::string& path, std::string_view bytes, bool isContent) {
    captured_.AddFolder(FolderOf(path));
    // An earlier run may have stored it as read-only.
    files_.SetAttributes(path, kAttributeNormal);
    const bool isWritten = files_.Write(path, bytes, WriteMode::Create) == SystemError::Success;
    isKnown_[UpperCase(path)] = isContent || !isWritten;
    if (!isWritten) notCaptured_.push_back(path);
  }

  std::string Full(std::string_view path) {
    std::string full;
    const std::string given(path);
    return source_.files.FullPath(given, full) == SystemError::Success ? full : given;
  }

  Platform& source_;
  MachineCopy captured_;
  Registry& registry_ = captured_.platform().registry;
  FileSystem& files_ = captured_.platform().files;
  std::optional<std::string> dataFolder_;  // once it was asked for, with a backslash at its end
  std::map<std::string, bool> isKnown_;    // by path in upper case; whether the content needs no more reading
  std::vector<std::string> readOnly_;
  std::vector<std::string> notCaptured_;
};

}  // namespace

int Capture(const Options& options, Computer& computer, const WizardRun& run) {
  Recording recording(computer.platform(), options.captureTo);
  const auto scratch = MakeScratchComputer(computer, !options.machine.empty(), &recording);
  const int code = run(options, *scratch);
  for (const std::string& path : recording.NotCaptured())
    std::cerr << "bxvbwiz: " << path << " cannot be kept in a machine folder\n";
  // Of a list, what cannot be packaged does not count: it cannot be packaged there either.
  const bool isPart = code == kExitProject && NamesList(options) && recording.HoldsProject();
  if (code != kExitFinished && code != kExitIncomplete && !isPart) {
    std::cerr << "bxvbwiz: the machine folder " << options.captureTo << " is incomplete\n";
    return code;
  }
  if (!options.json && !options.quiet) {
    std::cout << "Captured " << recording.FileCount() << " files in the machine folder " << options.captureTo
              << ". On another computer, run: bxvbwiz generate";
    for (const std::string& project : options.projects) {
      if (const std::string path = computer.ProjectPath(project); !path.empty())
        std::cout << " \"" << path << '"';
    }
    std::cout << " --machine " << options.captureTo << '\n';
  }
  return scratch->ExitCode(code);
}

}  // namespace bxvbwiz
