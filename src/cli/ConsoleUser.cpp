#include "cli/ConsoleUser.h"

#include <iostream>

#include "cli/OptionValues.h"
#include "cli/Terminal.h"
#include "support/basLogging.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// How often a question is answered with Retry before it counts as unanswered: nothing will change by itself.
constexpr int kMostRetries = 3;

std::string Readable(const Message& message) {
  std::string text = *ReplaceAll(message.text, "\r\n", "\n");
  if (!message.detail.empty()) text += " (" + message.detail + ")";
  return text;
}

}  // namespace

ConsoleUser::ConsoleUser(basGlobal& global, const Options& options, Outcome& outcome)
    : global_(global),
      options_(options),
      outcome_(outcome),
      showsBar_(!options.quiet && !options.json && IsTerminal(Stream::Error)) {
  NoteInterrupts();
  global_.ResetProgress(static_cast<std::int16_t>(steps_));
}

Button ConsoleUser::Display(const Message& message) {
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
  for (const std::string& component : {UpperCase(message.component), std::string()}) {
    const auto given = options_.answers.find({message.number, component});
    if (given == options_.answers.end()) continue;
    const bool tooOften = given->second == Button::Retry && ++retries_[message.text] > kMostRetries;
    if (!tooOften) return given->second;
  }
  if (options_.yesNo.has_value() && buttons.front() == Button::Yes) return *options_.yesNo;
  if (AskOnTerminal(message, answer)) return answer;
  CheckCancelled();
  const std::string number = std::to_string(NumberOf(message.number));
  const TextId text = message.component.empty() ? TextId::AnswerNeeded : TextId::AnswerNeededOfComponent;
  const std::string ofOne = AnswersTo(number + ":" + message.component, buttons);
  std::cerr << "bxvbwiz: " << TokenReplace(CompiledText(text), {AnswersTo(number, buttons), ofOne}) << '\n';
  outcome_.messages.push_back({message, Button::Cancel});
  CancelWizard(*this);
}

bool ConsoleUser::AskOnTerminal(const Message& message, Button& answer) {
  if (!IsTerminal(Stream::Input)) return false;
  const std::vector<Button> buttons = ButtonsOf(message.style);
  for (;;) {
    std::cerr << NumberOf(message.number) << " [" << NamesOf(buttons) << "] " << std::flush;
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

// Draws the step's name and a bar, when something changed; or writes the name on a line of its own.
void ConsoleUser::DrawBar() {
  if (!showsBar_) return;
  constexpr int kWidth = 30;
  const std::string& step = status_.empty() ? step_ : status_;
  if (step.empty()) return;
  std::string bar;
  if (progress_ > 0 && CanClearLine()) {
    const int filled = kWidth * progress_ / steps_;
    bar = " [" + std::string(static_cast<std::size_t>(filled), '#') +
          std::string(static_cast<std::size_t>(kWidth - filled), '.') + "]";
  }
  if (step + bar == lastBar_) return;
  lastBar_ = step + bar;
  if (!CanClearLine()) {
    std::cerr << step << '\n';
    return;
  }
  barShown_ = true;
  ClearLine();
  std::cerr << lastBar_ << std::flush;
}

void ConsoleUser::ClearBar() {
  if (!barShown_) return;
  ClearLine();
  barShown_ = false;
  lastBar_.clear();
}

}  // namespace bxvbwiz
