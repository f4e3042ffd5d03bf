#include <exception>
#include <iostream>
#include <sstream>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/RunWizard.h"
#include "cli/Terminal.h"
#include "machine/MachineError.h"

namespace bxvbwiz {
namespace {

// Runs a command of machine folders. With --json its lines become a document.
int RunMachine(const Options& options, int (*run)(const Options&, std::ostream&)) {
  std::ostringstream lines;
  const int code = run(options, options.json ? lines : std::cout);
  if (options.json) PrintJson(options, lines.str(), "", code);
  return code;
}

int RunCommand(const Options& options) {
  switch (options.command) {
    case Command::Inspect:
      return InspectFiles(options);
    case Command::MachineNew:
      return RunMachine(options, MakeMachine);
    case Command::MachineRegister:
      return RunMachine(options, RegisterComponents);
    case Command::MachineCheck:
      return RunMachine(options, CheckMachine);
    default:
      return RunWizard(options);
  }
}

// Whatever happens, there is one document.
int Run(const std::vector<std::string>& arguments) {
  Options options;
  int code = kExitNotFinished;
  try {
    if (const auto ended = ReadOptions(arguments, options)) {
      if (options.json && !options.error.empty()) PrintJson(options, options.error, *ended);
      return *ended;
    }
    return RunCommand(options);
  } catch (const MachineError& error) {
    options.error = error.what();
    code = kExitUsage;
  } catch (const std::exception& error) {
    options.error = error.what();
  }
  std::cerr << "bxvbwiz: " << options.error << '\n';
  if (options.json) PrintJson(options, options.error, code);
  return code;
}

}  // namespace
}  // namespace bxvbwiz

int main(int argc, char** argv) {
  try {
    const int code = bxvbwiz::Run(bxvbwiz::ProgramArguments(argc, argv));
    if (std::cout.flush()) return code;
    std::cerr << "bxvbwiz: standard output could not be written\n";
  } catch (const std::exception& error) {
    std::cerr << "bxvbwiz: " << error.what() << '\n';
  }
  return bxvbwiz::kExitNotFinished;
}
