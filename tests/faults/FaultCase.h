#pragma once

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "faults/FaultyMachine.h"
#include "TestMachine.h"

namespace bxvbwiz {

// What a run of the program leaves.
struct RunResult {
  int code = 0;
  std::string output;
  std::set<std::string> told;  // the lines of standard error and of the log
  std::string repeated;        // the lines of standard error that came twice
  Snapshot files;              // of the machine folder, without the log
};

// What the log and the template's report, which runs add to, hold at first: more than a run adds, so that
// what half of the new content leaves would be less.
inline const std::string kOldText = std::string(9999, '=') + "\r\n";

// The golden cases that are broken: forms, controls and .dep files; references to data access; a rebuild.
inline constexpr const char* kFaultCases[] = {"standard", "data-access", "rebuilt"};

// The positions below `count` that are tried: some of them, or all when $BXVBWIZ_FAULTS is "all".
std::vector<std::size_t> Sample(std::size_t count);

// The machine folder of a golden case, with logging switched on, in a temporary place; what a run of it
// leaves when nothing fails; and the rule for runs in which something does: a fault is reported, or it leaves
// exactly the result that the run has without it. There is nothing between.
//   reported  a line of standard error or of the log that the run does not have otherwise names what the call
//             was about, and the exit code is not that of a finished and complete run; no line comes twice
//   result    exit code, standard output, and every file of the machine folder but the log
// Whatever was reported, every file that was there before is as it was, and a run without the fault on what
// is left makes the right setup project, in a folder of its own when the broken run has made one.
class FaultCase : public ::testing::TestWithParam<const char*> {
 protected:
  FaultCase();
  void SetUp() override;

  // Makes the folder as it was laid out.
  void Restore();
  // generate --json --strict in this process, with the fault of `plan`; in what the machine folder is now.
  RunResult Run(FaultPlan& plan);
  RunResult Run(FaultPlan&& plan) { return Run(plan); }
  std::string Folder() const { return place_.Folder() + "/machine"; }
  std::string LogText() const;
  Snapshot Files() const;  // without the log

  // What the compiler makes: not a result, and written over by every run.
  static bool IsByTheWay(const std::string& path);
  // The name of a file that the program makes for a moment has a part of its own.
  static bool IsTemporary(const std::string& path) { return path.find(".bxvbwiz-") != std::string::npos; }
  // The files and folders that were there before and have changed or are gone.
  static std::string Damage(const Snapshot& before, const Snapshot& after);
  // What breaks the rule after a run in which a call about `path` failed; empty when nothing does.
  std::string Violation(const std::string& path, const RunResult& broken);
  // What is wrong with a run on what a broken run left.
  std::string NotRepeatable(const Snapshot& left);

 private:
  std::string NotReported(const std::string& path, const RunResult& broken) const;

  TestMachine place_;
  std::string laidOut_ = place_.Folder() + "/laid-out";

 protected:
  Snapshot before_;
  FaultPlan plan_;  // of the run in which nothing fails
  RunResult plain_;
  RunResult twice_;  // of a second run in the same folder
};

}  // namespace bxvbwiz
