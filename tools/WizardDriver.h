#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "platform/win32/OwnedHandle.h"

namespace bxvbwiz {

// Presses, types and reads the real controls of the wizard, by window messages alone. Every function throws
// std::runtime_error when what it waits for does not come.
class WizardDriver {
 public:
  // Starts the program and waits for the wizard's window, a message box or the program's end.
  explicit WizardDriver(const std::string& commandLine);
  // Waits for the window that another thread of this process shows.
  WizardDriver();
  // Ends the program when it still runs, or the wizard of this process.
  ~WizardDriver();
  WizardDriver(const WizardDriver&) = delete;
  WizardDriver& operator=(const WizardDriver&) = delete;

  HWND Window() const { return window_; }
  std::string Caption() const;
  // The window of a control; null while its page was never shown.
  HWND Find(int id) const;
  std::string Text(int id) const;
  bool Visible(int id) const { return IsWindowVisible(Find(id)) != FALSE; }
  bool Enabled(int id) const { return IsWindowEnabled(Find(id)) != FALSE; }
  // What a message to a control gives that points to no memory.
  LRESULT Ask(int id, UINT message, WPARAM wParam = 0) const {
    return SendMessageW(Find(id), message, wParam, 0);
  }
  bool Checked(int id) const { return Ask(id, BM_GETCHECK) == BST_CHECKED; }

  // In the place of all that a text box holds, or that of a combo box.
  void SetText(int id, const std::string& text);
  // Posted: what it begins may show a message box and return only after that.
  void Click(int id) { PostMessageW(Find(id), BM_CLICK, 0, 0); }
  // The page's (n)ext, (o)k or (c)ancel, one after the other. Behind Next, waits for anything.
  void Press(const std::string& buttons);
  void Type(int id, const std::string& characters);
  void Key(int virtualKey);
  void AccessKey(char letter);

  // The text of the message box that comes up.
  std::string WaitForMessage();
  // Presses a button (IDOK, ...) of the message box that is shown, and waits until it is gone.
  void Answer(int button);
  // Types a name into the file dialog that comes up and presses Open.
  void AnswerFileDialog(const std::string& name);
  void WaitForPanel(int panel);
  void WaitForFocus(int id);
  // Waits until another panel is shown, a message box comes up, or the program ends.
  void WaitForAnything(int panelToLeave);
  void WaitUntil(const std::string& what, const std::function<bool()>& condition) const;
  bool HasMessage() const { return MessageBoxWindow() != nullptr; }
  bool Ended() const;
  // The program's exit code, when it has ended.
  DWORD WaitForEnd();

 private:
  void WaitForWindow();
  HWND MessageBoxWindow() const;
  HWND Dialog(int controlInside) const;
  HWND FocusWindow() const;
  // The panel that is shown; none while one follows another, and when the window is gone.
  int Panel() const;
  static constexpr int kNoPanel = -1;

  OwnedHandle process_;
  DWORD processId_ = 0;
  HWND window_ = nullptr;
};

}  // namespace bxvbwiz
