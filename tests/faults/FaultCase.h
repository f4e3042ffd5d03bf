#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>  // setenv

#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "cli/RunWizard.h"
#include "faults/FaultyMachine.h"
#include "TestMachine.h"
#include "text/Text.h"

namespace bxvbwiz {

// What a run of the program leaves.
struct RunResult {
  int code = 0;
  std::string output;
  std::set<std::string> said;  // the lines of standard error and of the log
  std::string repeated;        // the lines of standard error that came twice
  Snapshot files;              // of the machine folder, without the log
};

// What the log and the template's report, which runs add to, hold at first: more than a run adds, so that
// what half of the new content leaves would be less.
inline const std::string kOldText = std::string(9999, '=') + "\r\n";

inline constexpr const char* kLog = "drive_c/windows/Bx6vbwiz.LOG";
inline constexpr const char* kTemplateReport =
    "drive_c/Program Files/Borvex/VBWiz/Template/Script Files/Report.txt";

// A stream writes elsewhere while it lives.
struct Redirected {
  ~Redirected() { stream.rdbuf(previous); }
  std::ostream& stream;
  std::ostringstream text{};
  std::streambuf* previous = stream.rdbuf(text.rdbuf());
};

// Gives those that were there already; the indented ones explain others and may repeat.
inline std::string AddLines(const std::string& text, std::set<std::string>& lines) {
  std::string repeated;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!lines.insert(line).second && !line.empty() && line[0] != ' ') repeated += line + "\n";
  }
  return repeated;
}

// What a snapshot holds below a folder ("drive_c/Setups/Demo/"), by the path below it.
inline Snapshot Below(const Snapshot& all, const std::string& folder) {
  Snapshot below;
  for (auto file = all.lower_bound(folder); file != all.end() && StartsWith(file->first, folder); ++file) {
    below[file->first.substr(folder.size())] = file->second;
  }
  return below;
}

// The golden cases in which calls fail: forms, controls and .dep files; references to data access; a rebuild.
inline constexpr const char* kFaultCases[] = {"standard", "data-access", "rebuilt"};

// The positions below `count` that are tried: some of them, or all when $BXVBWIZ_FAULTS is "all".
inline std::vector<std::size_t> Sample(std::size_t count) {
  constexpr std::size_t kTried = 6;  // about; at odd distances, so that both of a pair come up
  const char* wanted = std::getenv("BXVBWIZ_FAULTS");
  const bool all = wanted != nullptr && std::string(wanted) == "all";
  std::vector<std::size_t> sample;
  for (std::size_t position = 0; position < count; position += all ? 1 : count / kTried / 2 * 2 + 1) {
    sample.push_back(position);
  }
  return sample;
}

// The machine folder of a golden case, with logging switched on, in a temporary place; what a run of it
// leaves when nothing fails; and the rule for runs in which something does: a fault is reported, or it leaves
// exactly the result that the run has without it. There is nothing in between.
//   reported  a line of standard error or of the log that the run does not have otherwise names what the call
//             was about, and the exit code is not that of a finished and complete run, unless it is a note;
//             no finding comes twice
//   result    exit code, standard output, and every file of the machine folder but the log
// Whatever was reported, every file that was there before is as it was, and a run without the fault on what
// is left makes the right setup project, in a folder of its own when the broken run has made one.
class FaultCase : public ::testing::TestWithParam<const char*> {
 protected:
  FaultCase() {
    setenv("SOURCE_DATE_EPOCH", "1137321000", 1);
    setenv("MAKEPE", BXVBWIZ_MAKEPE, 1);
    const std::string command =
        BXVBWIZ_GOLDEN "/run.sh --lay-out " + std::string(GetParam()) + " " + laidOut_;
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::ofstream(laidOut_ + "/registry.reg", std::ios::app | std::ios::binary)
        << "\r\n[HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Bx6vbwiz\\Logging]\r\n"
           "\"LogLevel\"=\"1\"\r\n";
    std::ofstream(laidOut_ + "/" + kLog) << kOldText;
    std::ofstream(laidOut_ + "/" + kTemplateReport) << kOldText;
    Restore();
    before_ = Files();
    plain_ = Run(plan_);
    twice_ = Run(FaultPlan());
  }
  void SetUp() override {
    ASSERT_TRUE(plain_.code == kExitFinished || plain_.code == kExitIncomplete) << plain_.code;
    ASSERT_EQ(twice_.code, plain_.code);
  }

