#pragma once

#include <cstdint>
#include <string>

#include "text/Strings.h"

namespace bxvbwiz {

// Styles of a message box, as MB_* in winuser.h. The buttons sit in the low four bits.
constexpr int kButtonsOfStyle = 15;
constexpr int kStyleYesNo = 4;
constexpr int kStyleRetryCancel = 5;
constexpr int kStyleCritical = 16;
constexpr int kStyleExclamation = 48;
constexpr int kStyleInformation = 64;

// What was pressed in a message box, as ID* in winuser.h.
enum class Button { Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7 };

// A message with more than one button.
struct UserQuestion {
  TextId number;
  int style;          // as of Message
  bool ofAComponent;  // asked of each component by itself
};
constexpr UserQuestion kQuestions[] = {
    {TextId::UnexpectedError, kStyleRetryCancel, false},
    {TextId::DataAccessVersionUnsupported, kStyleExclamation | kStyleYesNo, true},
    {TextId::ContinueWithoutRebuild, kStyleYesNo, false},
    {TextId::OtherVersionInstalled, kStyleYesNo, true}};
// Null for a message that has nothing to answer.
constexpr const UserQuestion* FindQuestion(TextId number) {
  for (const UserQuestion& question : kQuestions) {
    if (question.number == number) return &question;
  }
  return nullptr;
}

struct Message {
  TextId number{};  // of its text
  int style = 0;    // icon + buttons, the constants above
  std::string text;
  std::string detail;          // what went wrong in detail; for the log and the command line, not for the box
  std::string component = {};  // the file name of the one that a question is asked of
};

enum class Pointer { Default = 0, Hourglass = 11 };

// The person or program that the wizard speaks to: the form, the command line, a host, or a test.
class User {
 public:
  virtual ~User() = default;

  // Shows a message titled as the wizard and gives the button that was pressed.
  Button ShowMessage(const Message& message) {
    ++messages_;
    return Display(message);
  }
  // How many messages were shown. While it looks at one, the user may put a missing file in its place.
  unsigned Messages() const { return messages_; }
  // What is shown while the wizard works. A user without a display ignores it.

  // Names the present step; empty clears it.
  virtual void ShowStatus(const std::string& /*text*/) {}
  // Names the present step of the generation and moves the progress bar by one step.
  virtual void ShowProgress(const std::string& /*text*/) {}
  // Moves the progress bar by one step.
  virtual void AdvanceProgress() {}
  // How often the bar moves in all, from its begin to its end.
  virtual void ExpectSteps(int /*steps*/) {}
  virtual void SetPointer(Pointer /*pointer*/) {}

  // Lets pending events run.
  virtual void DoEvents() {}
  // Ends the wizard (throws WizardEnded) when the user has cancelled it. Called between two steps.
  virtual void CheckCancelled() {}

  // What the wizard leaves for its host: the return code (0 cancelled, -1 finished), and the setup project to
  // open.
  virtual void SetReturnCode(std::int16_t /*code*/) {}
  virtual void SetProjectFile(const std::string& /*path*/) {}
  // Marks the wizard as ended. Callers use EndWizard or CancelWizard below, which also stop what is running.
  virtual void WizardHasEnded() {}

 private:
  virtual Button Display(const Message& message) = 0;

  unsigned messages_ = 0;
};

// Ends the wizard by a fatal message; the return code stays.
[[noreturn]] void EndWizard(User& user);
// Ends the wizard as cancelled: return code 0.
[[noreturn]] void CancelWizard(User& user);

}  // namespace bxvbwiz
