#include "cli/Options.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <iostream>
#include <iterator>

#include "cli/Descriptions.h"
#include "cli/Revision.h"
#include "cli/Terminal.h"
#include "text/Strings.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The revision is empty in sources without their history.
constexpr const char* kVersion = sizeof(BXVBWIZ_REVISION) > 1 ? "bxvbwiz " BXVBWIZ_VERSION
                                                                " (" BXVBWIZ_REVISION ")"
                                                              : "bxvbwiz " BXVBWIZ_VERSION;

constexpr const char* kFooter =
    "Exit codes: 0 finished; 1 ended without finishing; 2 wrong usage or an unreadable machine folder;\n"
    "3 the project cannot be read or cannot be packaged; 4 finished with errors or warnings (--strict).\n"
    "Variables: BXVBWIZ_MACHINE names the machine folder; SOURCE_DATE_EPOCH is the present time there.";

const std::map<std::string, Button> kButtons = {{"ok", Button::Ok},
                                                {"cancel", Button::Cancel},
                                                {"yes", Button::Yes},
                                                {"no", Button::No},
                                                {"retry", Button::Retry}};

// "1095=yes"
std::pair<TextId, Button> ReadAnswer(const std::string& text) {
  const std::size_t equals = text.find('=');
  const std::string number = text.substr(0, equals);
  const auto button = kButtons.find(equals == std::string::npos ? "" : text.substr(equals + 1));
  if (number.empty() || number.size() > 5 || number.find_first_not_of("0123456789") != std::string::npos ||
      button == kButtons.end()) {
    throw CLI::ValidationError(
        "--answer", "'" + text + "' is not a message number, '=' and ok, cancel, yes, no or retry");
  }
  const auto answer = std::make_pair(static_cast<TextId>(std::stoul(number)), button->second);
  if (CompiledText(answer.first).empty() || NumberOf(answer.first) >= kFirstFinding)
    throw CLI::ValidationError("--answer", "there is no message with the number " + number);
  return answer;
}

// A box of the form holds one line. A line break would begin another line in a setup file.
std::string CheckLine(const std::string& text) {
  const bool isLine = std::none_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
  });
  if (!isLine) return "the text contains a control character";
  return text.empty() ? "the text is empty" : "";
}

std::string RefuseEmpty(const std::string& text) {
  return text.empty() ? "the text is empty" : "";
}

struct CommandName {
  Command command;
  const char* name;
};

constexpr CommandName kCommands[] = {
    {Command::Analyse, "analyse"},           {Command::Generate, "generate"},
    {Command::Explain, "explain"},           {Command::Check, "check"},
    {Command::Capture, "capture"},           {Command::Inspect, "inspect"},
    {Command::MachineNew, "machine new"},    {Command::MachineRegister, "machine register"},
    {Command::MachineCheck, "machine check"}};

Command CommandNamed(const std::string& name) {
  for (const CommandName& row : kCommands) {
    if (row.name == name) return row.command;
  }
  return Command::None;
}

// What can be said of a command line that is wrong; its arguments come from the last to the first.
void KeepError(const std::vector<std::string>& arguments, const std::string& error, Options& options) {
  options.error = error;
  options.json = std::find(arguments.begin(), arguments.end(), "--json") != arguments.end();
  options.command = arguments.empty() ? Command::None : CommandNamed(arguments.back());
  if (options.command == Command::None && arguments.size() > 1)
    options.command = CommandNamed(arguments.back() + " " + arguments[arguments.size() - 2]);
}

// The options that several commands share, before they are checked.
struct WizardOptions {
  std::vector<std::string> drives;
  std::vector<std::string> answers;
  bool yes = false;
  bool no = false;
};

void AddDriveOption(CLI::App& command, WizardOptions& more) {
  command
      .add_option("--drive", more.drives,
                  "A drive of the machine folder that is a folder of this computer (repeatable)")
      ->type_name("X=DIR")
      ->allow_extra_args(false);
}

