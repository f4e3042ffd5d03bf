#include "cli/Options.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <iostream>
#include <iterator>

#include "cli/Descriptions.h"
#include "cli/OptionValues.h"
#include "cli/Revision.h"
#include "cli/Terminal.h"
#include "cli/Words.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The revision is empty in sources without their history.
constexpr const char* kVersion = sizeof(BXVBWIZ_REVISION) > 1 ? "bxvbwiz " BXVBWIZ_VERSION
                                                                " (" BXVBWIZ_REVISION ")"
                                                              : "bxvbwiz " BXVBWIZ_VERSION;

// What stands below the help: the exit codes and variables of a run, and of what is no run.
constexpr const char* kRun =
    "Exit codes: 0 finished; 1 ended without finishing; 2 wrong usage or an unreadable machine folder;\n"
    "3 the project cannot be read or cannot be packaged; 4 finished with errors or warnings (--strict).\n"
    "Variables: BXVBWIZ_MACHINE names the machine folder; SOURCE_DATE_EPOCH is the present time there.";
constexpr const char* kNoRun =
    "Exit codes: 0 done; 1 something is missing or cannot be read or written;\n"
    "2 wrong usage or an unreadable machine folder.";

// The commands; the first name of each is its own.
struct CommandName {
  Command command;
  const char* name;
};

constexpr CommandName kCommands[] = {{Command::Analyse, "analyse"},
                                     {Command::Analyse, "analyze"},
                                     {Command::Generate, "generate"},
                                     {Command::Explain, "explain"},
                                     {Command::Check, "check"},
                                     {Command::Capture, "capture"},
                                     {Command::Inspect, "inspect"},
                                     {Command::MachineNew, "machine new"},
                                     {Command::MachineRegister, "machine register"},
                                     {Command::MachineCheck, "machine check"}};

Command CommandNamed(const std::string& name) {
  for (const CommandName& row : kCommands) {
    if (row.name == name) return row.command;
  }
  return Command::None;
}

// What can be said of a command line that is wrong.
void KeepError(const std::vector<std::string>& arguments, const std::string& error, Options& options) {
  options.error = error;
  options.json = std::find(arguments.begin(), arguments.end(), "--json") != arguments.end();
  options.command = Command::None;
  std::string before;  // the word before, for commands of two
  for (const std::string& word : arguments) {
    if (options.command == Command::None) options.command = CommandNamed(before + word);
    if (options.command == Command::None) options.command = CommandNamed(word);
    before = word + " ";
  }
}

// Adds a command with an example of its use.
CLI::App* AddCommand(CLI::App& above, const char* name, const char* description, const char* example,
                     const std::string& notes = kRun) {
  CLI::App* command = above.add_subcommand(name, description);
  return command->footer("Example: bxvbwiz " + std::string(example) + "\n\n" + notes);
}

// An option or argument that holds a path.
template <class Value>
CLI::Option* AddPath(CLI::App& command, const char* name, Value& value, const std::string& description) {
  return command.add_option(name, value, description)->transform(CLI::Validator(TakePath, ""));
}

void AddDriveOption(CLI::App& command, GivenOptions& given) {
  command
      .add_option("--drive", given.drives,
                  "A folder of this computer that is drive X of the machine (repeatable)")
      ->type_name("X=DIR")
      ->allow_extra_args(false);
}

