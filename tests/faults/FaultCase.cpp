#include "faults/FaultCase.h"

#include <stdlib.h>  // setenv

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "cli/RunWizard.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLog = "drive_c/windows/Bx6vbwiz.LOG";
constexpr const char* kTemplateReport = "drive_c/Program Files/Borvex/VBWiz/Template/Script Files/Report.txt";

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

// A stream writes elsewhere while it lives.
class Redirected {
 public:
  explicit Redirected(std::ostream& stream) : stream_(stream), previous_(stream.rdbuf(text_.rdbuf())) {}
  ~Redirected() { stream_.rdbuf(previous_); }
  Redirected(const Redirected&) = delete;
  Redirected& operator=(const Redirected&) = delete;
  std::string Text() const { return text_.str(); }

 private:
  std::ostringstream text_;
  std::ostream& stream_;
  std::streambuf* previous_;
};

// What a snapshot holds below a folder ("drive_c/Setups/Demo/"), by the path below it.
Snapshot Below(const Snapshot& all, const std::string& folder) {
  Snapshot below;
  for (auto file = all.lower_bound(folder); file != all.end() && StartsWith(file->first, folder); ++file) {
    below[file->first.substr(folder.size())] = file->second;
  }
  return below;
}

// The temporary files that remain.
std::string Leftovers(const Snapshot& files) {
  std::string leftovers;
  for (const auto& [path, bytes] : files) {
    if (path.find(kTemporaryName) != std::string::npos) leftovers += path + " remains\n";
  }
  return leftovers;
}

}  // namespace

GoldenMachine::GoldenMachine(const std::string& caseName) {
  setenv("SOURCE_DATE_EPOCH", "1137321000", 1);
  setenv("MAKEPE", BXVBWIZ_MAKEPE, 1);
  const std::string command = std::string(BXVBWIZ_GOLDEN) + "/run.sh --lay-out " + caseName + " " + laidOut_;
  if (std::system(command.c_str()) != 0) throw std::runtime_error(command + " failed");
  std::ofstream registry(laidOut_ + "/registry.reg", std::ios::app | std::ios::binary);
  registry << "\r\n[HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Bx6vbwiz\\Logging]\r\n"
              "\"LogLevel\"=\"1\"\r\n";
  registry.close();
  std::ofstream(laidOut_ + "/" + kLog) << kOldText;
  std::ofstream(laidOut_ + "/" + kTemplateReport) << kOldText;
  Restore();
}

void GoldenMachine::Restore() {
  fs::remove_all(Folder());
  fs::copy(laidOut_, Folder(), fs::copy_options::recursive);
}

RunResult GoldenMachine::Run(FaultPlan& plan) {
  Options options;
  options.command = Command::Generate;
  options.project = "C:\\Src\\Demo\\Demo.vbp";
  options.machine = Folder();
  options.json = options.strict = true;
  RunResult result;
  const Redirected out(std::cout);
  const Redirected err(std::cerr);
  const std::unique_ptr<Computer> machine = OpenFaultyMachine(options.machine, plan);
  result.code = RunWizardOn(options, *machine);
  result.output = out.Text();
  result.repeated = AddLines(err.Text(), result.told);
  AddLines(LogText(), result.told);
  result.files = Files();
  return result;
}

std::string GoldenMachine::LogText() const {
  return ReadBytes(Folder() + "/" + kLog);
}

Snapshot GoldenMachine::Files() const {
  Snapshot files = TakeSnapshot(Folder());
  files.erase(kLog);
  files.erase("drive_c/Bx6vbwiz.LOG");  // where the Windows folder is not known
  files.erase("drive_c/Src/Demo/Bx6vbwiz.LOG");
  return files;
}

bool IsByTheWay(const std::string& path) {
  return path == "drive_c/windows/_BxVbErr.txt" || path == "drive_c/Src/Demo/Demo.exe";
}

std::string Damage(const Snapshot& before, const Snapshot& after) {
  std::string damage;
  for (const auto& [path, bytes] : before) {
    if (IsByTheWay(path)) continue;
    const auto now = after.find(path);
    if (now == after.end()) {
      damage += path + " is gone\n";
    } else if (now->second != bytes) {
      damage += path + " has changed\n";
    }
  }
  return damage;
}

std::string CaseName(const ::testing::TestParamInfo<const char*>& test) {
  std::string name = test.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

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

FaultCase::FaultCase() : machine_(GetParam()) {
  before_ = machine_.Files();
  plain_ = machine_.Run(plan_);
  FaultPlan second;
  twice_ = machine_.Run(second);
}

void FaultCase::SetUp() {
  ASSERT_EQ(plain_.code, 0);
  ASSERT_EQ(twice_.code, 0);
}

std::string FaultCase::Violation(const std::string& path, const RunResult& broken) {
  std::string wrong = Damage(before_, broken.files) + Leftovers(broken.files);
  const bool isSame =
      broken.code == plain_.code && broken.output == plain_.output && broken.files == plain_.files;
  if (!isSame) wrong += NotTold(path, broken);
  if (!broken.repeated.empty()) wrong += "told more than once:\n" + broken.repeated;
  if (broken.files != plain_.files && broken.files != before_) wrong += NotRepeatable(broken.files);
  return wrong;
}

std::string FaultCase::NotTold(const std::string& path, const RunResult& broken) const {
  std::string wrong;
  if (broken.code == 0) wrong += "the run counts as finished and complete\n";
  std::string said;
  for (const std::string& line : broken.told) {
    if (plain_.told.count(line) != 0) continue;
    if (line.find(path) != std::string::npos) return wrong;
    said += "  " + line + "\n";
  }
  return wrong + (said.empty() ? "nothing is told\n" : "what is told does not name it:\n" + said);
}

std::string FaultCase::NotRepeatable(const Snapshot& left) {
  FaultPlan none;
  const RunResult again = machine_.Run(none);
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
