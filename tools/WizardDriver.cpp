#include "tools/WizardDriver.h"

#include <windows.h>

#include <stdexcept>

#include "text/Text.h"
#include "text/win32/WideText.h"

namespace bxvbwiz {

namespace {

constexpr DWORD kMostMilliseconds = 60000;
constexpr DWORD kBetweenLooks = 10;
constexpr int kMessageText = 0xFFFF;                          // the identifier of a message box's text
constexpr int kFileName = 1148;                               // and of the file dialog's name (dlgs.h, cmb13)
const std::string kTitle = "Visual Basic Project Wizard - ";  // and the page's name

std::string TextOfWindow(HWND window) {
  std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  const LRESULT length = SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return Narrow(text);
}

std::string ClassOf(HWND window) {
  wchar_t name[256] = {};  // longer than any
  GetClassNameW(window, name, 256);
  return Narrow(name);
}

struct Search {
  const std::string& name;
  HWND found;
};

BOOL CALLBACK Look(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  if (!IsWindowVisible(window)) return TRUE;
  const std::string className = ClassOf(window);
  if (className == search.name) {
    search.found = window;
  } else if ((className == "Static" || className == "Button") && TextOfWindow(window) == search.name) {
    search.found = className == "Static" ? GetWindow(window, GW_HWNDNEXT) : window;
  }
  return search.found == nullptr;
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
    window_ = VisibleWindow([](HWND dialog) { return StartsWith(TextOfWindow(dialog), kTitle); });
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
      std::string state = "waited too long for " + what + "; the wizard shows \"" + Page() + '"';
      if (HasMessage())
        state += " and the message " + TextOfWindow(GetDlgItem(MessageBoxWindow(), kMessageText));
      throw std::runtime_error(state);
    }
    Sleep(kBetweenLooks);
  }
}

std::string WizardDriver::Page() const {
  const std::string title = TextOfWindow(window_);
  // Every page has one of these, which is disabled while a step runs.
  const bool isIdle = Enabled("Bro&wse...") || Enabled("<&Back") || Enabled("&OK");
  return isIdle && StartsWith(title, kTitle) ? title.substr(kTitle.size()) : std::string();
}

HWND WizardDriver::Find(const std::string& name) const {
  Search search{name, nullptr};
  EnumChildWindows(window_, &Look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::string WizardDriver::Text(const std::string& name) const {
  return TextOfWindow(Find(name));
}

HWND WizardDriver::FocusWindow() const {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
  return info.hwndFocus;
}

// ---------------------------------------------------------------- doing

void WizardDriver::SetText(const std::string& name, const std::string& text) {
  const HWND control = Find(name);
  const HWND inside = FindWindowExW(control, nullptr, L"Edit", nullptr);
  const HWND box = inside == nullptr ? control : inside;
  SendMessageW(box, EM_SETSEL, 0, -1);
  SendMessageW(box, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(Widen(text).c_str()));
}

void WizardDriver::Press(const std::string& buttons) {
  for (const char button : buttons) {
    std::string page;
    WaitUntil("a page", [&] { return !(page = Page()).empty(); });
    if (button == 'e') {
      Key(VK_ESCAPE);
      continue;
    }
    Click(button == 'o' ? "&OK" : button == 'c' ? "Cancel" : page == "Summary" ? "Finish" : "&Next>");
    if (button == 'n') WaitForAnything(page);
  }
}

void WizardDriver::Type(const std::string& name, const std::string& characters) {
  for (const wchar_t character : Widen(characters)) PostMessageW(Find(name), WM_CHAR, character, 1);
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

// A visible window of the program.
HWND WizardDriver::VisibleWindow(const std::function<bool(HWND)>& isWanted) const {
  DWORD owner = 0;
  for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, nullptr, nullptr)) != nullptr;) {
    GetWindowThreadProcessId(window, &owner);
    if (owner == processId_ && IsWindowVisible(window) && isWanted(window)) return window;
  }
  return nullptr;
}

HWND WizardDriver::MessageBoxWindow() const {
  return VisibleWindow([](HWND dialog) { return GetDlgItem(dialog, kMessageText) != nullptr; });
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
  WaitUntil("the file dialog", [&] {
    return (dialog = VisibleWindow([](HWND found) { return GetDlgItem(found, kFileName) != nullptr; })) !=
           nullptr;
  });
  SendMessageW(GetDlgItem(dialog, kFileName), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Widen(name).c_str()));
  PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

void WizardDriver::WaitForPage(const std::string& page) {
  WaitUntil("page " + page, [&] { return Page() == page; });
}

void WizardDriver::WaitForFocus(const std::string& name) {
  WaitUntil("the focus on " + name, [&] {
    const HWND wanted = Find(name);
    return wanted != nullptr && FocusWindow() == wanted;
  });
}

void WizardDriver::WaitForAnything(const std::string& pageToLeave) {
  WaitUntil("anything", [&] {
    const std::string page = Page();
    return Ended() || HasMessage() || (page != pageToLeave && !page.empty());
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
