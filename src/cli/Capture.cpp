#include <algorithm>
#include <iostream>
#include <optional>

#include "cli/CapturedMachine.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/ScratchComputer.h"
#include "support/basFile.h"
#include "text/Text.h"
#include "wizard/ProductValues.h"

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

// Notes what a run asks a machine for in a captured machine. It asks the machine once more for what the call
// gave, so that what is only in the scratch machine is not noted.
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
    if (!dataFolder_) dataFolder_ = Full(KnownDataFolder(source_));
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

// `source`, recorded in a machine folder. What the run writes is thrown away.
class CapturingComputer : public Computer {
 public:
  CapturingComputer(const Options& options, Computer& source)
      : options_(options),
        source_(source),
        captured_(std::filesystem::u8path(options.captureTo), source.platform()),
        notes_(source.platform(), captured_),
        scratch_(MakeScratchComputer(source, notes_)) {}

  Platform& platform() override { return scratch_->platform(); }
  std::string ProjectPath(const std::string& project) override { return source_.ProjectPath(project); }
  void MakeFolder(const std::string& path) override {
    if (!options_.machine.empty()) scratch_->MakeFolder(path);
  }
  std::string HostPath(const std::string& path) override { return scratch_->HostPath(path); }
  void Save() override {
    source_.Save();
    captured_.Save();
  }
  int ExitCode(int code) const override {
    const bool hasRun = code == kExitFinished || code == kExitIncomplete;
    return hasRun && !captured_.NotCaptured().empty() ? kExitNotFinished : code;
  }
  std::vector<Finding> Found() const override { return source_.Found(); }
  const CapturedMachine& Captured() const { return captured_; }

 private:
  const Options& options_;
  Computer& source_;
  CapturedMachine captured_;
  CaptureNotes notes_;
  const std::unique_ptr<Computer> scratch_;
};

}  // namespace

int Capture(const Options& options, Computer& computer, const WizardRun& run) {
  try {
    CapturingComputer capturing(options, computer);
    const int code = run(options, capturing);
    const CapturedMachine& captured = capturing.Captured();
    for (const std::string& path : captured.NotCaptured())
      std::cerr << "bxvbwiz: " << path << " cannot be kept in a machine folder\n";
    if (code != kExitFinished && code != kExitIncomplete) {
      std::cerr << "bxvbwiz: the machine folder " << options.captureTo << " is incomplete\n";
      return code;
    }
    if (!options.json && !options.quiet) {
      std::cout << "Captured " << captured.FileCount() << " files in the machine folder " << options.captureTo
                << ". On another computer, run: bxvbwiz generate \"" << computer.ProjectPath(options.project)
                << "\" --machine " << options.captureTo << '\n';
    }
    return capturing.ExitCode(code);
  } catch (const MachineError& error) {
    std::cerr << "bxvbwiz: " << error.what() << '\n';
    if (options.json) PrintJson(options, error.what());
    return kExitUsage;
  }
}

}  // namespace bxvbwiz
