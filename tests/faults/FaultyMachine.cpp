#include "faults/FaultyMachine.h"

#include <map>

#include "platform/Forwarding.h"

namespace bxvbwiz {
namespace {

using E = SystemError;

// The errors that the system gives. That something is missing is an answer and no fault: where a call asks
// whether something is there, that error is not among them. The other calls have one way to fail.
const std::map<std::string_view, std::vector<E>> kErrors = {
    {"Find", {E::AccessDenied, E::NotReady}},
    {"Read", {E::FileNotFound, E::AccessDenied, E::SharingViolation, E::GeneralFailure}},
    {"Map", {E::AccessDenied, E::SharingViolation, E::NotEnoughMemory}},
    {"Write", {E::PathNotFound, E::AccessDenied, E::WriteProtect, E::DiskFull}},
    {"Copy", {E::FileNotFound, E::AccessDenied, E::SharingViolation, E::DiskFull}},
    {"Rename", {E::FileNotFound, E::AccessDenied, E::AlreadyExists, E::SharingViolation}},
    {"Delete", {E::AccessDenied, E::SharingViolation}},
    {"MakeDirectory", {E::PathNotFound, E::AccessDenied, E::AlreadyExists, E::DiskFull}},
    {"SetAttributes", {E::FileNotFound, E::AccessDenied}},
    {"FullPath", {E::FilenameTooLong}},
    {"ChangeDirectory", {E::PathNotFound, E::AccessDenied}},
    {"OpenKey", {E::AccessDenied, E::NotEnoughMemory}},
    {"CreateKey", {E::AccessDenied, E::NotEnoughMemory}},
    {"CloseKey", {E::InvalidHandle}},
    {"EnumKey", {E::AccessDenied, E::MoreData, E::NotEnoughMemory}},
    {"EnumValue", {E::AccessDenied, E::MoreData, E::NotEnoughMemory}},
    {"QueryValue", {E::AccessDenied, E::MoreData, E::NotEnoughMemory}},
};

struct CountedGuids : Guids {
  std::optional<GuidBytes> Create() override { return GuidBytes{++last}; }
  std::uint8_t last = 0;
};

struct PatientProcesses : Processes {
  explicit PatientProcesses(Processes& machine) : inner(machine) {}
  std::unique_ptr<Process> Start(const std::string& commandLine) override {
    std::unique_ptr<Process> process = inner.Start(commandLine);
    while (process != nullptr && process->Wait(1000) == WaitResult::TimedOut) continue;
    return process;
  }
  Processes& inner;
};

class FaultyMachine : public Computer {
 public:
  FaultyMachine(const std::string& folder, FaultPlan& plan)
      : inner_(OpenMachineFolder(folder)),
        processes_(inner_->platform().processes),
        faulty_(WithParts(inner_->platform(), guids_, processes_), plan) {}
  Platform& platform() override { return faulty_.platform(); }
  std::string ProjectPath(const std::string& project) override { return inner_->ProjectPath(project); }
  std::string HostPath(const std::string& windowsPath) override { return inner_->HostPath(windowsPath); }
  void Save() override { inner_->Save(); }

 private:
  std::unique_ptr<Computer> inner_;
  CountedGuids guids_;
  PatientProcesses processes_;
  ForwardingPlatform faulty_;
};

}  // namespace

SystemError FaultPlan::Before(const SeamCall& call) {
  if (call.name == "CopyFiles") return together ? E::Success : E::GeneralFailure;
  const auto known = kErrors.find(call.name);
  const std::vector<E> errors = known == kErrors.end() ? std::vector{E::GeneralFailure} : known->second;
  calls.push_back({call.name, std::string(call.subject), errors.size()});
  if (calls.size() <= failingCall) return E::Success;
  const Call& first = calls[failingCall];
  const bool isFirst = calls.size() - 1 == failingCall;
  const bool isAgain = lasts && first.path == call.subject && first.name == call.name;
  return isFirst || isAgain ? errors[failingWay] : E::Success;
}

std::unique_ptr<Computer> OpenFaultyMachine(const std::string& folder, FaultPlan& plan) {
  return std::make_unique<FaultyMachine>(folder, plan);
}

}  // namespace bxvbwiz