// `most` is how many projects the command takes; -1 for any number.
void AddWizardOptions(CLI::App& command, Options& options, WizardOptions& more, int most) {
  command
      .add_option("PROJECT", options.projects,
                  std::string("The .vbp file") + (most < 0 ? ", or a .vbg for its projects" : "") +
                      ": a Windows path on that machine, or a path of this computer in one of its drives")
      ->expected(most)
      ->allow_extra_args(most < 0)  // or the next argument would be a project as well
      ->check(RefuseEmpty)
      ->required();
  command
      .add_option("--machine", options.machine, "The machine folder to work on (default: $BXVBWIZ_MACHINE)")
      ->check(RefuseEmpty);
  AddDriveOption(command, more);
  command.add_option("--app-name", options.appName, "The application name")->check(CheckLine);
  command.add_option("--company", options.company, "The company name")->check(CheckLine);
  command.add_option("--app-type", options.appType, "The application type")->check(CheckLine);
  command.add_option("--app-version", options.appVersion, "The application version")->check(CheckLine);
  command.add_flag("--skip-info", options.skipInfo, "Skip the project-information page");
  auto* rebuild = command.add_flag("--rebuild", options.rebuild, "Compile the project first");
  command.add_flag("--no-rebuild", options.noRebuild, "Never compile; read the project as if it were built")
      ->excludes(rebuild);
  command.add_option("--answer", more.answers,
                     "Answer a message: its number, '=' and a button (repeatable)")
      ->type_name("N=BUTTON")
      ->allow_extra_args(false);  // a PROJECT after it is not an answer
  auto* yes = command.add_flag("--yes", more.yes, "Answer every other Yes/No question with Yes");
  command.add_flag("--no", more.no, "Answer every other Yes/No question with No")->excludes(yes);
  command.add_flag("--strict", options.strict, "Exit with code 4 when there is an error or a warning");
  command.add_flag("--json", options.json, "Print one JSON document");
  auto* quiet = command.add_flag("--quiet", options.quiet, "Print only what is wrong");
  command.add_flag("--verbose", options.verbose, "Print every file with its facts")->excludes(quiet);
}

// Without a text after the "=" the parser would use the next argument as the text.
void RefuseEmptyTexts(const std::vector<std::string>& arguments) {
  for (const std::string& argument : arguments) {
    if (StartsWith(argument, "--") && argument.find('=') == argument.size() - 1)
      throw CLI::ValidationError(argument.substr(0, argument.size() - 1), "the text is empty");
  }
}

void TakeDrives(const WizardOptions& more, Options& options) {
  for (const std::string& text : more.drives) {
    const char letter = UpperCase(text).substr(0, 1).c_str()[0];
    if (letter < 'A' || letter > 'Z' || text.substr(1, 1) != "=" || text.size() < 3)
      throw CLI::ValidationError("--drive", "'" + text + "' is not a drive's letter, '=' and a folder");
    if (!options.drives.emplace(letter, text.substr(2)).second)
      throw CLI::ValidationError("--drive", std::string("drive ") + letter + " is given twice");
  }
}

void TakeAnswers(const WizardOptions& more, Options& options) {
  for (const std::string& text : more.answers) {
    if (!options.answers.insert(ReadAnswer(text)).second)
      throw CLI::ValidationError("--answer", "'" + text + "' answers a message that already has an answer");
  }
  if (more.yes) options.yesNo = Button::Yes;
  if (more.no) options.yesNo = Button::No;
}

