#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <initializer_list>
#include <iostream>
#include <set>

#include "faults/FaultCase.h"
#include "faults/HostCalls.h"
#include "text/Text.h"

// The same one floor deeper, on the machine folder: every call that changes the disk fails once, or is the
// last thing that the process does.
namespace bxvbwiz {
namespace {

class HostFault : public FaultCase {
 protected:
  HostFault() {
    machine_.Restore();
    const HostWatch watch(host_);
    FaultPlan none = Together();
    machine_.Run(none);
  }

  static FaultPlan Together() {
    FaultPlan plan;
    plan.together = true;
    return plan;
  }

  // What is wrong after the run in which this call fails; empty when nothing is.
  std::string FaultViolation(std::size_t call, HostEnd end) {
    machine_.Restore();
    HostPlan plan{{}, call, end, {}};
    FaultPlan none = Together();
    RunResult broken;
    {
      const HostWatch watch(plan);
      broken = machine_.Run(none);
    }
    // A call on an open file writes a temporary one, whose name says nothing.
    const std::string& path = host_.calls[call].path;
    const bool isTemporary = path.find(kTemporaryName) != std::string::npos;
    return Violation(isTemporary ? "" : path.substr(path.rfind('/') + 1), broken);
  }

  // What is wrong after the process was killed at this call.
  std::string KillViolation(std::size_t call, HostEnd end) {
    machine_.Restore();
    const pid_t child = fork();
    if (child == 0) {
      HostPlan plan{{}, call, end, {}};
      const HostWatch watch(plan);
      FaultPlan none = Together();
      machine_.Run(none);
      _exit(0);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) return "no process\n";
    if (!WIFEXITED(status) || WEXITSTATUS(status) != kKilled) return "the process was not killed\n";
    const Snapshot left = machine_.Files();
    std::string wrong = Damage(before_, left);
    if (!StartsWith(machine_.LogText(), kOldText)) wrong += "the log has lost what it held\n";
    for (const auto& [path, bytes] : left) {
      if (path.back() == '/' || IsByTheWay(path) || path.find(kTemporaryName) != std::string::npos) continue;
      if (!IsComplete(path, bytes)) wrong += path + " is neither the old file nor a new one\n";
    }
    return left == before_ ? wrong : wrong + NotRepeatable(left);
  }

  // The old file, a new one, or one with a part of what is added to it.
  bool IsComplete(const std::string& path, const std::string& bytes) const {
    std::set<std::string> known;
    if (const auto old = before_.find(path); old != before_.end()) known.insert(old->second);
    if (const auto made = host_.versions.find(machine_.Folder() + "/" + path); made != host_.versions.end())
      known.insert(made->second.begin(), made->second.end());
    const auto last = plain_.files.find(path);
    if (last == plain_.files.end()) return known.count(bytes) != 0;
    const bool isPart = StartsWith(last->second, bytes);
    return bytes == last->second || std::any_of(known.begin(), known.end(), [&](const std::string& whole) {
             return bytes == whole || (isPart && StartsWith(bytes, whole));
           });
  }

  // Tries calls, all or those of one name, in each of these ways.
  template <class Violation>
  void TryCalls(std::string_view name, std::initializer_list<HostEnd> ends, Violation violation) {
    std::vector<std::size_t> calls;
    for (std::size_t call = 0; call < host_.calls.size(); ++call) {
      if (name.empty() || host_.calls[call].name == name) calls.push_back(call);
    }
    std::size_t runs = 0;
    for (const std::size_t position : Sample(calls.size())) {
      const HostCall& call = host_.calls[calls[position]];
      for (const HostEnd end : ends) {
        const bool isHalfway = end == HostEnd::KilledHalfway || end == HostEnd::FullHalfway;
        if (isHalfway && call.name != kWrite && call.name != kAppend) continue;
        ++runs;
        EXPECT_EQ(violation(calls[position], end), "")
            << "call " << calls[position] << ", " << call.name << " " << call.path << ", ends in way "
            << static_cast<int>(end);
      }
    }
    EXPECT_NE(runs, 0U);
    std::cout << calls.size() << " host calls, " << runs << " runs\n";
  }

  HostPlan host_;  // of a run that nothing happens to
};

TEST_P(HostFault, IsToldOrChangesNothing) {
  TryCalls({}, {HostEnd::NoSpace, HostEnd::NoPermission, HostEnd::FullHalfway},
           [&](std::size_t call, HostEnd end) { return FaultViolation(call, end); });
}

TEST_P(HostFault, AKilledProcessLeavesWholeFiles) {
  const auto kill = [&](std::size_t call, HostEnd end) { return KillViolation(call, end); };
  TryCalls({}, {HostEnd::Killed, HostEnd::KilledHalfway}, kill);
  TryCalls(kAppend, {HostEnd::KilledHalfway}, kill);  // of which a sample has few
}

INSTANTIATE_TEST_SUITE_P(Golden, HostFault, ::testing::ValuesIn(kFaultCases), CaseName);

}  // namespace
}  // namespace bxvbwiz
