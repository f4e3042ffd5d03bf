#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/User.h"

// The values of options: what they may be, and what they become.
namespace bxvbwiz {

// Options as they were given, whose values are read when all are there.
struct GivenOptions {
  std::vector<std::string> drives;
  std::vector<std::string> answers;
  bool yes = false;
  bool no = false;
};

// A question, and the component that it is about in upper case; empty for every component.
using Asked = std::pair<TextId, std::string>;
using Answers = std::map<Asked, Button>;

// "ok", "yes", ...
const char* NameOfButton(Button button);
// The buttons of a message of that style.
std::vector<Button> ButtonsOf(int style);
// "yes/no"
std::string NamesOf(const std::vector<Button>& buttons);
// "--answer 1095=yes or --answer 1095=no" for the question "1095", which may name a component after a colon.
std::string AnswersTo(const std::string& question, const std::vector<Button>& buttons);

// A text that may stand in a setup file. Gives what is wrong with it, or nothing.
std::string CheckLine(const std::string& text);
// A path, which may still be in quotes when a batch file gave it. Takes them off; gives what is wrong.
std::string TakePath(std::string& text);

// Both throw CLI::ParseError for wrong usage.
void TakeDrives(const std::vector<std::string>& texts, std::map<char, std::string>& drives);
void TakeAnswers(const std::vector<std::string>& texts, Answers& answers);

}  // namespace bxvbwiz
