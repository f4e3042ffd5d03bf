#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "ui/Controls.h"

namespace bxvbwiz {

// What the system's dialog manager makes a dialog of, with the font and the controls (DLGTEMPLATEEX).
class DialogTemplate {
 public:
  // `font` is a description like "Name=MS Sans Serif;Bold=0;Italic=0;Size=8"; what it lacks is taken from the
  // system's dialog font, 8 points.
  DialogTemplate(DWORD style, DWORD extendedStyle, const Place& place, const std::string& font);

  // The window of a control, as it is now: a change afterwards would cost time when the dialog opens. Its
  // number in the dialog is kFirstId for the first control, and one more for each further one.
  void Add(const Control& control);
  static constexpr int kFirstId = 100;

  // Makes the dialog, which is not shown yet. Null when the system refuses it.
  HWND Create(HINSTANCE module, HWND parent, DLGPROC procedure, LPARAM parameter);

 private:
  void Append(DWORD number);
  void Append(const Place& place);
  void Append(const std::wstring& text);

  std::vector<WORD> words_;
  ControlKind last_ = ControlKind::Frame;
};

}  // namespace bxvbwiz
