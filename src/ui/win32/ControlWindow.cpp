#include "ui/win32/ControlWindow.h"

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "text/Text.h"
#include "text/win32/WideText.h"
#include "ui/win32/TreeFill.h"

namespace bxvbwiz {

namespace {

using Kind = ControlKind;

bool HasText(Kind kind) {
  return kind != Kind::ProgressBar && kind != Kind::TreeView;
}

struct WindowClass {
  const wchar_t* name;
  DWORD style;
  DWORD extendedStyle;
};

WindowClass WindowClassOf(const Control& control, bool beginsGroup) {
  constexpr DWORD kTab = WS_TABSTOP | WS_GROUP;
  switch (control.kind) {
    case Kind::Frame:
      // The form is seen inside it.
      return {WC_BUTTONW, BS_GROUPBOX, WS_EX_TRANSPARENT};
    case Kind::Label:
      if (static_cast<const Label&>(control).style == Label::kText) return {WC_STATICW, SS_LEFT, 0};
      // It notifies its tool tip.
      return {WC_STATICW, SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_NOTIFY, 0};
    case Kind::Line:
      break;  // has no window
    case Kind::CommandButton:
      return {WC_BUTTONW, BS_PUSHBUTTON | kTab, 0};
    case Kind::CheckBox:
      return {WC_BUTTONW, BS_AUTOCHECKBOX | kTab, 0};
    case Kind::OptionButton:
      return {WC_BUTTONW, BS_AUTORADIOBUTTON | (beginsGroup ? WS_GROUP : 0UL), 0};
    case Kind::TextBox:
      if (!static_cast<const TextBox&>(control).readOnly)
        return {WC_EDITW, ES_AUTOHSCROLL | kTab, WS_EX_CLIENTEDGE};
      return {WC_EDITW, ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | kTab, WS_EX_CLIENTEDGE};
    case Kind::ComboBox:
      return {WC_COMBOBOXW, CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL | kTab, 0};
    case Kind::ProgressBar:
      return {PROGRESS_CLASSW, 0, 0};
    case Kind::TreeView:
      return {WC_TREEVIEWW,
              TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_INFOTIP | kTab,
              WS_EX_CLIENTEDGE};
  }
  return {};
}

// Both kinds of button have a state; they are types of their own. Null for other controls.
bool* CheckOf(Control& control) {
  if (control.kind == Kind::CheckBox) return &static_cast<CheckBox&>(control).checked;
  if (control.kind == Kind::OptionButton) return &static_cast<OptionButton&>(control).checked;
  return nullptr;
}

// Positions count characters in the control and UTF-16 units in the window.
std::size_t Units(const std::string& text, std::size_t characters) {
  return Widen(FirstCharacters(text, characters)).size();
}

std::size_t Characters(const std::wstring& text, std::size_t units) {
  return CharacterCount(Narrow(std::wstring_view(text).substr(0, units)));
}

std::wstring WideTextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

}  // namespace

std::string TextOf(HWND window) {
  return Narrow(WideTextOf(window));
}

void ControlWindow::Make(HWND dialog, int id, const RECT& place, bool beginsGroup, bool isDefault) {
  const WindowClass made = WindowClassOf(control_, beginsGroup);
  const DWORD style = made.style | WS_CHILD | WS_VISIBLE | (control_.enabled ? 0UL : WS_DISABLED) |
                      (isDefault ? BS_DEFPUSHBUTTON : 0UL);
  window_ = CreateWindowExW(made.extendedStyle | WS_EX_NOPARENTNOTIFY, made.name, Widen(ShownText()).c_str(),
                            style, place.left, place.top, place.right, place.bottom, dialog,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
  SendMessageW(window_, WM_SETFONT, static_cast<WPARAM>(SendMessageW(dialog, WM_GETFONT, 0, 0)), FALSE);
}

bool ControlWindow::Show(bool isHeeded) {
  bool changed = HasText(control_.kind) && (ShowItems() || ShowText());
  changed = ShowChecked() || changed;
  changed = ShowProgress() || changed;
  return ShowState(isHeeded) || changed;
}

// What is hidden is disabled: the dialog would still heed its access key.
bool ControlWindow::ShowState(bool isHeeded) {
  const LONG style = GetWindowLongW(window_, GWL_STYLE);
  const bool visible = control_.IsShown();
  const bool isVisible = (style & WS_VISIBLE) != 0;
  if (visible != isVisible) ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE);
  const bool enabled = visible && isHeeded;
  const bool isEnabled = (style & WS_DISABLED) == 0;
  if (enabled != isEnabled) EnableWindow(window_, enabled ? TRUE : FALSE);
  return visible != isVisible || enabled != isEnabled;
}

bool ControlWindow::ShowText() {
  const std::string text = ShownText();
  if (TextOf(window_) == text) return false;
  SetWindowTextW(window_, Widen(text).c_str());
  return true;
}

std::string ControlWindow::ShownText() const {
  std::string text = control_.text;
  const std::size_t key = text.find('&');
  if (accessKey_ == AccessKey::None && key != std::string::npos) text.erase(key, 1);
  if (accessKey_ == AccessKey::First && key == std::string::npos) text.insert(0, 1, '&');
  return text;
}

// The items first: they would take the text with them.
bool ControlWindow::ShowItems() {
  if (control_.kind != Kind::ComboBox) return false;
  const auto& items = static_cast<const ComboBox&>(control_).items;
  if (static_cast<int>(items.size()) == shownItems_) return false;
  SendMessageW(window_, CB_RESETCONTENT, 0, 0);
  for (const std::string& item : items) {
    SendMessageW(window_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Widen(item).c_str()));
  }
  shownItems_ = static_cast<int>(items.size());
  ShowText();
  return true;
}

