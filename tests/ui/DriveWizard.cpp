// Works the wizard's window as bxvbwiz works its form: the same arguments, answers and exit codes, so that
// whole runs can be compared with what bxvbwiz does. usage: drivewizard [generate] PROJECT [--machine DIR]
// [--skip-info] [--rebuild] [--app-name T] [--company T]
//                    [--app-type T] [--app-version T] [--answer N=BUTTON]... [--pause]
//   --pause  names each page and message on standard output when it is shown, and waits there for a line of
//            standard input
#include <windows.h>
// after windows.h
#include <shellapi.h>

#include <cstdlib>
#include <iostream>

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
  std::string machine;
  bool skipsInfo = false;
  bool rebuilds = false;
  bool pauses = false;
  std::map<int, std::string> texts;  // by control
  std::map<unsigned, int> answers;   // by string number
};

std::string FromEnvironment(const wchar_t* name) {
  wchar_t value[MAX_PATH] = {};
  GetEnvironmentVariableW(name, value, MAX_PATH);
  return Narrow(value);
}

void ReadAnswer(const std::string& text, Arguments& arguments) {
  static const std::map<std::string, int> kButtons = {
      {"ok", IDOK}, {"cancel", IDCANCEL}, {"retry", IDRETRY}, {"yes", IDYES}, {"no", IDNO}};
  const std::size_t equals = text.find('=');
  arguments.answers[static_cast<unsigned>(std::stoul(text))] = kButtons.at(text.substr(equals + 1));
}

Arguments ReadArguments() {
  static const std::map<std::string, int> kTexts = {{"--app-name", kIdApplicationName},
                                                    {"--company", kIdCompanyName},
                                                    {"--app-type", kIdApplicationType},
                                                    {"--app-version", kIdApplicationVersion}};
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> list(CommandLineToArgvW(GetCommandLineW(), &count),
                                                           &LocalFree);
  Arguments arguments;
  arguments.machine = FromEnvironment(L"BXVBWIZ_MACHINE");
  for (int i = 1; i < count; ++i) {
    const std::string name = Narrow(list.get()[i]);
    const auto value = [&] { return ++i < count ? Narrow(list.get()[i]) : std::string(); };
    const auto text = kTexts.find(name);
    if (text != kTexts.end()) {
      arguments.texts[text->second] = value();
    } else if (name == "--machine") {
      arguments.machine = value();
    } else if (name == "--answer") {
      ReadAnswer(value(), arguments);
    } else if (name == "--skip-info") {
      arguments.skipsInfo = true;
    } else if (name == "--rebuild") {
      arguments.rebuilds = true;
    } else if (name == "--pause") {
      arguments.pauses = true;
    } else if (name != "generate" && name != "--json") {
      arguments.project = name;
    }
  }
  return arguments;
}

// The string number of a message; 0 when it is none of the wizard's.
unsigned NumberOf(const std::string& message) {
  const CompiledStringTable strings;
  for (const unsigned number :
       {2U, 1015U, 1025U, 1026U, 1028U, 1037U, 1041U, 1045U, 1046U, 1047U, 1050U, 1051U, 1091U, 1095U}) {
    const std::string text = strings.Text(number);
    const std::size_t value = text.find("%%1");
    if (value == std::string::npos
            ? StartsWith(message, text)
            : StartsWith(message, text.substr(0, value)) && EndsWith(message, text.substr(value + 3))) {
      return number;
    }
  }
  return 0;
}

class Drive {
 public:
  explicit Drive(const Arguments& arguments) : arguments_(arguments), driver_(CommandLine(arguments)) {}

  int Go() {
    driver_.SetText(kIdProjectFile, arguments_.project);
    if (arguments_.rebuilds) driver_.Click(kIdRebuild);
    int code = Leave(kPanelWelcome, "welcome");
    if (code != kFinished) return code;
    if (!arguments_.skipsInfo) {
      driver_.WaitForPanel(kPanelInformation);
      for (const auto& [control, text] : arguments_.texts) driver_.SetText(control, text);
      code = Leave(kPanelInformation, "information");
      if (code != kFinished) return code;
    }
    driver_.WaitForPanel(kPanelSummary);
    if (arguments_.pauses) ShowFileView();
    code = Leave(kPanelSummary, "summary");
    if (code != kFinished) return code;
    driver_.WaitForPanel(kPanelReport);
    Pause("report");
    driver_.Click(kIdOk);
    return driver_.WaitForEnd()["ReturnCode"] == "-1" ? kFinished : kNotFinished;
  }

 private:
  static std::string CommandLine(const Arguments& arguments) {
    std::wstring program(MAX_PATH, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
    program.resize(program.find_last_of(L'\\') + 1);
    std::string line = "\"" + Narrow(program) + "showwizard.exe\" --machine \"" + arguments.machine + "\"";
    if (!arguments.skipsInfo) return line;
    line += " --skip-info";
    const auto name = arguments.texts.find(kIdApplicationName);
    return name == arguments.texts.end() ? line : line + " --app-name \"" + name->second + "\"";
  }

  // Presses the page's Next and answers what is asked until the page is left.
  int Leave(int panel, const char* name) {
    Pause(name);
    driver_.Click(kIdNext + panel);
    for (;;) {
      driver_.WaitForAnything(panel);
      if (driver_.Ended()) return kNotFinished;
      if (!driver_.HasMessage()) return kFinished;
      const unsigned number = NumberOf(driver_.WaitForMessage());
      Pause(("message-" + std::to_string(number)).c_str());
      Answer(number);
      if (const int code = CodeOfRefusal(number); code != kFinished) {
        driver_.WaitForPanel(panel);
        driver_.Click(kIdCancel);
        driver_.WaitForEnd();
        return code;
      }
    }
  }

  void Answer(unsigned number) {
    const auto given = arguments_.answers.find(number);
    if (given != arguments_.answers.end()) return driver_.Answer(given->second);
    // What bxvbwiz cannot answer ends the wizard.
    driver_.Answer(number == 2 ? IDCANCEL : number == 1091 ? IDNO : IDOK);
  }

  // After these messages the page stays.
  static int CodeOfRefusal(unsigned number) {
    switch (number) {
      case 1015:
      case 1025:
      case 1026:
      case 1045:
        return kProject;
      case 1050:
      case 1051:
        return kUsage;
      default:
        return kFinished;
    }
  }

  void ShowFileView() {
    driver_.Click(kIdFileView);
    driver_.WaitUntil("the file view", [this] { return driver_.Visible(kIdFiles); });
    Pause("summary-files");
    driver_.Click(kIdProjectView);
    driver_.WaitUntil("the project view", [this] { return driver_.Visible(kIdDependencies); });
  }

  void Pause(const char* name) const {
    if (!arguments_.pauses) return;
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
