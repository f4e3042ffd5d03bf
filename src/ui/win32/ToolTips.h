#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace bxvbwiz {

// The tool tips of a form's controls. Their window is the form's, and dies with it.
class ToolTips {
 public:
  // Makes the window of the tips, which breaks a tip that is wider than `width` pixels into lines.
  void Make(HWND form, HINSTANCE module, HFONT font, int width);
  bool Made() const { return window_ != nullptr; }
  // Gives a control its tip; an empty text takes it away.
  void Set(HWND control, const std::string& text);

 private:
  HWND window_ = nullptr;
  HWND form_ = nullptr;
  std::map<HWND, std::string> texts_;
};

}  // namespace bxvbwiz
