#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/win32/OwnedHandle.h"

namespace bxvbwiz {

// What should have happened in the wizard's windows did not.
class DriverError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Runs a program that shows the wizard, and presses, types and reads its real controls from outside, by
// window messages alone. Every function throws DriverError when what it waits for does not come.
class WizardDriver {
 public:
  // Starts the program and waits for the wizard's window.
  explicit WizardDriver(const std::string& commandLine);
  // Ends the program when it still runs.
  ~WizardDriver();
  WizardDriver(const WizardDriver&) = delete;
  WizardDriver& operator=(const WizardDriver&) = delete;

  HWND Window() const { return window_; }
  std::string Caption() const;
  // The window of a control; null while its page was never shown.
  HWND Find(int id) const;
  std::string Text(int id) const;
  bool Visible(int id) const;
  bool Enabled(int id) const;
  bool Checked(int id) const;
  bool IsDefaultButton(int id) const;
  // The control that has the focus.
  int Focus() const;
  // Start and end of what is selected in a text box.
  std::pair<DWORD, DWORD> Selection(int id) const;
  // The tip that the form has for one of its windows; empty without one.
  std::string ToolTip(HWND control) const;
  // "  text*" for each node, two blanks a level, with the number of its picture.
  std::vector<std::string> Tree(int id) const;

  void SetText(int id, const std::string& text);
  void Paste(int id, const std::string& text);
  void Click(int id);
  void Choose(int id, int item);  // of a combo box
  void Type(int id, const std::string& characters);
  void Key(int virtualKey);
  void AccessKey(char letter);
  void CloseFromMenu();

  // The text of the message box that comes up.
  std::string WaitForMessage();
  // Presses a button (IDOK, ...) of the message box that is shown, and waits until it is gone.
  void Answer(int button);
  // Types a name into the file dialog that comes up and presses Open.
  void AnswerFileDialog(const std::string& name);
  void WaitForPanel(int panel);
  // Waits until another panel is shown, a message box comes up, or the program ends.
  void WaitForAnything(int panelToLeave);
  void WaitUntil(const char* what, const std::function<bool()>& condition) const;
  bool HasMessage() const { return MessageBoxWindow() != nullptr; }
  bool Ended() const;
  // What the program printed as "Name=value" lines, when it has ended.
  std::map<std::string, std::string> WaitForEnd();

 private:
  HWND MessageBoxWindow() const;
  HWND FileDialog() const;
  HWND OtherDialog(int controlInside) const;
  std::string ReadOutput();
  // The panel that is shown; none while one follows another, and when the window is gone.
  int Panel() const;
  static constexpr int kNoPanel = -1;

  OwnedHandle process_;
  OwnedHandle output_;
  DWORD processId_ = 0;
  HWND window_ = nullptr;
};

}  // namespace bxvbwiz
