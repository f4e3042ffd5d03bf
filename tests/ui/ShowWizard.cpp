// Shows the wizard's window on a machine folder. The exit code is 0 when the wizard was finished, 2 when it
// was cancelled, and 1 when it could not be shown.
#include <windows.h>

#include <CLI/CLI.hpp>

#include "cli/Terminal.h"
#include "platform/machine/Machine.h"
#include "ui/win32/Win32View.h"
#include "wizard/Application.h"

int main(int argc, char** argv) {
  using namespace bxvbwiz;
  CLI::App options;
  std::string folder;
  std::string project;
  std::string appName;
  int panel = kPanelWelcome;
  bool skipInfo = false;
  options.add_option("PROJECT", project);
  options.add_option("--machine", folder)->required();
  options.add_option("--app-name", appName);
  options.add_option("--panel", panel, "begins on another panel, filled or not, for its picture");
  options.add_flag("--skip-info", skipInfo);
  try {
    std::vector<std::string> arguments = ProgramArguments(argc, argv);
    std::reverse(arguments.begin(), arguments.end());
    options.parse(arguments);
    Machine machine(folder);
    Component component(machine.platform(), StartMode::Automation, "",
                        [](frmMain& form) { return MakeWin32View(form, GetModuleHandleW(nullptr)); });
    const SessionScope scope(component.session());
    component.SubMain();
    Application app(component);
    app.Project = project;
    app.AppName = appName;
    app.ShowPage2 = !skipInfo;
    if (panel != kPanelWelcome) {
      component.Form()->HidePanel(kPanelWelcome);
      component.Form()->ShowPanel(static_cast<std::int16_t>(panel));
    }
    app.Run();
    machine.Save();
    return app.ReturnCode() == -1 ? 0 : 2;
  } catch (const std::exception& error) {
    std::cerr << "showwizard: " << error.what() << '\n';
    return 1;
  }
}
