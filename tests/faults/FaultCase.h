#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "faults/GoldenRun.h"

namespace bxvbwiz {

// The golden cases that are broken: forms, controls and .dep files; references to data access; a rebuild.
inline constexpr const char* kFaultCases[] = {"standard", "data-access", "rebuilt"};

std::string CaseName(const ::testing::TestParamInfo<const char*>& test);

// The positions below `count` that are tried: some of them, or all when $BXVBWIZ_FAULTS is "all".
std::vector<std::size_t> Sample(std::size_t count);

// A golden case, what a run of it leaves when nothing fails, and the rule for runs in which something does:
// a fault is told, or it leaves exactly the result that the run has without it; there is nothing between.
//   told     a line of standard error or of the log that the run does not have otherwise names what the call
//            was about, and the exit code is not that of a finished and complete run; no line comes twice
//   result   exit code, standard output, and every file of the machine folder but the log
// Whatever was told, every file that was there before is as it was, and a run without the fault on what is
// left makes the right setup project, in a folder of its own when the broken run has made one.
class FaultCase : public ::testing::TestWithParam<const char*> {
 protected:
  FaultCase();
  void SetUp() override;

  // What breaks the rule after a run in which a call about `path` failed; empty when nothing does.
  std::string Violation(const std::string& path, const RunResult& broken);
  // What is wrong with a run on what a broken run left.
  std::string NotRepeatable(const Snapshot& left);

  GoldenMachine machine_;
  Snapshot before_;
  FaultPlan plan_;  // of the run in which nothing fails
  RunResult plain_;
  RunResult twice_;  // of a second run in the same folder

 private:
  std::string NotTold(const std::string& path, const RunResult& broken) const;
};

}  // namespace bxvbwiz
