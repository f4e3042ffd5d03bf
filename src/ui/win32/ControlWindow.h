#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "ui/Controls.h"

namespace bxvbwiz {

// The access key that a text shows: its own, none, or its first letter.
enum class AccessKey { Own, None, First };

// One control of the form and the window that shows it, which dies with its dialog.
class ControlWindow {
 public:
  explicit ControlWindow(Control& control) : control_(control) {}

  // Another access key than the text's own.
  void SetAccessKey(AccessKey key) { accessKey_ = key; }

  // Makes the window as the control is now, since each change afterwards would cost time, in the font of the
  // dialog.
  void Make(HWND dialog, int id, const RECT& place, bool beginsGroup, bool isDefault);

  HWND Handle() const { return window_; }
  Control& Shown() const { return control_; }

  // From the control to the window, which takes input when the form heeds it; only what differs is touched.
  // True when something changed.
  bool Show(bool isHeeded);
  // What the user did, from the window to the control: text, selection, state.
  void Take();
  // The item that the user chose from a combo box, whose text follows only later.
  void TakeChoice();
  // The selection, from the control to the window.
  void ShowSelection() const;

  // Whether it is a tree on the visible page that has changed since it was filled.
  bool IsOutdatedTree() const;
  // Fills the window with the tree's nodes, as FillTree does.
  bool Fill(const std::function<bool()>& goesOn);

 private:
  bool ShowState(bool isHeeded);
  bool ShowText();
  std::string ShownText() const;
  bool ShowItems();
  bool ShowChecked();
  bool ShowProgress();

  Control& control_;
  HWND window_ = nullptr;
  AccessKey accessKey_ = AccessKey::Own;
  int shownItems_ = 0;
  int shownValue_ = -1;
  unsigned shownRevision_ = 0;
};

// The text of a control's window.
std::string TextOf(HWND window);

}  // namespace bxvbwiz
