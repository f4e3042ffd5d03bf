#include "tools/WizardDriver.h"

#include <windows.h>

#include <stdexcept>

#include "text/win32/WideText.h"
#include "ui/win32/ControlIds.h"

namespace bxvbwiz {

namespace {

constexpr DWORD kMostMilliseconds = 60000;
constexpr DWORD kBetweenLooks = 10;
constexpr int kMessageText = 0xFFFF;  // the identifier of a message box's text
constexpr int kFileName = 1148;       // and of the file dialog's name (dlgs.h, cmb13)
constexpr int kFrames = 5;

std::string TextOfWindow(HWND window) {
  std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  const LRESULT length = SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return Narrow(text);
}

}  // namespace

WizardDriver::WizardDriver(const std::string& commandLine) {
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION started{};
  std::wstring line = Widen(commandLine);
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &started)) {
    throw std::runtime_error("cannot start " + commandLine);
  }
  const OwnedHandle thread(started.hThread);
  process_ = OwnedHandle(started.hProcess);
  processId_ = started.dwProcessId;
  WaitForWindow();
}

WizardDriver::WizardDriver() : processId_(GetCurrentProcessId()) {
  WaitForWindow();
}

void WizardDriver::WaitForWindow() {
  WaitUntil("the wizard's window", [this] {
    window_ = Dialog(kIdBranding);
    return window_ != nullptr || HasMessage() || Ended();
  });
}

WizardDriver::~WizardDriver() {
  if (!process_.Valid()) {
    PostMessageW(window_, WM_CLOSE, 0, 0);
  } else if (!Ended()) {
    TerminateProcess(process_.Get(), 1);
  }
}

void WizardDriver::WaitUntil(const std::string& what, const std::function<bool()>& condition) const {
  for (DWORD waited = 0;; waited += kBetweenLooks) {
    const bool ended = Ended();
    if (condition()) return;
    if (ended || waited >= kMostMilliseconds) {
      std::string state = "waited in vain for " + what + "; the wizard shows \"" + Caption() + '"';
      if (HasMessage())
        state += " and the message " + TextOfWindow(GetDlgItem(MessageBoxWindow(), kMessageText));
      throw std::runtime_error(state);
    }
    Sleep(kBetweenLooks);
  }
}

std::string WizardDriver::Caption() const {
  return window_ == nullptr || Ended() ? std::string() : TextOfWindow(window_);
}

HWND WizardDriver::Find(int id) const {
  if (const HWND control = GetDlgItem(window_, id)) return control;
  for (int panel = 0; panel < kFrames; ++panel) {
    const HWND frame = GetDlgItem(window_, kIdFrame + panel);
    if (const HWND control = frame == nullptr ? nullptr : GetDlgItem(frame, id)) return control;
  }
  return nullptr;
}

std::string WizardDriver::Text(int id) const {
  return TextOfWindow(Find(id));
}

HWND WizardDriver::FocusWindow() const {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
  return info.hwndFocus;
}

// ---------------------------------------------------------------- doing

void WizardDriver::SetText(int id, const std::string& text) {
  const HWND inside = FindWindowExW(Find(id), nullptr, L"Edit", nullptr);
  const HWND box = inside == nullptr ? Find(id) : inside;
  SendMessageW(box, EM_SETSEL, 0, -1);
  SendMessageW(box, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(Widen(text).c_str()));
}

void WizardDriver::Press(const std::string& buttons) {
  for (const char button : buttons) {
    int panel = kNoPanel;
    WaitUntil("a page", [&] { return (panel = Panel()) != kNoPanel; });
    Click(button == 'n' ? kIdNext + panel : button == 'o' ? int{kIdOk} : int{kIdCancel});
    if (button == 'n') WaitForAnything(panel);
  }
}

void WizardDriver::Type(int id, const std::string& characters) {
  for (const wchar_t character : Widen(characters)) PostMessageW(Find(id), WM_CHAR, character, 1);
}

// A window that was just shown has no focus yet.
void WizardDriver::Key(int virtualKey) {
  WaitUntil("the focus", [this] { return FocusWindow() != nullptr; });
  PostMessageW(FocusWindow(), WM_KEYDOWN, static_cast<WPARAM>(virtualKey), 1);
}

void WizardDriver::AccessKey(char letter) {
  constexpr LPARAM kWithAlt = 1 << 29;
  PostMessageW(window_, WM_SYSCHAR, static_cast<WPARAM>(letter), kWithAlt);
}

// ---------------------------------------------------------------- waiting

// The visible dialog of the program that has a control.
HWND WizardDriver::Dialog(int controlInside) const {
  DWORD owner = 0;
  for (HWND dialog = nullptr; (dialog = FindWindowExW(nullptr, dialog, L"#32770", nullptr)) != nullptr;) {
    GetWindowThreadProcessId(dialog, &owner);
    if (owner == processId_ && IsWindowVisible(dialog) && GetDlgItem(dialog, controlInside) != nullptr)
      return dialog;
  }
  return nullptr;
}

HWND WizardDriver::MessageBoxWindow() const {
  return Dialog(kMessageText);
}

std::string WizardDriver::WaitForMessage() {
  WaitUntil("a message box", [this] { return HasMessage(); });
  return TextOfWindow(GetDlgItem(MessageBoxWindow(), kMessageText));
}

void WizardDriver::Answer(int button) {
  const HWND box = MessageBoxWindow();
  PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
  WaitUntil("the end of a message box", [box] { return !IsWindow(box); });
}

void WizardDriver::AnswerFileDialog(const std::string& name) {
  HWND dialog = nullptr;
  WaitUntil("the file dialog", [&] { return (dialog = Dialog(kFileName)) != nullptr; });
  SendMessageW(GetDlgItem(dialog, kFileName), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Widen(name).c_str()));
  PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

int WizardDriver::Panel() const {
  int panel = kNoPanel;
  for (int candidate = 0; candidate < kFrames; ++candidate) {
    if (!IsWindowVisible(GetDlgItem(window_, kIdFrame + candidate))) continue;
    if (panel != kNoPanel) return kNoPanel;
    panel = candidate;
  }
  return panel;
}

void WizardDriver::WaitForPanel(int panel) {
  WaitUntil("panel " + std::to_string(panel), [&] { return Panel() == panel; });
}

void WizardDriver::WaitForFocus(int id) {
  WaitUntil("the focus on " + std::to_string(id), [&] { return GetDlgCtrlID(FocusWindow()) == id; });
}

void WizardDriver::WaitForAnything(int panelToLeave) {
  WaitUntil("anything", [&] {
    const int panel = Panel();
    return Ended() || HasMessage() || (panel != panelToLeave && panel != kNoPanel);
  });
}

bool WizardDriver::Ended() const {
  if (!process_.Valid()) return window_ != nullptr && !IsWindow(window_);
  return WaitForSingleObject(process_.Get(), 0) == WAIT_OBJECT_0;
}

DWORD WizardDriver::WaitForEnd() {
  WaitUntil("the end of the program", [this] { return Ended(); });
  DWORD code = 0;
  GetExitCodeProcess(process_.Get(), &code);
  return code;
}

}  // namespace bxvbwiz
