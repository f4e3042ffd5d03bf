#include "ui/WizardDriver.h"

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <cstring>
#include <sstream>

#include "platform/Text.h"
#include "platform/win32/WideText.h"
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

struct DialogSearch {
  DWORD processId;
  std::vector<HWND> found;
};

BOOL CALLBACK AddDialog(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<DialogSearch*>(parameter);
  DWORD owner = 0;
  GetWindowThreadProcessId(window, &owner);
  wchar_t name[16] = {};
  GetClassNameW(window, name, 16);
  if (owner == search.processId && IsWindowVisible(window) && std::wstring_view(name) == L"#32770") {
    search.found.push_back(window);
  }
  return TRUE;
}

// The visible dialogs of a process, the uppermost first.
std::vector<HWND> DialogsOf(DWORD processId) {
  DialogSearch search{processId, {}};
  EnumWindows(&AddDialog, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// Memory of the program that is driven, for messages whose structures the system does not carry over.
class RemoteMemory {
 public:
  RemoteMemory(HANDLE process, std::size_t size)
      : process_(process),
        address_(VirtualAllocEx(process, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)) {}
  ~RemoteMemory() { VirtualFreeEx(process_, address_, 0, MEM_RELEASE); }
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;

  char* Address() const { return static_cast<char*>(address_); }
  void Write(std::size_t offset, const void* bytes, std::size_t size) const {
    WriteProcessMemory(process_, Address() + offset, bytes, size, nullptr);
  }
  void Read(std::size_t offset, void* bytes, std::size_t size) const {
    ReadProcessMemory(process_, Address() + offset, bytes, size, nullptr);
  }

 private:
  HANDLE process_;
  void* address_;
};

// Walks a tree view of another process.
class TreeReader {
 public:
  TreeReader(HANDLE process, HWND tree) : tree_(tree), memory_(process, sizeof(TVITEMW) + sizeof(text_)) {}

  void Read(LRESULT item, int level, std::vector<std::string>& lines) {
    for (; item != 0; item = Next(TVGN_NEXT, item)) {
      TVITEMW request{};
      request.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_HANDLE;
      request.hItem = reinterpret_cast<HTREEITEM>(item);
      request.pszText = reinterpret_cast<wchar_t*>(memory_.Address() + sizeof(request));
      request.cchTextMax = kLongestText;
      memory_.Write(0, &request, sizeof(request));
      SendMessageW(tree_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(memory_.Address()));
      memory_.Read(0, &request, sizeof(request));
      memory_.Read(sizeof(request), text_, sizeof(text_));
      text_[kLongestText - 1] = L'\0';
      lines.push_back(std::string(static_cast<std::size_t>(level) * 2, ' ') + Narrow(text_) + " #" +
                      std::to_string(request.iImage));
      Read(Next(TVGN_CHILD, item), level + 1, lines);
    }
  }
  LRESULT Next(UINT direction, LRESULT item) const {
    return SendMessageW(tree_, TVM_GETNEXTITEM, direction, item);
  }

 private:
  static constexpr int kLongestText = 260;
  HWND tree_;
  RemoteMemory memory_;
  wchar_t text_[kLongestText] = {};
};

}  // namespace

WizardDriver::WizardDriver(const std::string& commandLine) {
  SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
  HANDLE readEnd = nullptr;
  HANDLE writeEnd = nullptr;
  CreatePipe(&readEnd, &writeEnd, &inherited, 0);
  output_ = OwnedHandle(readEnd);
  const OwnedHandle writing(writeEnd);
  SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = writeEnd;
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION started{};
  std::wstring line = Widen(commandLine);
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                      &started)) {
    throw DriverError("cannot start " + commandLine);
  }
  const OwnedHandle thread(started.hThread);
  process_ = OwnedHandle(started.hProcess);
  processId_ = started.dwProcessId;
  WaitUntil("the wizard's window", [this] {
    for (const HWND dialog : DialogsOf(processId_)) {
      if (GetDlgItem(dialog, kIdBranding) != nullptr) window_ = dialog;
    }
    return window_ != nullptr || Ended();
  });
}

