#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>

#include "faults/FaultCase.h"
#include "faults/HostCalls.h"

// The same one floor deeper, on the machine folder: every call that changes the disk fails once, or is the
// last thing that the process does.
namespace bxvbwiz {
namespace {

class HostFault : public FaultCase {
 protected:
  HostFault() {
    machine_.Restore();
    const HostWatch watch(host_);
    FaultPlan none;
    machine_.Run(none);
  }

  // What is wrong after the run in which this call fails; empty when nothing is.
  std::string FaultViolation(std::size_t call, HostEnd end) {
    machine_.Restore();
    HostPlan plan;
    plan.endAt = call;
    plan.end = end;
    FaultPlan none;
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
    if (child == 0) RunUntilKilled(call, end);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) return "no process\n";
    if (!WIFEXITED(status) || WEXITSTATUS(status) != kKilled) return "the process was not killed\n";
    const Snapshot left = machine_.Files();
    std::string wrong = Damage(before_, left);
    for (const auto& [path, bytes] : left) {
      if (path.back() == '/' || IsByTheWay(path) || path.find(kTemporaryName) != std::string::npos) continue;
      if (!IsComplete(path, bytes)) wrong += path + " is neither the old file nor a new one\n";
    }
    return left == before_ ? wrong : wrong + NotRepeatable(left);
  }

 private:
  [[noreturn]] void RunUntilKilled(std::size_t call, HostEnd end) {
    HostPlan plan;
    plan.endAt = call;
    plan.end = end;
    FaultPlan none;
    std::string output;
    std::string messages;
    const HostWatch watch(plan);
    machine_.RunOnly(none, output, messages);
    _exit(0);
  }

  bool IsComplete(const std::string& path, const std::string& bytes) const {
    for (const Snapshot* known : {&before_, &plain_.files}) {
      const auto file = known->find(path);
      if (file != known->end() && file->second == bytes) return true;
    }
    const auto versions = host_.versions.find(machine_.Folder() + "/" + path);
    return versions != host_.versions.end() && versions->second.count(bytes) != 0;
  }

 protected:
  HostPlan host_;  // of a run that nothing happens to
};

TEST_P(HostFault, IsToldOrChangesNothing) {
  std::size_t runs = 0;
  for (const std::size_t call : Sample(host_.calls.size())) {
    for (const HostEnd end : {HostEnd::NoSpace, HostEnd::NoPermission, HostEnd::FullHalfway}) {
      const bool isWrite = std::string(host_.calls[call].name) == "write";
      if (end == HostEnd::FullHalfway && !isWrite) continue;
      ++runs;
      const std::string wrong = FaultViolation(call, end);
      EXPECT_EQ(wrong, "") << "call " << call << ", " << host_.calls[call].name << " "
                           << host_.calls[call].path << ", fails in way " << static_cast<int>(end);
    }
  }
  std::cout << host_.calls.size() << " host calls, " << runs << " faults\n";
}

TEST_P(HostFault, AKilledProcessLeavesWholeFiles) {
  std::size_t runs = 0;
  for (const std::size_t call : Sample(host_.calls.size())) {
    for (const HostEnd end : {HostEnd::Killed, HostEnd::KilledHalfway}) {
      const bool isWrite = std::string(host_.calls[call].name) == "write";
      if (end == HostEnd::KilledHalfway && !isWrite) continue;
      ++runs;
      EXPECT_EQ(KillViolation(call, end), "")
          << "killed at call " << call << ", " << host_.calls[call].name << " " << host_.calls[call].path
          << (end == HostEnd::KilledHalfway ? ", halfway" : "");
    }
  }
  std::cout << host_.calls.size() << " host calls, " << runs << " kills\n";
}

INSTANTIATE_TEST_SUITE_P(Golden, HostFault, ::testing::ValuesIn(kFaultCases), CaseName);

}  // namespace
}  // namespace bxvbwiz
