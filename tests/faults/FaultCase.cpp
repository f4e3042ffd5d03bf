#include "faults/FaultCase.h"

#include <stdlib.h>  // setenv

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "cli/RunWizard.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLog = "drive_c/windows/Bx6vbwiz.LOG";
constexpr const char* kTemplateReport = "drive_c/Program Files/Borvex/VBWiz/Template/Script Files/Report.txt";

// A stream writes elsewhere while it lives.
struct Redirected {
  ~Redirected() { stream.rdbuf(previous); }
  std::ostream& stream;
  std::ostringstream text{};
  std::streambuf* previous = stream.rdbuf(text.rdbuf());
};

// Gives those that were there already.
std::string AddLines(const std::string& text, std::set<std::string>& lines) {
  std::string repeated;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!lines.insert(line).second && !line.empty()) repeated += line + "\n";
  }
  return repeated;
}

// What a snapshot holds below a folder ("drive_c/Setups/Demo/"), by the path below it.
Snapshot Below(const Snapshot& all, const std::string& folder) {
  Snapshot below;
  for (auto file = all.lower_bound(folder); file != all.end() && StartsWith(file->first, folder); ++file) {
    below[file->first.substr(folder.size())] = file->second;
  }
  return below;
}

}  // namespace

std::vector<std::size_t> Sample(std::size_t count) {
  constexpr std::size_t kTried = 6;  // about; at odd distances, so that both of a pair come up
  const char* wanted = std::getenv("BXVBWIZ_FAULTS");
  const bool all = wanted != nullptr && std::string(wanted) == "all";
  std::vector<std::size_t> sample;
  for (std::size_t position = 0; position < count; position += all ? 1 : count / kTried / 2 * 2 + 1) {
    sample.push_back(position);
  }
  return sample;
}

FaultCase::FaultCase() {
  setenv("SOURCE_DATE_EPOCH", "1137321000", 1);
  setenv("MAKEPE", BXVBWIZ_MAKEPE, 1);
  const std::string command = BXVBWIZ_GOLDEN "/run.sh --lay-out " + std::string(GetParam()) + " " + laidOut_;
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

void FaultCase::SetUp() {
  ASSERT_EQ(plain_.code, 0);
  ASSERT_EQ(twice_.code, 0);
}

void FaultCase::Restore() {
  fs::remove_all(Folder());
  fs::copy(laidOut_, Folder(), fs::copy_options::recursive);
}

RunResult FaultCase::Run(FaultPlan& plan) {
  Options options;
  options.command = Command::Generate;
  options.project = "C:\\Src\\Demo\\Demo.vbp";
  options.machine = Folder();
  options.json = options.strict = true;
  RunResult result;
  const Redirected out{std::cout};
  const Redirected err{std::cerr};
  const std::unique_ptr<Computer> machine = OpenFaultyMachine(options.machine, plan);
  result.code = RunWizardOn(options, *machine);
  result.output = out.text.str();
  result.repeated = AddLines(err.text.str(), result.told);
  AddLines(LogText(), result.told);
  result.files = Files();
  return result;
}

std::string FaultCase::LogText() const {
  return ReadBytes(Folder() + "/" + kLog);
}

Snapshot FaultCase::Files() const {
  Snapshot files = TakeSnapshot(Folder());
  files.erase(kLog);
  files.erase("drive_c/Bx6vbwiz.LOG");  // where the Windows folder is not known
  files.erase("drive_c/Src/Demo/Bx6vbwiz.LOG");
  return files;
}

bool FaultCase::IsByTheWay(const std::string& path) {
  return path == "drive_c/windows/_BxVbErr.txt" || path == "drive_c/Src/Demo/Demo.exe";
}

std::string FaultCase::Damage(const Snapshot& before, const Snapshot& after) {
  std::string damage;
  for (const auto& [path, bytes] : before) {
    const auto now = after.find(path);
    if (IsByTheWay(path) || (now != after.end() && now->second == bytes)) continue;
    damage += path + (now == after.end() ? " is gone\n" : " has changed\n");
  }
  return damage;
}

std::string FaultCase::Violation(const std::string& path, const RunResult& broken) {
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

std::string FaultCase::NotReported(const std::string& path, const RunResult& broken) const {
  std::string wrong = broken.code == 0 ? "the run counts as finished and complete\n" : "";
  std::string said;
  for (const std::string& line : broken.told) {
    if (plain_.told.count(line) != 0) continue;
    if (line.find(path) != std::string::npos) return wrong;
    said += "  " + line + "\n";
  }
  return wrong + "nothing names it:\n" + said;
}

std::string FaultCase::NotRepeatable(const Snapshot& left) {
  const RunResult again = Run(FaultPlan());
  std::string wrong = Damage(left, again.files);
  if (again.code != 0) wrong += "the next run ends with " + std::to_string(again.code) + "\n";
  const bool folderMade = left.count("drive_c/Setups/Demo/") != 0;
  const std::string folder = folderMade ? "drive_c/Setups/Demo-1/" : "drive_c/Setups/Demo/";
  if (Below(again.files, folder) != Below(folderMade ? twice_.files : plain_.files, folder)) {
    wrong += "the next run does not make the right project\n";
  }
  return wrong;
}

}  // namespace bxvbwiz
