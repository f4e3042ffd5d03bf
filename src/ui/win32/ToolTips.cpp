#include "ui/win32/ToolTips.h"

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "text/win32/WideText.h"

namespace bxvbwiz {

void ToolTips::Make(const Ledger& ledger, HWND form, HINSTANCE module, const FormFont& font) {
  constexpr int kMostUnits = 300;  // a longer tip is broken into lines
  form_ = form;
  window_ = OwnedWindow(ledger,
                        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                        WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                                        CW_USEDEFAULT, CW_USEDEFAULT, form, nullptr, module, nullptr));
  SendMessageW(window_.Get(), WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
  SendMessageW(window_.Get(), TTM_SETMAXTIPWIDTH, 0, font.Horizontal(kMostUnits));
}

void ToolTips::Set(HWND control, const std::string& text) {
  std::string& shown = texts_[control];
  if (shown == text) return;
  std::wstring wide = Widen(text);
  TTTOOLINFOW tool{};
  // The present structure is longer than the one that every version of the common controls takes.
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = form_;
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  tool.lpszText = wide.data();
  const UINT message = text.empty() ? TTM_DELTOOLW : shown.empty() ? TTM_ADDTOOLW : TTM_UPDATETIPTEXTW;
  SendMessageW(window_.Get(), message, 0, reinterpret_cast<LPARAM>(&tool));
  shown = text;
}

}  // namespace bxvbwiz
