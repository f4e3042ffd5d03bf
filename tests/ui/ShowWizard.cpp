// Shows the wizard's window on a machine folder. The exit code is 0 when the wizard was finished, 2 when it
// was cancelled, 1 when it could not be shown, and 3 when it says that it goes on or its host takes no input
// again. usage: showwizard --machine DIR [--skip-info] [--app-name NAME] [--panel N] [--host] [PROJECT]
//   --panel N  begins on another panel, filled or not, for its picture
//   --host     shows a window of a host first, which then owns the wizard's
#include <windows.h>
// after windows.h
#include <shellapi.h>

#include <iostream>
#include <map>

#include "platform/machine/Machine.h"
#include "platform/Text.h"
#include "platform/win32/WideText.h"
#include "ui/win32/Owned.h"
#include "ui/win32/Win32View.h"
#include "wizard/Application.h"

namespace {

using namespace bxvbwiz;

// The options with their values, those without one with none; the project without a name.
std::map<std::string, std::string> ReadOptions() {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> list(CommandLineToArgvW(GetCommandLineW(), &count),
                                                           &LocalFree);
  std::map<std::string, std::string> options;
  for (int i = 1; i < count; ++i) {
    const std::string name = Narrow(list.get()[i]);
    const bool hasValue = name == "--machine" || name == "--app-name" || name == "--panel";
    if (hasValue && ++i < count) {
      options[name] = Narrow(list.get()[i]);
    } else {
      options[StartsWith(name, "--") ? name : ""] = name;
    }
  }
  return options;
}

int Show(std::map<std::string, std::string> options, Machine& machine) {
  Component component(machine.platform(), StartMode::Automation, "",
                      [](frmMain& form) { return MakeWin32View(form, GetModuleHandleW(nullptr)); });
  const SessionScope scope(component.session());
  component.SubMain();
  Application app(component);
  app.Project = options[""];
  app.AppName = options["--app-name"];
  app.ShowPage2 = options.count("--skip-info") == 0;
  if (options.count("--panel") != 0) {
    component.Form()->HidePanel(kPanelWelcome);
    component.Form()->ShowPanel(static_cast<std::int16_t>(std::stoi(options["--panel"])));
  }
  app.Run();
  if (app.StillExecuting()) return 3;
  return app.ReturnCode() == -1 ? 0 : 2;
}

}  // namespace

int main() {
  try {
    std::map<std::string, std::string> options = ReadOptions();
    Machine machine(options["--machine"]);
    if (options.count("--host") == 0) {
      const int code = Show(options, machine);
      machine.Save();
      return code;
    }
    const OwnedWindow host(std::make_shared<OpenObjects>(),
                           CreateWindowExW(0, L"#32770", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100,
                                           600, 400, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr));
    SetActiveWindow(host.Get());
    const int code = Show(options, machine);
    return IsWindowEnabled(host.Get()) && GetActiveWindow() == host.Get() ? code : 3;
  } catch (const std::exception& error) {
    std::cerr << "showwizard: " << error.what() << '\n';
    return 1;
  }
}
