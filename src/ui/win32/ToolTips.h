#pragma once

#include <windows.h>

#include <map>
#include <string>

#include "ui/win32/FormFont.h"
#include "ui/win32/Owned.h"

namespace bxvbwiz {

// The tool tips of a form's controls.
class ToolTips {
 public:
  // Makes the window of the tips, owned by the form's.
  void Make(const Ledger& ledger, HWND form, HINSTANCE module, const FormFont& font);
  bool Made() const { return window_.Get() != nullptr; }
  // Gives a control its tip; an empty text takes it away.
  void Set(HWND control, const std::string& text);

 private:
  OwnedWindow window_;
  HWND form_ = nullptr;
  std::map<HWND, std::string> texts_;
};

}  // namespace bxvbwiz
