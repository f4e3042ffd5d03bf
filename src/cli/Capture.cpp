#include "cli/Capture.h"

#include <iostream>
#include <random>

#include "cli/CaptureNotes.h"
#include "cli/JsonOutput.h"
#include "cli/ScratchWrites.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

// A folder in a temporary place, removed at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device random;
    do {
      path_ = fs::temp_directory_path() / ("bxvbwiz-" + std::to_string(random()));
    } while (!fs::create_directory(path_));
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const fs::path& Path() const { return path_; }

 private:
  fs::path path_;
};

class CapturingComputer : public Computer {
 public:
  CapturingComputer(Computer& source, const std::string& folder, bool isOfMachineFolder)
      : source_(source),
        captured_(fs::u8path(folder), source.platform()),
        scratch_(scratchFolder_.Path(), source.platform()),
        notes_(source.platform(), captured_),
        registry_(source.platform().registry, notes_),
        files_(source.platform().files, scratch_, notes_),
        profiles_(source.platform().profiles, files_, scratch_.platform().profiles, notes_),
        // With the settings of the log, which belong to this machine.
        platform_(WithParts(source.platform(), registry_, files_, profiles_)),
        makesFolders_(isOfMachineFolder) {}

  Platform& platform() override { return platform_; }
  std::string ProjectPath(const std::string& project) override { return source_.ProjectPath(project); }
  void MakeFolder(const std::string& path) override {
    if (makesFolders_) files_.MakeFolder(path);
  }
  std::string HostPath(const std::string&) override { return {}; }  // the setup project is thrown away
  void Save() override {
    source_.Save();
    captured_.Save();
  }
  int ExitCode(int code) const override {
    const bool hasRun = code == kExitFinished || code == kExitIncomplete;
    return hasRun && !captured_.NotCaptured().empty() ? kExitNotFinished : code;
  }
  const CapturedMachine& Captured() const { return captured_; }

 private:
  Computer& source_;
  TemporaryFolder scratchFolder_;
  CapturedMachine captured_;
  CapturedMachine scratch_;
  CaptureNotes notes_;
  ForwardingRegistry registry_;
  ScratchFiles files_;
  ScratchProfileStrings profiles_;
  Platform platform_;
  bool makesFolders_;
};

}  // namespace

int Capture(const Options& options, Computer& computer, const WizardRun& run) {
  try {
    CapturingComputer capturing(computer, options.captureTo, !options.machine.empty());
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
