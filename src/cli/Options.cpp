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

// The options that analyse and generate share.
struct WizardOptions {
  std::vector<std::string> answers;
  bool yes = false;
  bool no = false;
};

void AddWizardOptions(CLI::App& command, Options& options, WizardOptions& more) {
  command
      .add_option(
          "PROJECT", options.project,
          "The .vbp file: a Windows path on that machine, or a path of this computer in the machine folder")
      ->required();
  command.add_option("--machine", options.machine,
                     "The machine folder to work on (default: $BXVBWIZ_MACHINE)");
  command.add_option("--app-name", options.appName, "The application name")->check(CheckLine);
  command.add_option("--company", options.company, "The company name")->check(CheckLine);
  command.add_option("--app-type", options.appType, "The application type")->check(CheckLine);
  command.add_option("--app-version", options.appVersion, "The application version")->check(CheckLine);
  command.add_flag("--skip-info", options.skipInfo, "Skip the project-information page");
  command.add_flag("--rebuild", options.rebuild, "Compile the project first");
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

void TakeAnswers(const WizardOptions& more, Options& options) {
  for (const std::string& text : more.answers) {
    if (!options.answers.insert(ReadAnswer(text)).second)
      throw CLI::ValidationError("--answer", "'" + text + "' answers a message that already has an answer");
  }
  if (more.yes) options.yesNo = Button::Yes;
  if (more.no) options.yesNo = Button::No;
}

}  // namespace

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
  CLI::App* analyse = app.add_subcommand(
      "analyse",
      "Show the dependency trees of a project; writes nothing, unless it has to compile the project");
  CLI::App* generate = app.add_subcommand("generate", "Analyse a project and create its setup project");
  CLI::App* inspect =
      app.add_subcommand("inspect", "Show format, imports, exports and register code of executables");
  CLI::App* machine = app.add_subcommand("machine", "Make machine folders");
  AddWizardOptions(*analyse, options, more);
  AddWizardOptions(*generate, options, more);
  CLI::App* capture = app.add_subcommand(
      "capture", "Record everything that generate reads from this computer in a new machine folder");
  AddWizardOptions(*capture, options, more);
  capture->add_option("--to", options.captureTo, "The folder to create; it must be new or empty")
      ->type_name("DIR")
      ->required();
  inspect->add_option("FILE", options.files, "The files")->required();
  inspect->add_flag("--json", options.json, "Print one JSON document");
  machine->require_subcommand(1);
  machine->add_subcommand("new", "Make a machine folder with default contents")
      ->add_option("DIR", options.newMachine, "The folder to create; it must be new or empty")
      ->required();
  CLI::App* enter = machine->add_subcommand(
      "register", "Enter the type libraries of files into the registry of a machine folder");
  enter->add_option("DIR", options.machine, "The machine folder")->required();
  enter
      ->add_option("PATH", options.components,
                   "Files, and folders with all below, in the machine folder's drives")
      ->required();
  for (CLI::App* command : app.get_subcommands({})) command->fallthrough();  // --version after a command
  try {
    RefuseEmptyTexts(arguments);
    std::reverse(arguments.begin(), arguments.end());  // the order that the parser wants
    app.parse(std::move(arguments));
    TakeAnswers(more, options);
    // Not by the parser, which would let the variable overrule one command's option with another's.
    if (options.machine.empty()) options.machine = EnvironmentText("BXVBWIZ_MACHINE");
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kExitFinished : kExitUsage;
  }
  options.command = analyse->parsed()    ? Command::Analyse
                    : generate->parsed() ? Command::Generate
                    : capture->parsed()  ? Command::Capture
                    : inspect->parsed()  ? Command::Inspect
                    : enter->parsed()    ? Command::MachineRegister
                                         : Command::MachineNew;
  return std::nullopt;
}

}  // namespace bxvbwiz
