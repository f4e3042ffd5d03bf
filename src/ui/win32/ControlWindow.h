#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "ui/win32/Layout.h"

namespace bxvbwiz {

// One control of the form as a window. The window dies with its parent.
class ControlWindow {
 public:
  // Makes the window, which shows nothing yet. Throws RuntimeError when the system refuses it.
  ControlWindow(const LaidControl& laid, HWND parent, const FormFont& font, HINSTANCE module);

  HWND Handle() const { return window_; }
  int Id() const { return laid_.id; }
  const Control* Shown() const { return laid_.control; }
  ControlKind Kind() const { return laid_.kind; }

  // From the control to the window; only what differs is touched. True when something changed.
  bool Show();
  // What the user did, from the window to the control: text, selection, state.
  void Take();
  // The item that the user chose from a combo box, whose text follows only later.
  void TakeChoice();
  // The selection, from the control to the window.
  void ShowSelection() const;

 private:
  bool IsVisible() const;
  bool ShowState();
  bool ShowText();
  bool ShowItems();
  bool ShowChecked();
  bool ShowProgress();
  std::string WindowText() const;

  LaidControl laid_;
  HWND window_;
  int shownItems_ = 0;
  int shownValue_ = -1;
};

// The text of a control's window.
std::string TextOf(HWND window);

}  // namespace bxvbwiz
