// Measures, in one run, how long the wizard takes from its opening to its first painted page, and how long an
// empty dialog of the same size takes.
// usage: opening_time [OPENINGS]
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "TestMachine.h"
#include "ui/win32/Win32View.h"
#include "wizard/Application.h"

namespace {

using namespace bxvbwiz;

// Longer than any window takes to be painted.
constexpr UINT kQuietMilliseconds = 300;

// When the thread's windows were last painted. It is global, because a hook gets no object.
LONGLONG painted = 0;

LONGLONG Now() {
  LARGE_INTEGER now{};
  QueryPerformanceCounter(&now);
  return now.QuadPart;
}

constexpr UINT kPainted = WM_APP + 1;

// A posted message is handled before the next window is painted, so it shows when those before it have been.
// The thread has no other hook: looking for one after each message would take as long as a part of the
// painting.
LRESULT CALLBACK OnMessage(int code, WPARAM wParam, LPARAM lParam) {
  const auto& message = *reinterpret_cast<const MSG*>(lParam);
  if (code == HC_ACTION && wParam == PM_REMOVE) {
    if (message.message == WM_PAINT) PostThreadMessageW(GetCurrentThreadId(), kPainted, 0, 0);
    if (message.message == kPainted && GetActiveWindow() != nullptr) painted = Now();
  }
  return 0;
}

BOOL CALLBACK CloseVisible(HWND window, LPARAM) {
  if (IsWindowVisible(window)) PostMessageW(window, WM_CLOSE, 0, 0);
  return TRUE;
}

void CALLBACK OnQuiet(HWND, UINT, UINT_PTR, DWORD) {
  EnumThreadWindows(GetCurrentThreadId(), &CloseVisible, 0);
}

// Milliseconds from now to the last painting of what `open` shows until it is closed.
template <typename Open>
double Measure(Open open) {
  LARGE_INTEGER frequency{};
  QueryPerformanceFrequency(&frequency);
  const HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, &OnMessage, nullptr, GetCurrentThreadId());
  const UINT_PTR timer = SetTimer(nullptr, 0, kQuietMilliseconds, &OnQuiet);
  painted = 0;
  const LONGLONG start = Now();
  PostThreadMessageW(GetCurrentThreadId(), kPainted, 0, 0);  // for what is painted before the first message
  open();
  KillTimer(nullptr, timer);
  UnhookWindowsHookEx(hook);
  if (painted == 0) throw std::runtime_error("no window was painted");
  return 1000.0 * static_cast<double>(painted - start) / static_cast<double>(frequency.QuadPart);
}

INT_PTR CALLBACK EmptyProcedure(HWND window, UINT message, WPARAM, LPARAM) {
  return message == WM_CLOSE ? EndDialog(window, 0) : FALSE;
}

void OpenEmptyDialog() {
  struct {
    DLGTEMPLATE dialog;
    WORD rest[3];
  } dialogTemplate{};
  dialogTemplate.dialog = {
      WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE | DS_MODALFRAME, 0, 0, 50, 50, 330, 228};
  if (DialogBoxIndirectW(GetModuleHandleW(nullptr), &dialogTemplate.dialog, nullptr, &EmptyProcedure) < 0) {
    throw std::runtime_error("no window can be made; is there a display?");
  }
}

void OpenWizard(TestMachine& machine) {
  WizardCore core(machine.platform(), StartMode::Automation);
  FormHost host(core, [](frmMain& form) { return MakeWin32View(form, GetModuleHandleW(nullptr)); });
  Application app(host);
  app.Run();
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int count, char** arguments) try {
  const int openings = count > 1 ? std::atoi(arguments[1]) : 11;
  TestMachine machine;
  machine.InstallProduct();
  std::vector<double> empty;
  std::vector<double> wizard;
  for (int opening = 0; opening < openings; ++opening) {
    empty.push_back(Measure(&OpenEmptyDialog));
    wizard.push_back(Measure([&machine] { OpenWizard(machine); }));
  }
  std::printf("first painted page: empty dialog %.1f ms, wizard %.1f ms (first time %.1f ms), ratio %.2f\n",
              Median(empty), Median(wizard), wizard.front(), Median(wizard) / Median(empty));
} catch (const std::exception& error) {
  std::fprintf(stderr, "opening_time: %s\n", error.what());
  return 1;
}
