#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "platform/win32/OwnedHandle.h"

namespace bxvbwiz {

// Presses, types and reads the real controls of the wizard, by window messages alone. It finds them as the
// user does: a button by its text, a box by the label before it, and anything else by its window class. Every
// function throws std::runtime_error when it waits too long.
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
  // The page that is shown, like "Welcome"; empty while the wizard works, and when the window is gone.
  std::string Page() const;
  // The window of a visible control; null when there is none.
  HWND Find(const std::string& name) const;
  std::string Text(const std::string& name) const;
  bool Enabled(const std::string& name) const { return IsWindowEnabled(Find(name)) != FALSE; }
  // Sends a control a message without pointers and gives its result.
  LRESULT Ask(const std::string& name, UINT message, WPARAM wParam = 0) const {
    return SendMessageW(Find(name), message, wParam, 0);
  }

  // Replaces the whole text of a text box, or of the one in a combo box.
  void SetText(const std::string& name, const std::string& text);
  // Posted, because a click may show a message box and return only after it.
  void Click(const std::string& name) { PostMessageW(Find(name), BM_CLICK, 0, 0); }
  // The page's (n)ext or finish, (o)k or (c)ancel, or (e)scape, one after the other. After Next, waits for
  // anything.
  void Press(const std::string& buttons);
  void Type(const std::string& name, const std::string& characters);
  void Key(int virtualKey);
  void AccessKey(char letter);

  // The text of the message box that comes up.
  std::string WaitForMessage();
  // Presses a button (IDOK, ...) of the message box that is shown, and waits until it is gone.
  void Answer(int button);
  // Types a name into the file dialog that comes up and presses Open.
  void AnswerFileDialog(const std::string& name);
  void WaitForPage(const std::string& page);
  void WaitForFocus(const std::string& name);
  // Waits until another page is shown, a message box comes up, or the program ends.
  void WaitForAnything(const std::string& pageToLeave);
  void WaitUntil(const std::string& what, const std::function<bool()>& condition) const;
  bool HasMessage() const { return MessageBoxWindow() != nullptr; }
  bool Ended() const;
  // The program's exit code, when it has ended.
  DWORD WaitForEnd();

 private:
  void WaitForWindow();
  HWND MessageBoxWindow() const;
  HWND VisibleWindow(const std::function<bool(HWND)>& isWanted) const;
  HWND FocusWindow() const;

  OwnedHandle process_;
  DWORD processId_ = 0;
  HWND window_ = nullptr;
};

}  // namespace bxvbwiz
