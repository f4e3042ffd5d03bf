#include "cli/OptionValues.h"

#include <algorithm>
#include <CLI/CLI.hpp>

#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

struct ButtonName {
  Button button;
  const char* name;
};

constexpr ButtonName kButtonNames[] = {{Button::Ok, "ok"},
                                       {Button::Cancel, "cancel"},
                                       {Button::Retry, "retry"},
                                       {Button::Yes, "yes"},
                                       {Button::No, "no"}};

[[noreturn]] void Refuse(const char* option, TextId reason, const std::vector<std::string>& values) {
  throw CLI::ValidationError(option, TokenReplace(CompiledText(reason), values));
}

std::string QuestionNumbers() {
  std::vector<std::string> numbers;
  for (const UserQuestion& question : kQuestions)
    numbers.push_back(std::to_string(NumberOf(question.number)));
  return Joined(numbers);
}

// "1095=yes", or "1095:Grid.ocx=yes" for one component.
void TakeAnswer(const std::string& text, Answers& answers) {
  const std::size_t equals = text.rfind('=');
  const std::string asked = text.substr(0, equals);
  const std::size_t colon = asked.find(':');
  const std::string number = asked.substr(0, colon);
  if (equals == std::string::npos || colon == asked.size() - 1)
    Refuse("--answer", TextId::NotAnAnswer, {text});
  for (const UserQuestion& question : kQuestions) {
    if (number != std::to_string(NumberOf(question.number))) continue;
    const bool isOfAll = colon == std::string::npos;
    if (!isOfAll && !question.ofAComponent) Refuse("--answer", TextId::QuestionOfNoComponent, {number});
    const std::vector<Button> buttons = ButtonsOf(question.style);
    for (const Button button : buttons) {
      if (!EqualsIgnoreCase(text.substr(equals + 1), NameOfButton(button))) continue;
      const Asked key{question.number, isOfAll ? "" : UpperCase(asked.substr(colon + 1))};
      if (!answers.emplace(key, button).second) Refuse("--answer", TextId::AnsweredTwice, {text});
      return;
    }
    Refuse("--answer", TextId::NotAButton, {number, text.substr(equals + 1), NamesOf(buttons)});
  }
  Refuse("--answer", TextId::NotAQuestion, {number, QuestionNumbers()});
}

}  // namespace

const char* NameOfButton(Button button) {
  for (const ButtonName& row : kButtonNames) {
    if (row.button == button) return row.name;
  }
  return "";
}

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

std::string AnswersTo(const std::string& question, const std::vector<Button>& buttons) {
  std::string answers;
  const std::string quote = question.find(' ') == std::string::npos ? "" : "\"";
  for (const Button button : buttons) {
    answers += (answers.empty() ? "--answer " : " or --answer ") + quote;
    answers.append(question).append("=").append(NameOfButton(button)).append(quote);
  }
  return answers;
}

// A box of the form holds one line. A line break would begin another line in a setup file.
std::string CheckLine(const std::string& text) {
  const bool isLine = std::none_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
  });
  if (!isLine) return CompiledText(TextId::HasControlCharacter);
  return text.empty() ? CompiledText(TextId::TextIsEmpty) : "";
}

std::string TakePath(std::string& text) {
  if (StartsWith(text, "\"")) text = StripQuotes(text);
  return text.empty() ? CompiledText(TextId::TextIsEmpty) : "";
}

void TakeDrives(const std::vector<std::string>& texts, std::map<char, std::string>& drives) {
  for (const std::string& text : texts) {
    const char letter = UpperCase(text).substr(0, 1).c_str()[0];
    if (letter < 'A' || letter > 'Z' || text.substr(1, 1) != "=" || text.size() < 3)
      Refuse("--drive", TextId::NotADrive, {text});
    if (!drives.emplace(letter, text.substr(2)).second)
      Refuse("--drive", TextId::DriveGivenTwice, {UpperCase(text.substr(0, 1))});
  }
}

void TakeAnswers(const std::vector<std::string>& texts, Answers& answers) {
  for (const std::string& text : texts) TakeAnswer(text, answers);
}

}  // namespace bxvbwiz