WizardDriver::~WizardDriver() {
  if (!Ended()) TerminateProcess(process_.Get(), 1);
}

void WizardDriver::WaitUntil(const char* what, const std::function<bool()>& condition) const {
  for (DWORD waited = 0; !condition(); waited += kBetweenLooks) {
    if (waited >= kMostMilliseconds) {
      std::string state =
          std::string("waited in vain for ") + what + "; the wizard shows \"" + Caption() + '"';
      if (const HWND box = MessageBoxWindow())
        state += " and the message " + TextOfWindow(GetDlgItem(box, kMessageText));
      throw DriverError(state);
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
bool WizardDriver::Visible(int id) const {
  return IsWindowVisible(Find(id)) != FALSE;
}
bool WizardDriver::Enabled(int id) const {
  return IsWindowEnabled(Find(id)) != FALSE;
}
bool WizardDriver::Checked(int id) const {
  return SendMessageW(Find(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}
bool WizardDriver::IsDefaultButton(int id) const {
  return (SendMessageW(Find(id), WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) != 0;
}

int WizardDriver::Focus() const {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
  return GetDlgCtrlID(info.hwndFocus);
}

std::pair<DWORD, DWORD> WizardDriver::Selection(int id) const {
  const auto both = static_cast<DWORD>(SendMessageW(Find(id), EM_GETSEL, 0, 0));
  return {LOWORD(both), HIWORD(both)};
}

std::vector<std::string> WizardDriver::Tree(int id) const {
  std::vector<std::string> lines;
  TreeReader reader(process_.Get(), Find(id));
  reader.Read(reader.Next(TVGN_ROOT, 0), 0, lines);
  return lines;
}

std::string WizardDriver::ToolTip(HWND control) const {
  HWND tips = nullptr;
  do {
    tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr);
  } while (tips != nullptr && GetWindow(tips, GW_OWNER) != window_);
  wchar_t text[1024] = {};  // longer than any tip
  TTTOOLINFOW tool{};
  const RemoteMemory memory(process_.Get(), sizeof(tool) + sizeof(text));
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.hwnd = window_;
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  tool.lpszText = reinterpret_cast<wchar_t*>(memory.Address() + sizeof(tool));
  memory.Write(0, &tool, sizeof(tool));
  memory.Write(sizeof(tool), text, sizeof(text));
  SendMessageW(tips, TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(memory.Address()));
  memory.Read(sizeof(tool), text, sizeof(text));
  return Narrow(text);
}

// ---------------------------------------------------------------- doing

void WizardDriver::SetText(int id, const std::string& text) {
  SendMessageW(Find(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Widen(text).c_str()));
  // As an edit box tells its parent when the user types; it does not when its text is set.
  SendMessageW(GetParent(Find(id)), WM_COMMAND,
               MAKEWPARAM(id, id == kIdApplicationType ? CBN_EDITCHANGE : EN_CHANGE),
               reinterpret_cast<LPARAM>(Find(id)));
}

void WizardDriver::Paste(int id, const std::string& text) {
  const std::wstring wide = Widen(text);
  OpenClipboard(nullptr);
  EmptyClipboard();
  const std::size_t size = (wide.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
  std::memcpy(GlobalLock(memory), wide.c_str(), size);
  GlobalUnlock(memory);
  SetClipboardData(CF_UNICODETEXT, memory);
  CloseClipboard();
  SendMessageW(Find(id), EM_SETSEL, 0, -1);
  SendMessageW(Find(id), WM_PASTE, 0, 0);
}

// Posted: what it begins may show a message box and return only after that.
void WizardDriver::Click(int id) {
  PostMessageW(Find(id), BM_CLICK, 0, 0);
}

void WizardDriver::Choose(int id, int item) {
  SendMessageW(Find(id), CB_SETCURSEL, static_cast<WPARAM>(item), 0);
  SendMessageW(GetParent(Find(id)), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(Find(id)));
}

void WizardDriver::Type(int id, const std::string& characters) {
  for (const wchar_t character : Widen(characters)) PostMessageW(Find(id), WM_CHAR, character, 1);
}

// A window that was just shown has no focus yet.
void WizardDriver::Key(int virtualKey) {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  WaitUntil("the focus", [&] {
    GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
    return info.hwndFocus != nullptr;
  });
  PostMessageW(info.hwndFocus, WM_KEYDOWN, static_cast<WPARAM>(virtualKey), 1);
}

void WizardDriver::AccessKey(char letter) {
  constexpr LPARAM kWithAlt = 1 << 29;
  PostMessageW(window_, WM_SYSCHAR, static_cast<WPARAM>(letter), kWithAlt);
}

void WizardDriver::CloseFromMenu() {
  PostMessageW(window_, WM_SYSCOMMAND, SC_CLOSE, 0);
}

// ---------------------------------------------------------------- waiting

HWND WizardDriver::OtherDialog(int controlInside) const {
  for (const HWND dialog : DialogsOf(processId_)) {
    if (dialog != window_ && GetDlgItem(dialog, controlInside) != nullptr) return dialog;
  }
  return nullptr;
}

HWND WizardDriver::MessageBoxWindow() const {
  return OtherDialog(kMessageText);
}

HWND WizardDriver::FileDialog() const {
  return OtherDialog(kFileName);
}

std::string WizardDriver::WaitForMessage() {
  HWND box = nullptr;
  WaitUntil("a message box", [this, &box] { return (box = MessageBoxWindow()) != nullptr; });
  return TextOfWindow(GetDlgItem(box, kMessageText));
}

void WizardDriver::Answer(int button) {
  const HWND box = MessageBoxWindow();
  if (box == nullptr) throw DriverError("there is no message box to answer");
  PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
  WaitUntil("the end of a message box", [box] { return !IsWindow(box); });
}

void WizardDriver::AnswerFileDialog(const std::string& name) {
  HWND dialog = nullptr;
  WaitUntil("the file dialog", [this, &dialog] { return (dialog = FileDialog()) != nullptr; });
  SendMessageW(GetDlgItem(dialog, kFileName), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Widen(name).c_str()));
  PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  WaitUntil("the end of the file dialog", [dialog] { return !IsWindow(dialog); });
}

int WizardDriver::Panel() const {
  int panel = kNoPanel;
  for (int candidate = 0; candidate < kFrames; ++candidate) {
    const HWND frame = GetDlgItem(window_, kIdFrame + candidate);
    if (frame == nullptr || !IsWindowVisible(frame)) continue;
    if (panel != kNoPanel) return kNoPanel;
    panel = candidate;
  }
  return panel;
}

void WizardDriver::WaitForPanel(int panel) {
  WaitUntil(("panel " + std::to_string(panel)).c_str(), [this, panel] { return Panel() == panel; });
}

void WizardDriver::WaitForAnything(int panelToLeave) {
  WaitUntil("anything", [this, panelToLeave] {
    const int panel = Panel();
    return Ended() || HasMessage() || (panel != panelToLeave && panel != kNoPanel);
  });
}

bool WizardDriver::Ended() const {
  return WaitForSingleObject(process_.Get(), 0) == WAIT_OBJECT_0;
}

std::map<std::string, std::string> WizardDriver::WaitForEnd() {
  WaitUntil("the end of the program", [this] { return Ended(); });
  std::map<std::string, std::string> values;
  std::istringstream lines(ReadOutput());
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos) values[line.substr(0, equals)] = line.substr(equals + 1);
  }
  return values;
}

std::string WizardDriver::ReadOutput() {
  std::string output;
  char buffer[512];
  for (DWORD read = 0; ReadFile(output_.Get(), buffer, sizeof(buffer), &read, nullptr) && read > 0;) {
    output.append(buffer, read);
  }
  return output;
}

}  // namespace bxvbwiz
