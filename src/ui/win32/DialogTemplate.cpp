#include "ui/win32/DialogTemplate.h"

#include <windows.h>

#include <algorithm>
#include <cstdlib>

#include "support/basParse.h"
#include "text/Text.h"
#include "text/win32/WideText.h"

namespace bxvbwiz {

namespace {

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
  static const int resolution = [] {  // of the program, whatever becomes of the screen's
    const HDC screen = GetDC(nullptr);
    const int found = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return found;
  }();
  return resolution != kDesignResolution && EqualsIgnoreCase(name, "MS Sans Serif") ? "Microsoft Sans Serif"
                                                                                    : name;
}

}  // namespace

DialogTemplate::DialogTemplate(DWORD style, DWORD extendedStyle, const std::wstring& className,
                               const Place& place, const std::string& title, const std::string& font)
    : words_{1, 0xFFFF} {  // the version, and what distinguishes this structure from the older one
  Append(0);               // help
  Append(extendedStyle);
  Append(style | DS_SETFONT);
  words_.push_back(0);  // controls
  Append(place);
  words_.push_back(0);  // no menu
  Append(className);
  Append(Widen(title));
  words_.push_back(static_cast<WORD>(std::max(1, NumberOf(font, "Size", "8"))));
  words_.push_back(NumberOf(font, "Bold", "0") != 0 ? FW_BOLD : FW_NORMAL);
  const WORD italic = NumberOf(font, "Italic", "0") != 0 ? 1 : 0;
  words_.push_back(static_cast<WORD>(italic | DEFAULT_CHARSET << 8));  // two bytes
  Append(Widen(FaceOf(font)));
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