// `most` is how many projects the command takes; -1 for any number.
void AddWizardOptions(CLI::App& command, Options& options, GivenOptions& given, int most) {
  AddPath(command, "PROJECT", options.projects,
          std::string(most < 0 ? "Projects (.vbp) or groups (.vbg)" : "The .vbp file") +
              ", by the path on Windows or here")
      ->expected(most)
      ->allow_extra_args(most < 0)  // or the next argument would be a project as well
      ->required();
  AddPath(command, "--machine", options.machine, "The machine folder to work on (default: $BXVBWIZ_MACHINE)");
  AddDriveOption(command, given);
  command.add_option("--app-name", options.appName, "The application name")->check(CheckLine);
  command.add_option("--company", options.company, "The company name")->check(CheckLine);
  command.add_option("--app-type", options.appType, "The application type")->check(CheckLine);
  command.add_option("--app-version", options.appVersion, "The application version")->check(CheckLine);
  command.add_flag("--skip-info", options.skipInfo, "Skip the project-information page");
  auto* rebuild = command.add_flag("--rebuild", options.rebuild,
                                   "Compile the project first, even if its program is there");
  command.add_flag("--no-rebuild", options.noRebuild, "Never compile; read the project as if it were built")
      ->excludes(rebuild);
  command.add_option("--answer", given.answers,
                     "Answer question N, or N of the component NAME (repeatable)")
      ->type_name("N[:NAME]=BUTTON")
      ->allow_extra_args(false);  // a PROJECT after it is not an answer
  auto* yes = command.add_flag("--yes", given.yes, "Answer every other Yes/No question with Yes");
  command.add_flag("--no", given.no, "Answer every other Yes/No question with No")->excludes(yes);
  command.add_flag("--strict", options.strict, "Exit with code 4 when there is an error or a warning");
  command.add_flag("--json", options.json, "Print one JSON document");
  auto* quiet = command.add_flag("--quiet", options.quiet, "Print only what is wrong");
  command.add_flag("--verbose", options.verbose, "Print every file with its facts")->excludes(quiet);
}

void AddProjectCommands(CLI::App& app, Options& options, GivenOptions& given) {
  CLI::App* analyse = AddCommand(app, "analyse", "Show what a project needs; compiles it only with --rebuild",
                                 "analyse Demo.vbp --machine build/machine --verbose")
                          ->alias("analyze");
  CLI::App* generate = AddCommand(app, "generate", "Analyse a project and create its setup project",
                                  "generate Demo.vbp --company Acme --answer 1095:GRID.OCX=yes --strict");
  CLI::App* explain =
      AddCommand(app, "explain", "Tell why a file is in the setup, or is not",
                 "explain Demo.vbp GRID.OCX --machine build/machine",
                 std::string("Exit code 1 also says that the project does not ask for NAME.\n") + kRun);
  CLI::App* inspect =
      AddCommand(app, "inspect", "Show format, imports, exports and register code of executables",
                 "inspect GRID.OCX *.dll --json", kNoRun);
  AddWizardOptions(*analyse, options, given, -1);
  AddWizardOptions(*generate, options, given, -1);
  AddWizardOptions(*explain, options, given, 1);
  for (CLI::App* command : {analyse, generate}) {
    AddPath(*command, "--html", options.html,
            "Write a page of trees, files and findings ('-': standard output)")
        ->type_name("FILE");
  }
  AddPath(*explain, "NAME", options.name, "A file name, a path, or a library's description or identifier")
      ->required();
  CLI::App* capture =
      AddCommand(app, "capture", "Record what generate reads from here in a new machine folder",
                 R"(capture C:\Src\Demo.vbp --to D:\machine)");
  AddWizardOptions(*capture, options, given, -1);
  AddPath(*capture, "--to", options.captureTo, "The folder to create; it must be new or empty")
      ->type_name("DIR")
      ->required();
  CLI::App* check = AddCommand(app, "check", "Compare a setup project with what generate would make",
                               R"(check Demo.vbp "C:\My Setups\Demo-1" --machine build/machine)",
                               std::string("Exit code 4 also says that the setup project differs.\n") + kRun);
  AddWizardOptions(*check, options, given, 1);
  AddPath(*check, "SETUP", options.setup, "The folder of the setup project, or its .bxp file")->required();
  AddPath(*inspect, "FILE", options.files, "The files")->required();
  inspect->add_flag("--json", options.json, "Print one JSON document");
}

