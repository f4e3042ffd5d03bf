#include "ui/win32/ToolTips.h"

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "text/win32/WideText.h"

namespace bxvbwiz {

void ToolTips::Make(HWND form, HINSTANCE module, HFONT font, int width) {
  form_ = form;
  window_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, form, nullptr, module,
                            nullptr);
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, width);
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
  SendMessageW(window_, message, 0, reinterpret_cast<LPARAM>(&tool));
  shown = text;
}

}  // namespace bxvbwiz
