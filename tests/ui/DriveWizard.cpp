// Works the wizard's window as bxvbwiz works its form: the same arguments, answers and exit codes, so that
// whole runs can be compared with what bxvbwiz does. usage: drivewizard [--pause] ARGUMENT-OF-BXVBWIZ...
//   --pause  names each page and message on standard output when it is shown, and waits there for a line of
//            standard input
#include <windows.h>

#include <iostream>

#include "cli/Options.h"
#include "cli/Terminal.h"
#include "platform/CompiledStringTable.h"
#include "platform/Text.h"
#include "platform/win32/WideText.h"
#include "ui/frmMain.h"
#include "ui/win32/ControlIds.h"
#include "ui/WizardDriver.h"

namespace {

using namespace bxvbwiz;

// The wizard's messages, by string number, and how it ends after them. After those that do not let it go on,
// the page stays.
constexpr std::pair<unsigned, int> kMessages[] = {
    {2, kExitFinished},    {1015, kExitProject},  {1025, kExitProject},  {1026, kExitProject},
    {1028, kExitFinished}, {1037, kExitFinished}, {1041, kExitFinished}, {1045, kExitProject},
    {1046, kExitFinished}, {1047, kExitFinished}, {1050, kExitUsage},    {1051, kExitUsage},
    {1091, kExitFinished}, {1095, kExitFinished}};

// 0 when it is none of the wizard's.
std::pair<unsigned, int> MessageOf(const std::string& shown) {
  const CompiledStringTable strings;
  for (const auto& message : kMessages) {
    const std::string text = strings.Text(message.first);
    const std::size_t value = text.find("%%1");
    const std::string behind = value == std::string::npos ? "" : text.substr(value + 3);
    if (StartsWith(shown, text.substr(0, value)) && EndsWith(shown, behind)) return message;
  }
  return {0, kExitFinished};
}

class Drive {
 public:
  Drive(const Options& options, bool pauses)
      : options_(options), pauses_(pauses), driver_(CommandLine(options)) {}

  int Go() {
    driver_.SetText(kIdProjectFile, options_.project);
    if (options_.rebuild) driver_.Click(kIdRebuild);
    int code = Leave(kPanelWelcome, "welcome");
    if (code == kExitFinished && !options_.skipInfo) {
      driver_.WaitForPanel(kPanelInformation);
      for (const auto& [text, control] : {std::pair(&options_.appName, int{kIdApplicationName}),
                                          {&options_.company, kIdCompanyName},
                                          {&options_.appType, kIdApplicationType},
                                          {&options_.appVersion, kIdApplicationVersion}})
        if (*text) driver_.SetText(control, **text);
      code = Leave(kPanelInformation, "information");
    }
    if (code != kExitFinished) return code;
    driver_.WaitForPanel(kPanelSummary);
    if (pauses_) ShowFileView();
    code = Leave(kPanelSummary, "summary");
    if (code != kExitFinished) return code;
    driver_.WaitForPanel(kPanelReport);
    Pause("report");
    driver_.Click(kIdOk);
    return driver_.WaitForEnd() == 0 ? kExitFinished : kExitNotFinished;
  }

 private:
  static std::string CommandLine(const Options& options) {
    std::wstring program(MAX_PATH, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
    program.resize(program.find_last_of(L'\\') + 1);
    std::string line = "\"" + Narrow(program) + "showwizard.exe\" --machine \"" + options.machine + "\"";
    if (options.skipInfo) line += " --skip-info";
    return options.skipInfo && options.appName ? line + " --app-name \"" + *options.appName + "\"" : line;
  }

  // Presses the page's Next and answers what is asked until the page is left.
  int Leave(int panel, const char* name) {
    Pause(name);
    driver_.Click(kIdNext + panel);
    for (;;) {
      driver_.WaitForAnything(panel);
      if (driver_.Ended()) return kExitNotFinished;
      if (!driver_.HasMessage()) return kExitFinished;
      const auto [number, code] = MessageOf(driver_.WaitForMessage());
      Pause("message-" + std::to_string(number));
      const auto given = options_.answers.find(number);
      // What bxvbwiz cannot answer ends the wizard.
      driver_.Answer(given != options_.answers.end() ? static_cast<int>(given->second)
                     : number == 2                   ? IDCANCEL
                     : number == 1091                ? IDNO
                                                     : IDOK);
      if (code == kExitFinished) continue;
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
    if (!pauses_) return;
    SetCursorPos(0, 0);  // nothing on a picture looks as if the mouse was over it
    std::cout << name << std::endl;
    std::string line;
    std::getline(std::cin, line);
  }

  const Options& options_;
  const bool pauses_;
  WizardDriver driver_;
};

}  // namespace

int main(int argc, char** argv) {
  try {
    std::vector<std::string> arguments = ProgramArguments(argc, argv);
    const bool pauses = arguments.front() == "--pause";
    if (pauses) arguments.erase(arguments.begin());
    Options options;
    if (const auto code = ReadOptions(arguments, options)) return *code;
    return Drive(options, pauses).Go();
  } catch (const std::exception& error) {
    std::cerr << "drivewizard: " << error.what() << '\n';
    return 99;
  }
}
