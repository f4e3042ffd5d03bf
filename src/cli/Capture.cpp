#include "cli/Capture.h"

#include <iostream>

#include "cli/CaptureNotes.h"
#include "cli/JsonOutput.h"
#include "cli/ScratchComputer.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

class CapturingComputer : public Computer {
 public:
  CapturingComputer(Computer& source, const std::string& folder, bool isOfMachineFolder)
      : source_(source),
        captured_(fs::u8path(folder), source.platform()),
        notes_(source.platform(), captured_),
        scratch_(source, notes_),
        registry_(source.platform().registry, notes_),
        platform_(WithParts(scratch_.platform(), registry_)),
        makesFolders_(isOfMachineFolder) {}

  Platform& platform() override { return platform_; }
  std::string ProjectPath(const std::string& project) override { return source_.ProjectPath(project); }
  void MakeFolder(const std::string& path) override {
    if (makesFolders_) scratch_.MakeFolder(path);
  }
  std::string HostPath(const std::string& path) override { return scratch_.HostPath(path); }
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
  Computer& source_;
  CapturedMachine captured_;
  CaptureNotes notes_;
  ScratchComputer scratch_;
  ForwardingRegistry registry_;
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
