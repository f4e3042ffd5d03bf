#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Computer.h"
#include "platform/Forwarding.h"
#include "text/Text.h"

namespace bxvbwiz {

// The errors that the system gives. "Not there" is an answer, not a fault: a call that asks whether something
// is there does not fail with it. The other calls have one way to fail.
inline const std::map<std::string_view, std::vector<SystemError>> kErrors = {
    {"Find", {SystemError::AccessDenied, SystemError::NotReady}},
    {"Read",
     {SystemError::FileNotFound, SystemError::AccessDenied, SystemError::SharingViolation,
      SystemError::GeneralFailure}},
    {"Map", {SystemError::AccessDenied, SystemError::SharingViolation, SystemError::NotEnoughMemory}},
    {"Write",
     {SystemError::PathNotFound, SystemError::AccessDenied, SystemError::WriteProtect,
      SystemError::DiskFull}},
    {"Copy",
     {SystemError::FileNotFound, SystemError::AccessDenied, SystemError::SharingViolation,
      SystemError::DiskFull}},
    {"Rename",
     {SystemError::FileNotFound, SystemError::AccessDenied, SystemError::AlreadyExists,
      SystemError::SharingViolation}},
    {"Delete", {SystemError::AccessDenied, SystemError::SharingViolation}},
    {"MakeDirectory",
     {SystemError::PathNotFound, SystemError::AccessDenied, SystemError::AlreadyExists,
      SystemError::DiskFull}},
    {"SetAttributes", {SystemError::FileNotFound, SystemError::AccessDenied}},
    {"FullPath", {SystemError::FilenameTooLong}},
    {"ChangeDirectory", {SystemError::PathNotFound, SystemError::AccessDenied}},
    {"OpenKey", {SystemError::AccessDenied, SystemError::NotEnoughMemory}},
    {"CreateKey", {SystemError::AccessDenied, SystemError::NotEnoughMemory}},
    {"CloseKey", {SystemError::InvalidHandle}},
    {"EnumKey", {SystemError::AccessDenied, SystemError::MoreData, SystemError::NotEnoughMemory}},
    {"EnumValue", {SystemError::AccessDenied, SystemError::MoreData, SystemError::NotEnoughMemory}},
    {"QueryValue", {SystemError::AccessDenied, SystemError::MoreData, SystemError::NotEnoughMemory}},
};

// Counts the system calls of a run and makes one of them fail, and when the fault lasts every later one that
// asks the same of the same.
class FaultPlan : public CallHook {
 public:
  struct Call {
    std::string_view name;
    std::string path;        // what it was asked of; empty where there is none
    std::size_t errors = 0;  // in how many ways the system may refuse it
  };
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  explicit FaultPlan(std::size_t call = kNone, std::size_t way = 0, bool isLasting = false)
      : failingCall(call), failingWay(way), lasts(isLasting) {}
  SystemError Before(const SeamCall& call) override {
    if (call.name == "CopyFiles") return together ? SystemError::Success : SystemError::GeneralFailure;
    const auto known = kErrors.find(call.name);
    const std::vector<SystemError> errors =
        known == kErrors.end() ? std::vector{SystemError::GeneralFailure} : known->second;
    calls.push_back({call.name, std::string(call.subject), errors.size()});
    if (call.name == "Find" && !folder.empty() && StartsWith(call.subject, folder)) return errors.front();
    if (calls.size() <= failingCall) return SystemError::Success;
    const Call& first = calls[failingCall];
    const bool isFirst = calls.size() - 1 == failingCall;
    const bool isAgain = lasts && first.path == call.subject && first.name == call.name;
    return isFirst || isAgain ? errors[failingWay] : SystemError::Success;
  }

  std::vector<Call> calls;
  std::size_t failingCall;
  std::size_t failingWay;
  bool lasts;
  std::string folder;     // with a backslash at its end; every look-up in it fails
  bool together = false;  // the files of a folder are copied in the machine folder's own way; not counted
};

struct CountedGuids : Guids {
  std::optional<GuidBytes> Create(std::string_view) override { return GuidBytes{++last}; }
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

// The computer of a machine folder, whose system calls fail as planned. Its GUIDs are the same in every run,
// and a program has ended when its start returns, so that no program outlives its run.
class FaultyMachine : public Computer {
 public:
  FaultyMachine(const std::string& folder, FaultPlan& plan)
      : inner_(OpenMachineFolder(folder, {})),
        processes_(inner_->platform().processes),
        faulty_(WithParts(inner_->platform(), guids_, processes_), plan) {}
  Platform& platform() override { return faulty_.platform(); }
  std::string ProjectPath(const std::string& project) override { return inner_->ProjectPath(project); }
  void MakeFolder(const std::string& windowsPath) override { inner_->MakeFolder(windowsPath); }
  std::string HostPath(const std::string& windowsPath) override { return inner_->HostPath(windowsPath); }
  void Save() override { inner_->Save(); }

 private:
  std::unique_ptr<Computer> inner_;
  CountedGuids guids_;
  PatientProcesses processes_;
  ForwardingPlatform faulty_;
};

}  // namespace bxvbwiz
