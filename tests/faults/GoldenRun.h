#pragma once

#include <map>
#include <set>
#include <string>

#include "faults/FaultyPlatform.h"
#include "TestMachine.h"

namespace bxvbwiz {

// What a snapshot holds below a folder ("drive_c/Setups/Demo/"), by the path behind it.
Snapshot Below(const Snapshot& all, const std::string& folder);

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

// The machine folder of a golden case, with logging switched on, in a temporary place.
class GoldenMachine {
 public:
  explicit GoldenMachine(const std::string& caseName);

  // Makes the folder as it was laid out.
  void Restore();
  // generate --json --strict in this process, with the fault of `plan`; in what the machine folder is now.
  RunResult Run(FaultPlan& plan);
  Snapshot Files() const;  // without the log
  std::string LogText() const;
  std::string Folder() const { return place_.Folder() + "/machine"; }

 private:
  TestMachine place_;
  std::string laidOut_ = place_.Folder() + "/laid-out";
};

// A file that this program makes for a moment bears it in its name.
constexpr const char* kTemporaryName = ".bxvbwiz-";

// What the compiler makes: not a result, and written over by every run.
bool IsByTheWay(const std::string& path);

// The files and folders that were there before and have changed or are gone.
std::string Damage(const Snapshot& before, const Snapshot& after);
// The temporary files that remain.
std::string Leftovers(const Snapshot& files);

}  // namespace bxvbwiz
