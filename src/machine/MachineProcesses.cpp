#include "machine/MachineProcesses.h"

#include <utility>

#include "machine/CommandLine.h"
#include "machine/host/Host.h"

namespace bxvbwiz {
namespace {

constexpr const char* kMachineVariable = "BXVBWIZ_MACHINE";

class MachineProcess : public Process {
 public:
  MachineProcess(std::unique_ptr<host::Program> program, ProcessObserver& observer)
      : program_(std::move(program)), observer_(observer) {}
  ~MachineProcess() override { observer_.AfterEnd(); }

  WaitResult Wait(std::uint32_t milliseconds) override {
    if (!program_->Wait(milliseconds)) return WaitResult::TimedOut;
    observer_.AfterEnd();
    return WaitResult::Ended;
  }

 private:
  std::unique_ptr<host::Program> program_;
  ProcessObserver& observer_;
};

}  // namespace

MachineProcesses::MachineProcesses(DriveTree& tree, std::map<std::string, std::string> programs,
                                   std::vector<std::string> searchFolders, ProcessObserver& observer)
    : tree_(tree),
      programs_(std::move(programs)),
      searchFolders_(std::move(searchFolders)),
      observer_(observer) {}

std::string MachineProcesses::HostProgram(const std::string& program) const {
  std::vector<std::string> paths = {program};
  if (program.find_first_of("\\/:") == std::string::npos) {
    for (const std::string& folder : searchFolders_) paths.push_back(JoinPath(folder, program));
  }
  for (const std::string& path : paths) {
    WindowsPath parsed;
    if (tree_.Parse(path, parsed) != SystemError::Success) continue;
    const auto found = programs_.find(parsed.Key());
    if (found == programs_.end()) continue;
    return host::IsAbsolutePath(found->second) ? found->second : tree_.MachineFolder() + "/" + found->second;
  }
  return {};
}

std::unique_ptr<Process> MachineProcesses::Start(const std::string& commandLine) {
  for (const ProgramCandidate& candidate : ProgramCandidates(commandLine)) {
    host::ProgramStart start;
    start.program = HostProgram(candidate.program);
    if (start.program.empty()) continue;
    start.arguments = SplitArguments(candidate.rest);
    start.folder = tree_.HostPathOf(tree_.CurrentDirectory());
    start.variable = std::string(kMachineVariable) + "=" + tree_.MachineFolder();
    observer_.BeforeStart();
    std::unique_ptr<host::Program> program = host::Start(start);
    if (!program) return nullptr;
    return std::make_unique<MachineProcess>(std::move(program), observer_);
  }
  return nullptr;
}

}  // namespace bxvbwiz
