#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Computer.h"
#include "platform/CallHook.h"

namespace bxvbwiz {

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
  SystemError Before(const SeamCall& call) override;

  std::vector<Call> calls;
  std::size_t failingCall;
  std::size_t failingWay;
  bool lasts;
  bool together = false;  // the files of a folder are copied in the machine folder's own way; not counted
};

// The computer of a machine folder, whose system calls fail as planned. Its GUIDs are the same in every run,
// and a program has ended when its start returns, so that no program outlives its run.
std::unique_ptr<Computer> OpenFaultyMachine(const std::string& folder, FaultPlan& plan);

}  // namespace bxvbwiz