void AddMachineCommands(CLI::App& app, Options& options, GivenOptions& given) {
  CLI::App* machine =
      AddCommand(app, "machine", "Make, fill and check machine folders", "machine new build/machine", kNoRun);
  machine->require_subcommand(1);
  CLI::App* make = AddCommand(*machine, "new", "Make a machine folder with default contents",
                              "machine new build/machine", kNoRun);
  AddPath(*make, "DIR", options.newMachine, "The folder to create; it must be new or empty")->required();
  CLI::App* enter =
      AddCommand(*machine, "register", "Enter files' type libraries into a machine folder's registry",
                 "machine register build/machine build/machine/drive_c/WINDOWS/system32", kNoRun);
  AddPath(*enter, "DIR", options.machine, "The machine folder")->required();
  AddDriveOption(*enter, given);
  AddPath(*enter, "PATH", options.components,
          "Files, and folders with all below, by the path on Windows or here")
      ->required();
  CLI::App* check = AddCommand(*machine, "check", "Say what a run on a machine folder would trip over",
                               "machine check build/machine --drive P=checkout", kNoRun);
  AddPath(*check, "DIR", options.machine, "The machine folder")->required();
  AddDriveOption(*check, given);
  for (CLI::App* command : machine->get_subcommands({}))
    command->add_flag("--json", options.json, "Print one JSON document");
}

// The command that was parsed.
Command CommandOf(const CLI::App& app) {
  const CLI::App& command = *app.get_subcommands().front();
  const std::vector<CLI::App*> below = command.get_subcommands();
  return CommandNamed(command.get_name() + (below.empty() ? "" : " " + below.front()->get_name()));
}

}  // namespace

const char* NameOf(Command command) {
  for (const CommandName& row : kCommands) {
    if (row.command == command) return row.name;
  }
  return "";
}

std::optional<int> ReadOptions(const std::vector<std::string>& arguments, Options& options) {
  CLI::App app("Turns a Visual Basic 5/6 project into a Borvex setup project.", "bxvbwiz");
  app.set_version_flag("--version", kVersion);
  app.allow_windows_style_options(false);  // a path of another system may begin with a slash
  app.require_subcommand(1);
  app.footer(std::string("bxvbwiz COMMAND --help shows the options of a command.\n\n") + kRun);
  const auto describe = [&app](const std::string& kind) {
    std::cout << Describe(app, kind);
    throw CLI::Success();
  };
  app.add_option_function<std::string>("--generate", describe,
                                       "Print the manual page, or completions for a shell")
      ->type_name("WHAT")
      ->check(CLI::IsMember(std::vector<std::string>(std::begin(kDescriptions), std::end(kDescriptions))))
      ->trigger_on_parse();
  GivenOptions given;
  AddProjectCommands(app, options, given);
  AddMachineCommands(app, options, given);
  try {
    std::vector<std::string> words = Arranged(app, arguments);
    std::reverse(words.begin(), words.end());  // the order that the parser wants
    app.parse(std::move(words));
    TakeAnswers(given.answers, options.answers);
    TakeDrives(given.drives, options.drives);
    if (given.yes) options.yesNo = Button::Yes;
    if (given.no) options.yesNo = Button::No;
    if (options.html == "-" && options.json)
      throw CLI::ValidationError("--html", "--json has standard output, too");
    // Not by the parser, which would let the variable overrule one command's option with another's.
    if (options.machine.empty()) options.machine = EnvironmentText("BXVBWIZ_MACHINE");
  } catch (const CLI::ParseError& error) {
    std::string text = error.what();
    // The parser names unexpected words from the last to the first, with the "--" before them.
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError)) {
      std::vector<std::string> words = app.remaining(true);
      words.erase(std::remove(words.begin(), words.end(), "--"), words.end());
      text = TokenReplace(CompiledText(TextId::NotExpected), {Joined(words)});
    }
    if (app.exit(CLI::Error(error.get_name(), text, error.get_exit_code())) == 0) return kExitFinished;
    KeepError(arguments, text, options);
    return kExitUsage;
  }
  options.command = CommandOf(app);
  return std::nullopt;
}

}  // namespace bxvbwiz