void AddProjectCommands(CLI::App& app, Options& options, WizardOptions& more) {
  CLI::App* analyse = app.add_subcommand(
      "analyse",
      "Show the dependency trees of a project; writes nothing, unless it is to compile the project");
  CLI::App* generate = app.add_subcommand("generate", "Analyse a project and create its setup project");
  CLI::App* explain = app.add_subcommand(
      "explain", "Tell why a file is in the setup, or is not: who asks for it and what decided its facts");
  CLI::App* inspect =
      app.add_subcommand("inspect", "Show format, imports, exports and register code of executables");
  AddWizardOptions(*analyse, options, more, -1);
  AddWizardOptions(*generate, options, more, -1);
  AddWizardOptions(*explain, options, more, 1);
  for (CLI::App* command : {analyse, generate}) {
    command
        ->add_option(
            "--html", options.html,
            "Write a page of the trees, the files and the findings for a browser ('-': standard output)")
        ->type_name("FILE")
        ->check(RefuseEmpty);
  }
  explain->add_option("NAME", options.name, "A file name, a path, or a library's description or identifier")
      ->check(RefuseEmpty)
      ->required();
  CLI::App* capture = app.add_subcommand(
      "capture", "Record everything that generate reads from this computer in a new machine folder");
  AddWizardOptions(*capture, options, more, -1);
  capture->add_option("--to", options.captureTo, "The folder to create; it must be new or empty")
      ->type_name("DIR")
      ->check(RefuseEmpty)
      ->required();
  CLI::App* check = app.add_subcommand(
      "check", "Compare a setup project with what generate would make now; writes nothing");
  AddWizardOptions(*check, options, more, 1);
  check
      ->add_option("SETUP", options.setup,
                   "The folder of the setup project or its .bxp file, as a path of either kind")
      ->required();
  inspect->add_option("FILE", options.files, "The files")->required();
  inspect->add_flag("--json", options.json, "Print one JSON document");
}

void AddMachineCommands(CLI::App& app, Options& options, WizardOptions& more) {
  CLI::App* machine = app.add_subcommand("machine", "Make, fill and check machine folders");
  machine->require_subcommand(1);
  machine->add_subcommand("new", "Make a machine folder with default contents")
      ->add_option("DIR", options.newMachine, "The folder to create; it must be new or empty")
      ->check(RefuseEmpty)
      ->required();
  CLI::App* enter = machine->add_subcommand(
      "register", "Enter the type libraries of files into the registry of a machine folder");
  enter->add_option("DIR", options.machine, "The machine folder")->check(RefuseEmpty)->required();
  AddDriveOption(*enter, more);
  enter
      ->add_option("PATH", options.components,
                   "Files, and folders with all below, in the machine folder's drives")
      ->check(RefuseEmpty)
      ->required();
  CLI::App* check = machine->add_subcommand("check", "Say what a run on a machine folder would trip over");
  check->add_option("DIR", options.machine, "The machine folder")->check(RefuseEmpty)->required();
  AddDriveOption(*check, more);
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

std::optional<int> ReadOptions(std::vector<std::string> arguments, Options& options) {
  CLI::App app("Turns a Visual Basic 5/6 project into a Borvex setup project.", "bxvbwiz");
  app.set_version_flag("--version", kVersion);
  app.allow_windows_style_options(false);  // a path of another system may begin with a slash
  app.require_subcommand(1);
  app.footer(kFooter);
  const auto describe = [&app](const std::string& kind) {
    std::cout << Describe(app, kind);
    throw CLI::Success();
  };
  app.add_option_function<std::string>("--generate", describe,
                                       "Print the manual page, or completions for a shell")
      ->type_name("WHAT")
      ->check(CLI::IsMember(std::vector<std::string>(std::begin(kDescriptions), std::end(kDescriptions))))
      ->trigger_on_parse();
  WizardOptions more;
  AddProjectCommands(app, options, more);
  AddMachineCommands(app, options, more);
  for (CLI::App* command : app.get_subcommands({})) command->fallthrough();  // --version after a command
  std::reverse(arguments.begin(), arguments.end());  // the order that the parser wants
  try {
    RefuseEmptyTexts(arguments);
    app.parse(std::vector<std::string>(arguments));
    TakeAnswers(more, options);
    TakeDrives(more, options);
    if (options.html == "-" && options.json)
      throw CLI::ValidationError("--html", "--json has standard output, too");
    // Not by the parser, which would let the variable overrule one command's option with another's.
    if (options.machine.empty()) options.machine = EnvironmentText("BXVBWIZ_MACHINE");
  } catch (const CLI::ParseError& error) {
    if (app.exit(error) == 0) return kExitFinished;
    KeepError(arguments, error.what(), options);
    return kExitUsage;
  }
  options.command = CommandOf(app);
  return std::nullopt;
}

}  // namespace bxvbwiz
