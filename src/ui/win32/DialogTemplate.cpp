#include "ui/win32/DialogTemplate.h"

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <algorithm>
#include <cstdlib>

#include "support/basParse.h"
#include "text/Text.h"
#include "text/win32/WideText.h"

namespace bxvbwiz {

namespace {

using Kind = ControlKind;

// Where the header counts the controls.
constexpr std::size_t kCountAt = 8;
// What a resource's number begins with in the place of a text.
constexpr wchar_t kResource = 0xFFFF;

struct WindowClass {
  const wchar_t* name;
  DWORD style;
  DWORD extendedStyle;
};

WindowClass WindowClassOf(const Control& control, bool beginsGroup) {
  constexpr DWORD kTab = WS_TABSTOP | WS_GROUP;
  switch (control.kind) {
    case Kind::Frame:
      return {WC_BUTTONW, BS_GROUPBOX, 0};
    case Kind::Label:
      if (static_cast<const Label&>(control).style == Label::kText) return {WC_STATICW, SS_LEFT, 0};
      // It notifies its tool tip.
      return {WC_STATICW, SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_NOTIFY, 0};
    case Kind::Line:
      return {WC_STATICW, SS_ETCHEDHORZ, 0};
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

std::string ItemOf(const std::string& font, const char* name, const char* otherwise) {
  bool found = false;
  const std::optional<std::string> item = GetItem(font, name, found);
  return item.has_value() && !item->empty() ? *item : otherwise;
}

int NumberOf(const std::string& font, const char* name, const char* otherwise) {
  return static_cast<int>(std::strtol(ItemOf(font, name, otherwise).c_str(), nullptr, 10));
}

// The bitmap font has few sizes, which a finer screen would stretch; its outline sister has the same widths.
std::string FaceOf(const std::string& font) {
  constexpr int kDesignResolution = 96;
  const std::string name = ItemOf(font, "Name", "MS Shell Dlg");
  const HDC screen = GetDC(nullptr);
  const int resolution = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return resolution != kDesignResolution && EqualsIgnoreCase(name, "MS Sans Serif") ? "Microsoft Sans Serif"
                                                                                    : name;
}

}  // namespace

DialogTemplate::DialogTemplate(DWORD style, DWORD extendedStyle, const Place& place, const std::string& font)
    : words_{1, 0xFFFF} {  // the version, and what distinguishes this structure from the older one
  Append(0);               // help
  Append(extendedStyle);
  Append(style | DS_SETFONT);
  words_.push_back(0);  // controls
  Append(place);
  words_.insert(words_.end(), 3, 0);  // no menu, class and title
  words_.push_back(static_cast<WORD>(std::max(1, NumberOf(font, "Size", "8"))));
  words_.push_back(NumberOf(font, "Bold", "0") != 0 ? FW_BOLD : FW_NORMAL);
  const WORD italic = NumberOf(font, "Italic", "0") != 0 ? 1 : 0;
  words_.push_back(static_cast<WORD>(italic | DEFAULT_CHARSET << 8));  // two bytes
  Append(Widen(FaceOf(font)));
}

void DialogTemplate::Add(const Control& control) {
  const WindowClass made = WindowClassOf(control, last_ != control.kind);
  last_ = control.kind;
  if (words_.size() % 2 != 0) words_.push_back(0);
  Append(0);  // help
  Append(made.extendedStyle);
  const bool visible = control.visible && (control.page == nullptr || control.page->visible);
  Append(made.style | WS_CHILD | (visible ? WS_VISIBLE : 0UL) | (control.enabled ? 0UL : WS_DISABLED));
  Append(control.place);
  Append(static_cast<DWORD>(kFirstId) + words_[kCountAt]++);
  Append(made.name);
  const std::wstring text = Widen(control.text);
  Append(text.substr(0, text.find(kResource)));
  words_.push_back(0);  // data
}

HWND DialogTemplate::Create(HINSTANCE module, HWND parent, DLGPROC procedure, LPARAM parameter) {
  return CreateDialogIndirectParamW(module, reinterpret_cast<const DLGTEMPLATE*>(words_.data()), parent,
                                    procedure, parameter);
}

void DialogTemplate::Append(DWORD number) {
  words_.push_back(LOWORD(number));
  words_.push_back(HIWORD(number));
}

void DialogTemplate::Append(const Place& place) {
  for (const int value : {place.x, place.y, place.width, place.height})
    words_.push_back(static_cast<WORD>(value));
}

void DialogTemplate::Append(const std::wstring& text) {
  words_.insert(words_.end(), text.c_str(), text.c_str() + text.size() + 1);
}

}  // namespace bxvbwiz
