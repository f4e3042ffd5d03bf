// Shows the wizard's window on a machine folder, and prints what a host would read when it has ended.
// usage: showwizard --machine DIR [--skip-info] [--app-name NAME] [--panel N] [--host] [PROJECT]
//   --panel N  begins on another panel, filled or not, for its picture
//   --host     shows a window of a host first, which then owns the wizard's
#include <windows.h>
// after windows.h
#include <shellapi.h>

#include <cstdio>
#include <iostream>

#include "platform/machine/Machine.h"
#include "platform/win32/WideText.h"
#include "ui/win32/Owned.h"
#include "ui/win32/Win32View.h"
#include "wizard/Application.h"

namespace {

using namespace bxvbwiz;

struct Options {
  std::string machine;
  std::string project;
  std::string appName;
  bool showsPage2 = true;
  bool hasHost = false;
  std::int16_t panel = kPanelWelcome;
};

Options ReadOptions() {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> list(CommandLineToArgvW(GetCommandLineW(), &count),
                                                           &LocalFree);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(Narrow(list.get()[i]));
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    const auto value = [&] { return i + 1 < arguments.size() ? arguments[++i] : std::string(); };
    if (name == "--machine") {
      options.machine = value();
    } else if (name == "--app-name") {
      options.appName = value();
    } else if (name == "--panel") {
      options.panel = static_cast<std::int16_t>(std::stoi(value()));
    } else if (name == "--skip-info") {
      options.showsPage2 = false;
    } else if (name == "--host") {
      options.hasHost = true;
    } else {
      options.project = name;
    }
  }
  return options;
}

void Show(const Options& options, Machine& machine) {
  Component component(machine.platform(), StartMode::Automation, "",
                      [](frmMain& form) { return MakeWin32View(form, GetModuleHandleW(nullptr)); });
  const SessionScope scope(component.session());
  component.SubMain();
  Application app(component);
  app.Project = options.project;
  app.AppName = options.appName;
  app.ShowPage2 = options.showsPage2;
  if (options.panel != kPanelWelcome) {
    component.Form()->HidePanel(kPanelWelcome);
    component.Form()->ShowPanel(options.panel);
  }
  app.Run();
  std::cout << "StillExecuting=" << app.StillExecuting() << "\nReturnCode=" << app.ReturnCode()
            << "\nProjectFile=" << app.ProjectFile() << '\n';
}

}  // namespace

int main() {
  try {
    const Options options = ReadOptions();
    Machine machine(options.machine);
    const Ledger ledger = std::make_shared<OpenObjects>();
    OwnedWindow host;
    if (options.hasHost) {
      host = OwnedWindow(
          ledger, CreateWindowExW(0, L"#32770", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 600, 400,
                                  nullptr, nullptr, GetModuleHandleW(nullptr), nullptr));
      SetActiveWindow(host.Get());
    }
    Show(options, machine);
    if (options.hasHost) {
      std::cout << "HostEnabled=" << IsWindowEnabled(host.Get())
                << "\nHostActive=" << (GetActiveWindow() == host.Get()) << '\n';
    }
    machine.Save();
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "showwizard: " << error.what() << '\n';
    return 1;
  }
}
