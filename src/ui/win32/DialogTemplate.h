#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "ui/Controls.h"

namespace bxvbwiz {

// What the system's dialog manager makes a dialog of, with title and font (DLGTEMPLATEEX).
class DialogTemplate {
 public:
  // `className` is a class of dialogs; `font` is a description like
  // "Name=MS Sans Serif;Bold=0;Italic=0;Size=8"; what it lacks is taken from the system's dialog font,
  // 8 points.
  DialogTemplate(DWORD style, DWORD extendedStyle, const std::wstring& className, const Place& place,
                 const std::string& title, const std::string& font);

  // Makes the dialog, which is not shown yet. Null when the system refuses it.
  HWND Create(HINSTANCE module, HWND parent, DLGPROC procedure, LPARAM parameter);

 private:
  void Append(DWORD number);
  void Append(const Place& place);
  void Append(const std::wstring& text);

  std::vector<WORD> words_;
};

}  // namespace bxvbwiz
