#include "ui/win32/ControlWindow.h"

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "support/Errors.h"
#include "text/Text.h"
#include "text/win32/WideText.h"

namespace bxvbwiz {

namespace {

using Kind = ControlKind;

struct WindowKind {
  const wchar_t* className;
  DWORD style;
  DWORD extendedStyle;
};

WindowKind WindowKindOf(Kind kind) {
  constexpr DWORD kTab = WS_TABSTOP;
  switch (kind) {
    case Kind::Label:
      return {WC_STATICW, SS_LEFT, 0};
    case Kind::PathLabel:
      return {WC_STATICW, SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_NOTIFY, 0};  // it notifies its tool tip
    case Kind::Branding:
      return {WC_STATICW, SS_LEFTNOWORDWRAP | SS_NOPREFIX | WS_DISABLED, 0};  // drawn grey
    case Kind::Line:
      return {WC_STATICW, SS_ETCHEDHORZ, 0};
    case Kind::GroupBox:
      return {WC_BUTTONW, BS_GROUPBOX, 0};
    case Kind::Button:
      return {WC_BUTTONW, BS_PUSHBUTTON | WS_GROUP | kTab, 0};
    case Kind::CheckBox:
      return {WC_BUTTONW, BS_AUTOCHECKBOX | WS_GROUP | kTab, 0};
    case Kind::FirstOptionButton:
      return {WC_BUTTONW, BS_AUTORADIOBUTTON | WS_GROUP, 0};
    case Kind::OptionButton:
      return {WC_BUTTONW, BS_AUTORADIOBUTTON, 0};
    case Kind::TextBox:
      return {WC_EDITW, ES_AUTOHSCROLL | WS_GROUP | kTab, WS_EX_CLIENTEDGE};
    case Kind::ReportBox:
      return {WC_EDITW, ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | WS_GROUP | kTab,
              WS_EX_CLIENTEDGE};
    case Kind::ComboBox:
      return {WC_COMBOBOXW, CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL | WS_GROUP | kTab, 0};
    case Kind::ProgressBar:
      return {PROGRESS_CLASSW, 0, 0};
    case Kind::Tree:
      return {WC_TREEVIEWW,
              TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS | WS_GROUP | kTab,
              WS_EX_CLIENTEDGE};
  }
  return {WC_STATICW, 0, 0};
}

bool HasText(Kind kind) {
  return kind != Kind::Line && kind != Kind::ProgressBar && kind != Kind::Tree;
}

bool HasCheck(Kind kind) {
  return kind == Kind::CheckBox || kind == Kind::FirstOptionButton || kind == Kind::OptionButton;
}

// Both kinds of button have a state; they are types of their own.
bool& Checked(const LaidControl& laid) {
  if (laid.kind == Kind::CheckBox) return static_cast<CheckBox*>(laid.control)->checked;
  return static_cast<OptionButton*>(laid.control)->checked;
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

// It is made as it is to be shown: a change afterwards would cost much of the opening.
ControlWindow::ControlWindow(const LaidControl& laid, HWND parent, const FormFont& font, HINSTANCE module)
    : laid_(laid) {
  const WindowKind kind = WindowKindOf(laid.kind);
  const RECT place = font.Pixels(laid.place);
  // A line is as thin as its edge on every screen.
  const int height = laid.kind == Kind::Line ? 2 : place.bottom - place.top;
  DWORD state = 0;
  std::wstring text;
  if (laid.control == nullptr) {
    state = WS_VISIBLE;
  } else {
    state = (IsVisible() ? WS_VISIBLE : 0) | (laid.control->enabled ? 0 : WS_DISABLED);
    if (HasText(laid.kind)) text = Widen(laid.control->text);
  }
  window_ = CreateWindowExW(kind.extendedStyle, kind.className, text.c_str(), WS_CHILD | kind.style | state,
                            place.left, place.top, place.right - place.left, height, parent,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(laid.id)), module, nullptr);
  if (window_ == nullptr) {
    throw RuntimeError(kErrorObjectNotSet, "Cannot make the window of control " + std::to_string(laid.id));
  }
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
}

bool ControlWindow::IsVisible() const {
  return laid_.control->visible && (laid_.frame == nullptr || laid_.frame->visible);
}

bool ControlWindow::Show() {
  if (laid_.control == nullptr) return false;
  bool changed = HasText(laid_.kind) && (ShowItems() || ShowText());
  changed = (HasCheck(laid_.kind) && ShowChecked()) || changed;
  changed = (laid_.kind == Kind::ProgressBar && ShowProgress()) || changed;
  return ShowState() || changed;
}

bool ControlWindow::ShowState() {
  const Control& control = *laid_.control;
  const LONG style = GetWindowLongW(window_, GWL_STYLE);
  const bool visible = IsVisible();
  const bool isVisible = (style & WS_VISIBLE) != 0;
  if (visible != isVisible) ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE);
  const bool isEnabled = (style & WS_DISABLED) == 0;
  const bool changes = control.enabled != isEnabled && laid_.kind != Kind::Branding;
  if (changes) EnableWindow(window_, control.enabled ? TRUE : FALSE);
  return visible != isVisible || changes;
}

bool ControlWindow::ShowText() {
  if (TextOf(window_) == laid_.control->text) return false;
  SetWindowTextW(window_, Widen(laid_.control->text).c_str());
  return true;
}

// The items first: they would take the text with them.
bool ControlWindow::ShowItems() {
  if (laid_.kind != Kind::ComboBox) return false;
  const auto& items = static_cast<const ComboBox*>(laid_.control)->items;
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
  const bool checked = Checked(laid_);
  if ((SendMessageW(window_, BM_GETCHECK, 0, 0) == BST_CHECKED) == checked) return false;
  SendMessageW(window_, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
  return true;
}

bool ControlWindow::ShowProgress() {
  const auto& bar = *static_cast<const ProgressBar*>(laid_.control);
  if (bar.value == shownValue_) return false;
  shownValue_ = bar.value;
  SendMessageW(window_, PBM_SETRANGE32, 0, bar.maximum);
  SendMessageW(window_, PBM_SETPOS, static_cast<WPARAM>(bar.value), 0);
  return true;
}

void ControlWindow::Take() {
  if (HasCheck(laid_.kind)) Checked(laid_) = SendMessageW(window_, BM_GETCHECK, 0, 0) == BST_CHECKED;
  if (laid_.kind == Kind::ComboBox) laid_.control->text = TextOf(window_);
  if (laid_.kind != Kind::TextBox) return;
  const std::wstring text = WideTextOf(window_);
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(window_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  auto& box = *static_cast<TextBox*>(laid_.control);
  box.text = Narrow(text);
  box.selectionStart = Characters(text, start);
  box.selectionLength = Characters(text, end) - box.selectionStart;
}

void ControlWindow::TakeChoice() {
  auto& box = *static_cast<ComboBox*>(laid_.control);
  const auto chosen = static_cast<std::size_t>(SendMessageW(window_, CB_GETCURSEL, 0, 0));
  if (chosen < box.items.size()) box.text = box.items[chosen];
}

void ControlWindow::ShowSelection() const {
  if (laid_.kind != Kind::TextBox) return;
  const auto& box = *static_cast<const TextBox*>(laid_.control);
  const std::size_t start = Units(box.text, box.selectionStart);
  const std::size_t end = Units(box.text, box.selectionStart + box.selectionLength);
  SendMessageW(window_, EM_SETSEL, static_cast<WPARAM>(start), static_cast<LPARAM>(end));
}

}  // namespace bxvbwiz
