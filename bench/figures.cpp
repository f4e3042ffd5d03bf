// Parts of the wizard as a program, to be measured against programs that do the same:
//   figures set-keys MACHINE FILE SECTION <LINES    sets each "key=value" of the standard input
//   figures copy-tree MACHINE SOURCE TARGET         copies a folder's tree into an existing folder
//   figures registry-calls MACHINE PROJECT          prints how often an analysis of the project calls the
//   registry
// Files and folders are Windows paths on the machine folder MACHINE. Exits with 1 on a failure.

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "machine/Machine.h"
#include "platform/Forwarding.h"
#include "RecordingUser.h"
#include "support/basLogging.h"
#include "support/basMisc.h"
#include "wizard/WizardCore.h"

namespace {

int SetKeys(bxvbwiz::Machine& machine, const std::string& file, const std::string& section) {
  bxvbwiz::ProfileStrings& profile = machine.platform().profiles;
  std::string line;
  while (std::getline(std::cin, line)) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) continue;
    const std::string key = line.substr(0, equals);
    const std::string value = line.substr(equals + 1);
    if (!profile.WriteString(section, key, value, file)) return 1;
  }
  return profile.Flush().empty() ? 0 : 1;
}

int CopyTree(bxvbwiz::Machine& machine, std::string source, std::string target) {
  bxvbwiz::Session session(machine.platform(), bxvbwiz::StartMode::Automation);
  const bxvbwiz::SessionScope scope(session);
  bxvbwiz::RecordingUser user;
  bxvbwiz::CopyFileTree(machine.platform().files, user, source, target);
  return user.messages.empty() ? 0 : 1;
}

class RegistryCalls : public bxvbwiz::CallHook {
 public:
  int count = 0;

 private:
  void After(const bxvbwiz::SeamCall& call, bxvbwiz::SystemError) override {
    if (call.subject.substr(0, 5) == "HKEY_") ++count;
  }
};

int CountRegistryCalls(bxvbwiz::Machine& machine, const std::string& project) {
  RegistryCalls calls;
  bxvbwiz::ForwardingPlatform watched(machine.platform(), calls);
  bxvbwiz::WizardCore core(watched.platform(), bxvbwiz::StartMode::Automation);
  bxvbwiz::RecordingUser user;
  core.SetUser(&user);
  bxvbwiz::Analysis analysis(core.platform(), user, core.global());
  const auto result = analysis.LoadTrees(project, false, {});
  std::cout << calls.count << '\n';
  return result == bxvbwiz::Analysis::Result::Done && user.messages.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) try {
  std::ios::sync_with_stdio(false);  // otherwise lines would be read byte by byte
  const std::vector<std::string> arguments(argv, argv + argc);
  const bool countsCalls = arguments.size() == 4 && arguments[1] == "registry-calls";
  if (arguments.size() != 5 && !countsCalls) {
    std::cerr << "usage: figures set-keys MACHINE FILE SECTION | copy-tree MACHINE SOURCE TARGET |\n"
                 "               registry-calls MACHINE PROJECT\n";
    return 2;
  }
  bxvbwiz::Machine machine(arguments[2]);
  if (countsCalls) return CountRegistryCalls(machine, arguments[3]);
  if (arguments[1] == "set-keys") return SetKeys(machine, arguments[3], arguments[4]);
  return CopyTree(machine, arguments[3], arguments[4]);
} catch (const std::exception& error) {
  std::cerr << "figures: " << error.what() << '\n';
  return 1;
}
