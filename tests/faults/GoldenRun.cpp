#include "faults/GoldenRun.h"

#include <stdlib.h>  // setenv

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

}  // namespace

Snapshot Below(const Snapshot& all, const std::string& folder) {
  Snapshot below;
  for (auto file = all.lower_bound(folder); file != all.end() && StartsWith(file->first, folder); ++file) {
    below[file->first.substr(folder.size())] = file->second;
  }
  return below;
}

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

std::string Leftovers(const Snapshot& files) {
  std::string leftovers;
  for (const auto& [path, bytes] : files) {
    if (path.find(kTemporaryName) != std::string::npos) leftovers += path + " remains\n";
  }
  return leftovers;
}

}  // namespace bxvbwiz
