#include "cli/ConsoleUser.h"

#include <iostream>

#include "cli/Terminal.h"
#include "support/basLogging.h"
#include "support/basStr.h"

namespace bxvbwiz {
namespace {

// Buttons of a message box sit in the low four bits of its style.
constexpr int kButtonsOfStyle = 15;

// How often a question is answered with Retry before it counts as unanswered: nothing will change by itself.
constexpr int kMostRetries = 3;

struct ButtonName {
  Button button;
  const char* name;
};

constexpr ButtonName kButtonNames[] = {{Button::Ok, "ok"},
                                       {Button::Cancel, "cancel"},
                                       {Button::Retry, "retry"},
                                       {Button::Yes, "yes"},
                                       {Button::No, "no"}};

std::vector<Button> ButtonsOf(int style) {
  switch (style & kButtonsOfStyle) {
    case kStyleYesNo:
      return {Button::Yes, Button::No};
    case kStyleRetryCancel:
      return {Button::Retry, Button::Cancel};
    default:
      return {Button::Ok};
  }
}

std::string NamesOf(const std::vector<Button>& buttons) {
  std::string names;
  for (const Button button : buttons) names += (names.empty() ? "" : "/") + std::string(NameOfButton(button));
  return names;
}

// The options that would answer the message: "--answer 1095=yes or --answer 1095=no".
std::string AnswersOf(const Message& message, const std::vector<Button>& buttons) {
  const std::string option = "--answer " + std::to_string(NumberOf(message.number)) + "=";
  std::string answers;
  for (const Button button : buttons)
    answers += (answers.empty() ? "" : " or ") + option + NameOfButton(button);
  return answers;
}

std::string Readable(const Message& message) {
  std::string text = *ReplaceAll(message.text, "\r\n", "\n");
  if (!message.detail.empty()) text += " (" + message.detail + ")";
  return text;
}

}  // namespace

const char* NameOfButton(Button button) {
  for (const ButtonName& row : kButtonNames) {
    if (row.button == button) return row.name;
  }
  return "";
}

ConsoleUser::ConsoleUser(basGlobal& global, const Options& options, Outcome& outcome)
    : global_(global),
      options_(options),
      outcome_(outcome),
      showsBar_(!options.quiet && !options.json && IsTerminal(Stream::Error)) {
  NoteInterrupts();
  global_.ResetProgress(static_cast<std::int16_t>(steps_));
}

Button ConsoleUser::ShowMessage(const Message& message) {
  if (!message.detail.empty()) WriteLog(message.text + " (" + message.detail + ")");
  ClearBar();
  std::cerr << Readable(message) << '\n';
  const Button answer = Answer(message);
  outcome_.messages.push_back({message, answer});
  return answer;
}

Button ConsoleUser::Answer(const Message& message) {
  const std::vector<Button> buttons = ButtonsOf(message.style);
  if (buttons.size() == 1) return buttons.front();
  Button answer = Button::Cancel;
  const auto given = options_.answers.find(message.number);
  if (given != options_.answers.end()) {
    for (const Button button : buttons) {
      const bool tooOften = button == Button::Retry && ++retries_[message.text] > kMostRetries;
      if (button == given->second && !tooOften) return button;
    }
  }
  if (options_.yesNo.has_value() && buttons.front() == Button::Yes) return *options_.yesNo;
  if (AskOnTerminal(message, answer)) return answer;
  CheckCancelled();
  std::cerr << "bxvbwiz: this question needs an answer: " << AnswersOf(message, buttons) << '\n';
  outcome_.messages.push_back({message, Button::Cancel});
  CancelWizard(*this);
}

bool ConsoleUser::AskOnTerminal(const Message& message, Button& answer) {
  if (!IsTerminal(Stream::Input)) return false;
  const std::vector<Button> buttons = ButtonsOf(message.style);
  for (;;) {
    std::cerr << "[" << NamesOf(buttons) << "] " << std::flush;
    std::string line;
    if (!std::getline(std::cin, line) || WasInterrupted()) return false;
    for (const Button button : buttons) {
      const std::string name = NameOfButton(button);
      if (EqualsIgnoreCase(line, name) || EqualsIgnoreCase(line, name.substr(0, 1))) {
        answer = button;
        return true;
      }
    }
  }
}

void ConsoleUser::ShowStatus(const std::string& text) {
  status_ = text;
  DrawBar();
}

void ConsoleUser::ShowProgress(const std::string& text) {
  step_ = text;
  AdvanceProgress();
}

void ConsoleUser::AdvanceProgress() {
  CheckCancelled();
  progress_ = global_.NextProgressValue();
  DrawBar();
}

void ConsoleUser::ExpectSteps(int steps) {
  steps_ = steps;
  global_.SetProgressLimit(static_cast<std::int16_t>(steps));
}

void ConsoleUser::CheckCancelled() {
  if (!WasInterrupted()) return;
  ClearBar();
  std::cerr << "bxvbwiz: interrupted\n";
  CancelWizard(*this);
}

// Draws the step's name and a bar, when something changed.
void ConsoleUser::DrawBar() {
  if (!showsBar_) return;
  constexpr int kWidth = 30;
  const std::string& step = status_.empty() ? step_ : status_;
  if (step.empty()) return;
  std::string bar;
  if (progress_ > 0) {
    const int filled = kWidth * progress_ / steps_;
    bar = " [" + std::string(static_cast<std::size_t>(filled), '#') +
          std::string(static_cast<std::size_t>(kWidth - filled), '.') + "]";
  }
  if (step + bar == lastBar_) return;
  lastBar_ = step + bar;
  barShown_ = true;
  ClearLine();
  std::cerr << lastBar_ << std::flush;
}

void ConsoleUser::ClearBar() {
  if (barShown_) ClearLine();
  barShown_ = false;
  lastBar_.clear();
}

}  // namespace bxvbwiz
