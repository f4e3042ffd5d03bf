#pragma once

#include <deque>
#include <string>
#include <vector>

#include "support/basStr.h"
#include "support/User.h"
#include "text/Strings.h"

namespace bxvbwiz {

// Answers messages with the buttons given to it, `otherwise` when they are used up, and records what it sees.
class RecordingUser : public User {
 public:
  std::deque<Button> answers;
  Button otherwise = Button::Cancel;
  std::vector<std::string> messages;
  std::string numbers;  // of the messages' texts, a blank after each
  std::vector<Pointer> pointers;
  int advances = 0;
  int events = 0;
  int returnCode = -1;
  bool ended = false;

  Button Display(const Message& message) override {
    messages.push_back(message.text);
    numbers += std::to_string(NumberOf(message.number)) + " ";
    if (answers.empty()) return otherwise;
    const Button answer = answers.front();
    answers.pop_front();
    return answer;
  }
  void ShowStatus(const std::string&) override {}
  void AdvanceProgress() override { ++advances; }
  void SetPointer(Pointer pointer) override { pointers.push_back(pointer); }
  void DoEvents() override { ++events; }
  void SetReturnCode(std::int16_t code) override { returnCode = code; }
  void WizardHasEnded() override { ended = true; }
};

// The message about an unexpected error.
inline std::string ErrorMessage(const std::string& error) {
  return TokenReplace(CompiledText(TextId::UnexpectedError), {error});
}

}  // namespace bxvbwiz