bool ControlWindow::ShowChecked() {
  const bool* checked = CheckOf(control_);
  if (checked == nullptr || (SendMessageW(window_, BM_GETCHECK, 0, 0) == BST_CHECKED) == *checked)
    return false;
  SendMessageW(window_, BM_SETCHECK, *checked ? BST_CHECKED : BST_UNCHECKED, 0);
  return true;
}

bool ControlWindow::ShowProgress() {
  if (control_.kind != Kind::ProgressBar) return false;
  const auto& bar = static_cast<const ProgressBar&>(control_);
  if (bar.value == shownValue_) return false;
  shownValue_ = bar.value;
  SendMessageW(window_, PBM_SETRANGE32, 0, bar.maximum);
  SendMessageW(window_, PBM_SETPOS, static_cast<WPARAM>(bar.value), 0);
  return true;
}

void ControlWindow::Take() {
  if (bool* checked = CheckOf(control_)) *checked = SendMessageW(window_, BM_GETCHECK, 0, 0) == BST_CHECKED;
  if (control_.kind == Kind::ComboBox) control_.text = TextOf(window_);
  if (control_.kind != Kind::TextBox) return;
  const std::wstring text = WideTextOf(window_);
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(window_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  auto& box = static_cast<TextBox&>(control_);
  box.text = Narrow(text);
  box.selectionStart = Characters(text, start);
  box.selectionLength = Characters(text, end) - box.selectionStart;
}

void ControlWindow::TakeChoice() {
  auto& box = static_cast<ComboBox&>(control_);
  const auto chosen = static_cast<std::size_t>(SendMessageW(window_, CB_GETCURSEL, 0, 0));
  if (chosen < box.items.size()) box.text = box.items[chosen];
}

void ControlWindow::ShowSelection() const {
  if (control_.kind != Kind::TextBox) return;
  const auto& box = static_cast<const TextBox&>(control_);
  const std::size_t start = Units(box.text, box.selectionStart);
  const std::size_t end = Units(box.text, box.selectionStart + box.selectionLength);
  SendMessageW(window_, EM_SETSEL, static_cast<WPARAM>(start), static_cast<LPARAM>(end));
}

bool ControlWindow::IsOutdatedTree() const {
  return control_.kind == Kind::TreeView && control_.IsShown() &&
         static_cast<const TreeView&>(control_).Revision() != shownRevision_;
}

bool ControlWindow::Fill(const std::function<bool()>& goesOn) {
  const auto& tree = static_cast<const TreeView&>(control_);
  shownRevision_ = tree.Revision();
  return FillTree(window_, tree.Nodes(), goesOn);
}

}  // namespace bxvbwiz
