// Shows the wizard's window on a machine folder: the same arguments and exit codes as bxvbwiz, and 99 when
// something else goes wrong. usage: showwizard [--drive | --pause | --panel N] ARGUMENT-OF-BXVBWIZ...
//   --drive    works the window as bxvbwiz works its form, so that whole runs can be compared
//   --pause    does so, names each page and message on standard output when it is shown, and waits there
//              for a line of standard input
//   --panel N  begins on another panel, filled or not, for its picture
#include <windows.h>

#include <future>
#include <iostream>
#include <mutex>
#include <thread>

#include "cli/Options.h"
#include "cli/Terminal.h"
#include "machine/Machine.h"
#include "text/Strings.h"
#include "text/Text.h"
#include "tools/WizardDriver.h"
#include "ui/win32/Win32View.h"
#include "wizard/Application.h"
#include "wizard/SubMain.h"

namespace {

using namespace bxvbwiz;

// The wizard's messages, each with the exit code if it is the last one: anything but kExitFinished keeps the
// page.
constexpr std::pair<TextId, int> kMessages[] = {
    {TextId::UnexpectedError, kExitFinished},        {TextId::NoVisualBasicProject, kExitProject},
    {TextId::ActiveXDocumentProject, kExitProject},  {TextId::UserControlProject, kExitProject},
    {TextId::RebuildFailed, kExitFinished},          {TextId::DataAccessVersionUnsupported, kExitFinished},
    {TextId::RemoteServerUsed, kExitFinished},       {TextId::ProjectFileMissing, kExitProject},
    {TextId::LibraryNotFound, kExitFinished},        {TextId::RegistryKeyMissing, kExitFinished},
    {TextId::IllegalApplicationName, kExitUsage},    {TextId::IllegalCompanyName, kExitUsage},
    {TextId::ContinueWithoutRebuild, kExitFinished}, {TextId::OtherVersionInstalled, kExitFinished}};

// TextId{} when it is not one of the wizard's.
std::pair<TextId, int> MessageOf(const std::string& shown) {
  for (const auto& message : kMessages) {
    const std::string text = CompiledText(message.first);
    const std::size_t value = text.find("%%1");
    const std::string rest = value == std::string::npos ? "" : text.substr(value + 3);
    if (StartsWith(shown, text.substr(0, value)) && shown.find(rest) != std::string::npos) return message;
  }
  return {{}, kExitFinished};
}

// The wizard's thread waits for the lock when it gets this message. Both are global, because a hook gets no
// object.
constexpr UINT kHold = WM_APP + 1;
std::mutex letGo;
std::promise<void> isHeld;

LRESULT CALLBACK Hold(int code, WPARAM wParam, LPARAM lParam) {
  if (wParam == PM_REMOVE && reinterpret_cast<const MSG*>(lParam)->message == kHold) {
    isHeld.set_value();
    const std::lock_guard<std::mutex> waiting(letGo);
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

class Drive {
 public:
  Drive(const Options& options, bool pauses) : options_(options), pauses_(pauses) {}

  // Gives the exit code, unless it is the form's to give.
  int Go() {
    driver_.SetText("&Visual Basic Project File (*.vbp)", options_.projects.front());
    if (options_.rebuild) driver_.Click("&Rebuild the Project");
    int code = Leave("Welcome", "&Next>", "welcome");
    if (code == kExitFinished && !options_.skipInfo) {
      driver_.WaitForPage("Project Information");
      for (const auto& [label, text] : {std::pair("&Application Name", &options_.appName),
                                        {"&Company Name", &options_.company},
                                        {"Application &Type", &options_.appType},
                                        {"Application &Version", &options_.appVersion}})
        if (*text) driver_.SetText(label, **text);
      code = Leave("Project Information", "&Next>", "information");
    }
    if (code != kExitFinished) return code;
    driver_.WaitForPage("Summary");
    if (pauses_) ShowFileView();
    code = Leave("Summary", "Finish", "summary");
    if (code != kExitFinished) return code;
    driver_.WaitForPage("Report");
    Pause("report");
    driver_.Click("&OK");
    return kExitFinished;
  }

 private:
  // Presses the page's Next and answers messages until the page is left. `name` is the picture's.
  int Leave(const std::string& page, const std::string& next, const char* name) {
    Pause(name);
    driver_.Click(next);
    if (pauses_ && page == "Summary") HoldProgress();
    for (;;) {
      driver_.WaitForAnything(page);
      if (driver_.Ended()) return kExitNotFinished;
      if (!driver_.HasMessage()) return kExitFinished;
      const std::string text = driver_.WaitForMessage();
      const auto [number, code] = MessageOf(text);
      Pause("message-" + std::to_string(NumberOf(number)));
      auto given = options_.answers.find({number, ""});
      for (auto one = options_.answers.begin(); one != options_.answers.end(); ++one) {
        const auto& [asked, component] = one->first;
        if (asked == number && !component.empty() && UpperCase(text).find(component) != std::string::npos)
          given = one;
      }
      // What bxvbwiz cannot answer ends the wizard.
      driver_.Answer(given != options_.answers.end()            ? static_cast<int>(given->second)
                     : number == TextId::UnexpectedError        ? IDCANCEL
                     : number == TextId::ContinueWithoutRebuild ? IDNO
                                                                : IDOK);
      if (code == kExitFinished) continue;
      driver_.WaitForPage(page);
      driver_.Click("Cancel");
      return code;
    }
  }

  void ShowFileView() {
    const HWND projectView = driver_.Find(kTree);
    const auto isShown = [&] { return driver_.Find(kTree) == projectView; };
    driver_.Click("&File Group View");
    driver_.WaitUntil("the file view", [&] { return !isShown(); });
    Pause("summary-files");
    driver_.Click("VB &Project View");
    driver_.WaitUntil("the project view", isShown);
  }

  // Holds the wizard half-way of its work, when it lets events run.
  void HoldProgress() {
    const std::unique_lock<std::mutex> hold(letGo);
    const HHOOK hook =
        SetWindowsHookExW(WH_GETMESSAGE, &Hold, nullptr, GetWindowThreadProcessId(driver_.Window(), nullptr));
    PostMessageW(driver_.Window(), kHold, 0, 0);
    isHeld.get_future().wait();
    Pause("progress");
    UnhookWindowsHookEx(hook);
  }

  static constexpr const char* kTree = "SysTreeView32";

  void Pause(const std::string& name) const {
    if (!pauses_) return;
    SetCursorPos(0, 0);  // so that nothing on a picture looks as if the mouse were over it
    std::cout << name << std::endl;
    std::string line;
    std::getline(std::cin, line);
  }

  const Options& options_;
  const bool pauses_;
  WizardDriver driver_;
};

// At once: another thread may wait for the window, or the window for it.
[[noreturn]] void Fail(const std::exception& error) {
  std::cerr << "showwizard: " << error.what() << '\n';
  std::_Exit(99);
}

int Show(const Options& options, int panel) try {
  Machine machine(options.machine);
  WizardCore core(machine.platform(), StartMode::Automation);
  FormHost host(core, [](frmMain& form) { return MakeWin32View(form, GetModuleHandleW(nullptr)); });
  const SessionScope scope(core.session());
  SubMain(host);
  Application app(host);
  app.Project = options.projects.front();
  if (options.skipInfo) app.AppName = options.appName.value_or("");
  app.ShowPage2 = !options.skipInfo;
  if (panel != kPanelWelcome) {
    host.Form()->HidePanel(kPanelWelcome);
    host.Form()->ShowPanel(static_cast<std::int16_t>(panel));
  }
  app.Run();
  machine.Save();
  return app.ReturnCode() == -1 ? kExitFinished : kExitNotFinished;
} catch (const std::exception& error) {
  Fail(error);
}

int DriveShown(const Options& options, bool pauses) {
  int code = kExitFinished;
  std::thread user([&] {
    try {
      code = Drive(options, pauses).Go();
    } catch (const std::exception& error) {
      Fail(error);
    }
  });
  Options withoutProject = options;  // which is typed
  withoutProject.projects = {""};
  const int shown = Show(withoutProject, kPanelWelcome);
  user.join();
  return code == kExitFinished ? shown : code;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    std::vector<std::string> arguments = ProgramArguments(argc, argv);
    const std::string mode = arguments.empty() ? "" : arguments.front();
    const int panel = mode == "--panel" ? std::stoi(arguments.at(1)) : kPanelWelcome;
    if (StartsWith(mode, "--")) arguments.erase(arguments.begin());
    if (mode == "--panel") arguments.erase(arguments.begin());
    Options options;
    if (const auto code = ReadOptions(arguments, options)) return *code;
    const bool pauses = mode == "--pause";
    return pauses || mode == "--drive" ? DriveShown(options, pauses) : Show(options, panel);
  } catch (const std::exception& error) {
    Fail(error);
  }
}
