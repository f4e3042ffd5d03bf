#pragma once

#include <cstdint>
#include <string>

#include "text/Strings.h"

namespace bxvbwiz {

// Styles of a message box, as MB_* in winuser.h.
constexpr int kStyleYesNo = 4;
constexpr int kStyleRetryCancel = 5;
constexpr int kStyleCritical = 16;
constexpr int kStyleExclamation = 48;
constexpr int kStyleInformation = 64;

// What was pressed in a message box, as ID* in winuser.h.
enum class Button { Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7 };

struct Message {
  TextId number{};  // of its text
  int style = 0;    // icon + buttons, the constants above
  std::string text;
  std::string detail;  // what went wrong underneath; for the log and the command line, not for the box
};

enum class Pointer { Default = 0, Hourglass = 11 };

// Whoever the wizard speaks to: the form, the command line, or a test.
class User {
 public:
  virtual ~User() = default;

  // Shows a message titled as the wizard and gives the button that was pressed.
  virtual Button ShowMessage(const Message& message) = 0;
  // Names the present step; empty clears it.
  virtual void ShowStatus(const std::string& text) = 0;
  // Moves the progress bar by one step.
  virtual void AdvanceProgress() = 0;
  virtual void SetPointer(Pointer pointer) = 0;
  // Lets pending events run. May throw WizardEnded when one of them cancelled the wizard.
  virtual void DoEvents() = 0;

  // What a wizard that the user ends leaves for its host: 0 cancelled, -1 finished.
  virtual void SetReturnCode(std::int16_t code) = 0;
  // Marks the wizard as ended. Callers use EndWizard or CancelWizard below, which also leave what was being
  // done.
  virtual void WizardHasEnded() = 0;
};

// Ends the wizard by a fatal message; the return code stays.
[[noreturn]] void EndWizard(User& user);
// Ends the wizard as cancelled: return code 0.
[[noreturn]] void CancelWizard(User& user);

}  // namespace bxvbwiz
