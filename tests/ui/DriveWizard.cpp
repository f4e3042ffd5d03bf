// Works the wizard's window as bxvbwiz works its form: the same arguments, answers and exit codes, so that
// whole runs can be compared with what bxvbwiz does. usage: drivewizard [generate] PROJECT [--machine DIR]
// [--skip-info] [--rebuild] [--app-name T] [--company T]
//                    [--app-type T] [--app-version T] [--answer N=BUTTON]... [--pause]
//   --pause  names each page and message on standard output when it is shown, and waits there for a line of
//            standard input
#include <windows.h>
// after windows.h
#include <shellapi.h>

#include <iostream>
#include <map>

#include "platform/CompiledStringTable.h"
#include "platform/Text.h"
#include "platform/win32/WideText.h"
#include "ui/frmMain.h"
#include "ui/win32/ControlIds.h"
#include "ui/WizardDriver.h"

namespace {

using namespace bxvbwiz;

// As bxvbwiz ends.
enum ExitCode { kFinished = 0, kNotFinished = 1, kUsage = 2, kProject = 3 };

struct Arguments {
  std::string project;
  std::map<std::string, std::string> options;  // with their values, a flag with none
  std::map<unsigned, int> answers;             // by string number

  bool Has(const char* option) const { return options.count(option) != 0; }
};

Arguments ReadArguments() {
  static const std::map<std::string, int> kButtons = {
      {"ok", IDOK}, {"cancel", IDCANCEL}, {"retry", IDRETRY}, {"yes", IDYES}, {"no", IDNO}};
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> list(CommandLineToArgvW(GetCommandLineW(), &count),
                                                           &LocalFree);
  Arguments arguments;
  wchar_t machine[MAX_PATH] = {};
  GetEnvironmentVariableW(L"BXVBWIZ_MACHINE", machine, MAX_PATH);
  arguments.options["--machine"] = Narrow(machine);
  for (int i = 1; i < count; ++i) {
    const std::string name = Narrow(list.get()[i]);
    const bool isFlag = name == "--skip-info" || name == "--rebuild" || name == "--pause" || name == "--json";
    if (!StartsWith(name, "--")) {
      arguments.project = name;  // the last: "generate" may stand before it
    } else if (isFlag || ++i == count) {
      arguments.options[name] = "";
    } else if (const std::string value = Narrow(list.get()[i]); name == "--answer") {
      arguments.answers[static_cast<unsigned>(std::stoul(value))] =
          kButtons.at(value.substr(value.find('=') + 1));
    } else {
      arguments.options[name] = value;
    }
  }
  return arguments;
}

// The wizard's messages, by string number, and how it ends after them. After those that do not let it go on,
// the page stays.
constexpr std::pair<unsigned, ExitCode> kMessages[] = {
    {2, kFinished},    {1015, kProject},  {1025, kProject},  {1026, kProject},  {1028, kFinished},
    {1037, kFinished}, {1041, kFinished}, {1045, kProject},  {1046, kFinished}, {1047, kFinished},
    {1050, kUsage},    {1051, kUsage},    {1091, kFinished}, {1095, kFinished}};

// 0 when it is none of the wizard's.
std::pair<unsigned, ExitCode> MessageOf(const std::string& shown) {
  const CompiledStringTable strings;
  for (const auto& message : kMessages) {
    const std::string text = strings.Text(message.first);
    const std::size_t value = text.find("%%1");
    const std::string behind = value == std::string::npos ? "" : text.substr(value + 3);
    if (StartsWith(shown, text.substr(0, value)) && EndsWith(shown, behind)) return message;
  }
  return {0, kFinished};
}

class Drive {
 public:
  explicit Drive(const Arguments& arguments) : arguments_(arguments), driver_(CommandLine(arguments)) {}

  int Go() {
    static const std::pair<const char*, int> kTexts[] = {{"--app-name", kIdApplicationName},
                                                         {"--company", kIdCompanyName},
                                                         {"--app-type", kIdApplicationType},
                                                         {"--app-version", kIdApplicationVersion}};
    driver_.SetText(kIdProjectFile, arguments_.project);
    if (arguments_.Has("--rebuild")) driver_.Click(kIdRebuild);
    int code = Leave(kPanelWelcome, "welcome");
    if (code == kFinished && !arguments_.Has("--skip-info")) {
      driver_.WaitForPanel(kPanelInformation);
      for (const auto& [option, control] : kTexts) {
        if (arguments_.Has(option)) driver_.SetText(control, arguments_.options.at(option));
      }
      code = Leave(kPanelInformation, "information");
    }
    if (code != kFinished) return code;
    driver_.WaitForPanel(kPanelSummary);
    if (arguments_.Has("--pause")) ShowFileView();
    code = Leave(kPanelSummary, "summary");
    if (code != kFinished) return code;
    driver_.WaitForPanel(kPanelReport);
    Pause("report");
    driver_.Click(kIdOk);
    return driver_.WaitForEnd() == 0 ? kFinished : kNotFinished;
  }

 private:
  static std::string CommandLine(const Arguments& arguments) {
    std::wstring program(MAX_PATH, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
    program.resize(program.find_last_of(L'\\') + 1);
    std::string line =
        "\"" + Narrow(program) + "showwizard.exe\" --machine \"" + arguments.options.at("--machine") + "\"";
    if (!arguments.Has("--skip-info")) return line;
    line += " --skip-info";
    return arguments.Has("--app-name") ? line + " --app-name \"" + arguments.options.at("--app-name") + "\""
                                       : line;
  }

  // Presses the page's Next and answers what is asked until the page is left.
  int Leave(int panel, const char* name) {
    Pause(name);
    driver_.Click(kIdNext + panel);
    for (;;) {
      driver_.WaitForAnything(panel);
      if (driver_.Ended()) return kNotFinished;
      if (!driver_.HasMessage()) return kFinished;
      const auto [number, code] = MessageOf(driver_.WaitForMessage());
      Pause("message-" + std::to_string(number));
      const auto given = arguments_.answers.find(number);
      // What bxvbwiz cannot answer ends the wizard.
      driver_.Answer(given != arguments_.answers.end() ? given->second
                     : number == 2                     ? IDCANCEL
                     : number == 1091                  ? IDNO
                                                       : IDOK);
      if (code == kFinished) continue;
      driver_.WaitForPanel(panel);
      driver_.Click(kIdCancel);
      driver_.WaitForEnd();
      return code;
    }
  }

  void ShowFileView() {
    driver_.Click(kIdFileView);
    driver_.WaitUntil("the file view", [this] { return driver_.Visible(kIdFiles); });
    Pause("summary-files");
    driver_.Click(kIdProjectView);
    driver_.WaitUntil("the project view", [this] { return driver_.Visible(kIdDependencies); });
  }

  void Pause(const std::string& name) const {
    if (!arguments_.Has("--pause")) return;
    SetCursorPos(0, 0);  // nothing on a picture looks as if the mouse was over it
    std::cout << name << std::endl;
    std::string line;
    std::getline(std::cin, line);
  }

  const Arguments& arguments_;
  WizardDriver driver_;
};

}  // namespace

int main() {
  try {
    const Arguments arguments = ReadArguments();
    return Drive(arguments).Go();
  } catch (const std::exception& error) {
    std::cerr << "drivewizard: " << error.what() << '\n';
    return 99;
  }
}