  // Makes the folder as it was laid out.
  void Restore() {
    std::filesystem::remove_all(Folder());
    std::filesystem::copy(laidOut_, Folder(), std::filesystem::copy_options::recursive);
  }
  // generate --json --strict in this process, with the fault of `plan`; in what the machine folder is now.
  RunResult Run(FaultPlan& plan) {
    Options options;
    options.command = Command::Generate;
    options.projects = {"C:\\Src\\Demo\\Demo.vbp"};
    options.machine = Folder();
    options.json = options.strict = true;
    RunResult result;
    const Redirected out{std::cout};
    const Redirected err{std::cerr};
    FaultyMachine machine(options.machine, plan);
    result.code = RunWizardOn(options, machine);
    result.output = out.text.str();
    result.repeated = AddLines(err.text.str(), result.said);
    AddLines(LogText(), result.said);
    result.files = Files();
    return result;
  }
  RunResult Run(FaultPlan&& plan) { return Run(plan); }
  std::string Folder() const { return place_.Folder() + "/machine"; }
  std::string LogText() const { return ReadBytes(Folder() + "/" + kLog); }
  // Without the log.
  Snapshot Files() const {
    Snapshot files = TakeSnapshot(Folder());
    files.erase(kLog);
    files.erase("drive_c/Bx6vbwiz.LOG");  // where the Windows folder is not known
    files.erase("drive_c/Src/Demo/Bx6vbwiz.LOG");
    return files;
  }

  // What the compiler makes: not a result, and every run overwrites it.
  static bool IsByTheWay(const std::string& path) {
    return path == "drive_c/windows/_BxVbErr.txt" || path == "drive_c/Src/Demo/Demo.exe";
  }
  // The program marks the names of its temporary files.
  static bool IsTemporary(const std::string& path) { return path.find(".bxvbwiz-") != std::string::npos; }
  // The files and folders that were there before and have changed or are gone.
  static std::string Damage(const Snapshot& before, const Snapshot& after) {
    std::string damage;
    for (const auto& [path, bytes] : before) {
      const auto now = after.find(path);
      if (IsByTheWay(path) || (now != after.end() && now->second == bytes)) continue;
      damage += path + (now == after.end() ? " is gone\n" : " has changed\n");
    }
    return damage;
  }
  // How a run in which a call about `path` failed breaks the rule; empty when it does not.
  std::string Violation(const std::string& path, const RunResult& broken) {
    std::string wrong = Damage(before_, broken.files);
    for (const auto& [left, bytes] : broken.files) {
      if (IsTemporary(left)) wrong += left + " remains\n";
    }
    const bool isSame =
        broken.code == plain_.code && broken.output == plain_.output && broken.files == plain_.files;
    if (!isSame) wrong += NotReported(path, broken);
    if (!broken.repeated.empty()) wrong += "reported more than once:\n" + broken.repeated;
    if (broken.files != plain_.files && broken.files != before_) wrong += NotRepeatable(broken.files);
    return wrong;
  }
  // What is wrong with a run on what a broken run left.
  std::string NotRepeatable(const Snapshot& left) {
    const RunResult again = Run(FaultPlan());
    std::string wrong = Damage(left, again.files);
    if (again.code != plain_.code) wrong += "the next run ends with " + std::to_string(again.code) + "\n";
    const bool folderMade = left.count("drive_c/Setups/Demo/") != 0;
    const std::string folder = folderMade ? "drive_c/Setups/Demo-1/" : "drive_c/Setups/Demo/";
    if (Below(again.files, folder) != Below(folderMade ? twice_.files : plain_.files, folder)) {
      wrong += "the next run does not make the right project\n";
    }
    return wrong;
  }

 private:
  std::string NotReported(const std::string& path, const RunResult& broken) const {
    const auto isNewNote = [this](const std::string& line) {
      return plain_.said.count(line) == 0 && line.find("note [") != std::string::npos;
    };
    const bool hasNote = std::any_of(broken.said.begin(), broken.said.end(), isNewNote);
    std::string wrong = broken.code == 0 && !hasNote ? "the run counts as finished and complete\n" : "";
    std::string said;
    for (const std::string& line : broken.said) {
      if (plain_.said.count(line) != 0) continue;
      if (line.find(path) != std::string::npos) return wrong;
      said += "  " + line + "\n";
    }
    return wrong + "nothing names it:\n" + said;
  }

  TestMachine place_;
  std::string laidOut_ = place_.Folder() + "/laid-out";

 protected:
  Snapshot before_;
  FaultPlan plan_;  // of the run in which nothing fails
  RunResult plain_;
  RunResult twice_;  // of a second run in the same folder
};

}  // namespace bxvbwiz
