#include "cli/Capture.h"

#include <iostream>

#include "cli/CaptureNotes.h"
#include "cli/JsonOutput.h"
#include "cli/ScratchComputer.h"

namespace bxvbwiz {
namespace {

// `source`, recorded in a machine folder. What the run writes is thrown away.
class CapturingComputer : public Computer {
 public:
  CapturingComputer(const Options& options, Computer& source)
      : options_(options),
        source_(source),
        captured_(std::filesystem::u8path(options.captureTo), source.platform()),
        notes_(MakeCaptureNotes(source.platform(), captured_)),
        scratch_(MakeScratchComputer(source, *notes_)) {}

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
  const std::unique_ptr<CallHook> notes_;
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
