#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cli/OptionValues.h"

namespace bxvbwiz {

// Exit codes of the program.
constexpr int kExitFinished = 0;
constexpr int kExitNotFinished = 1;  // cancelled, fatal message, unexpected error
constexpr int kExitUsage = 2;        // wrong usage or an unreadable machine folder
constexpr int kExitProject = 3;      // the project cannot be read or is of a kind that cannot be packaged
constexpr int kExitIncomplete = 4;   // --strict: there is an error or a warning; check: the setup differs

enum class Command {
  None,
  Analyse,
  Generate,
  Explain,
  Check,
  Capture,
  Inspect,
  MachineNew,
  MachineRegister,
  MachineCheck
};

// As the user writes it; empty for none.
const char* NameOf(Command command);

// The command line as the user gave it.
struct Options {
  Command command = Command::Analyse;
  std::vector<std::string> projects;  // and groups; one project of explain and check
  std::string name;                   // what explain explains
  std::string machine;                // empty: this computer
  // Folders of this computer that stand for drives of the machine, by letter in upper case.
  std::map<char, std::string> drives;
  std::optional<std::string> appName;
  std::optional<std::string> company;
  std::optional<std::string> appType;
  std::optional<std::string> appVersion;
  bool skipInfo = false;
  bool rebuild = false;
  bool noRebuild = false;
  Answers answers;
  std::optional<Button> yesNo;  // to every other Yes/No question
  bool strict = false;
  bool json = false;
  std::string html;  // where the page goes, "-" for standard output; empty for none
  bool quiet = false;
  bool verbose = false;
  std::vector<std::string> files;  // of inspect
  std::string newMachine;
  std::vector<std::string> components;  // files and folders of machine register
  std::string setup;                    // the setup project that check checks
  std::string captureTo;                // the machine folder that capture makes
  std::string error;  // what is wrong with the command line; the rest is then what could be read of it
};

// Reads the command line. When there is nothing to run (help, version, wrong usage), prints the text and
// gives the exit code.
std::optional<int> ReadOptions(const std::vector<std::string>& arguments, Options& options);

}  // namespace bxvbwiz
