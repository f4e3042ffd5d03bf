#include <exception>
#include <iostream>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/RunWizard.h"
#include "cli/Terminal.h"

namespace {

int Run(std::vector<std::string> arguments) {
  bxvbwiz::Options options;
  if (const auto code = bxvbwiz::ReadOptions(std::move(arguments), options)) {
    if (options.json && !options.error.empty()) bxvbwiz::PrintJson(options, options.error);
    return *code;
  }
  switch (options.command) {
    case bxvbwiz::Command::Inspect:
      return bxvbwiz::InspectFiles(options);
    case bxvbwiz::Command::MachineNew:
      return bxvbwiz::MakeMachine(options);
    case bxvbwiz::Command::MachineRegister:
      return bxvbwiz::RegisterComponents(options);
    case bxvbwiz::Command::MachineCheck:
      return bxvbwiz::CheckMachine(options);
    default:
      return bxvbwiz::RunWizard(options);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const int code = Run(bxvbwiz::ProgramArguments(argc, argv));
    if (std::cout.flush()) return code;
    std::cerr << "bxvbwiz: standard output could not be written\n";
    return bxvbwiz::kExitNotFinished;
  } catch (const std::exception& error) {
    std::cerr << "bxvbwiz: " << error.what() << '\n';
    return bxvbwiz::kExitNotFinished;
  }
}
