#include "cli/Words.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <iterator>
#include <map>

#include "support/basStr.h"
#include "text/Strings.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using Words = std::vector<std::string>;

constexpr std::string_view kHelp[] = {"help", "--help", "-h", "-?", "/?"};

// Says what is wrong with a word of a command, and which of the known ones it may stand for.
[[noreturn]] void Refuse(TextId reason, const std::string& word, const std::string& command,
                         const Words& known) {
  std::string text = TokenReplace(CompiledText(reason), {word, command});
  const auto near = std::find_if(known.begin(), known.end(), [&](const std::string& other) {
    return StartsWith(other, word) || IsLike(word, other, other.size() / 3);
  });
  if (!word.empty() && near != known.end()) {
    text += " " + TokenReplace(CompiledText(TextId::DidYouMean), {*near});
  } else if (reason != TextId::UnknownOption) {
    text += " " + TokenReplace(CompiledText(TextId::ThereAre), {Joined(known)});
  }
  throw CLI::ParseError(text, CLI::ExitCodes::RequiredError);
}

Words CommandsOf(const CLI::App& app) {
  Words names;
  for (const CLI::App* below : app.get_subcommands(nullptr)) names.push_back(below->get_name());
  return names;
}

// The options of a command and of all below it, with whether they take a value.
void Collect(const CLI::App& app, std::map<std::string, bool>& options) {
  for (const CLI::Option* option : app.get_options())
    options.emplace(option->get_name(), option->get_items_expected_min() > 0);
  for (const CLI::App* below : app.get_subcommands(nullptr)) Collect(*below, options);
}

// Checks an option of a command. Gives whether the next word is its value.
bool CheckOption(const CLI::App& command, const std::string& path, const std::string& word) {
  std::map<std::string, bool> options;
  Collect(command, options);
  const std::string name = word.substr(0, word.find('='));
  const auto found = options.find(name);
  Words known;
  for (const auto& option : options) known.push_back(option.first);
  if (found == options.end()) Refuse(TextId::UnknownOption, name, path, known);
  // The parser would use the next argument as the text.
  if (name.size() + 1 == word.size()) throw CLI::ValidationError(name, CompiledText(TextId::TextIsEmpty));
  return found->second && name == word;
}

}  // namespace

bool IsLike(std::string_view left, std::string_view right, std::size_t differences) {
  while (!left.empty() && !right.empty() && left[0] == right[0]) {
    left.remove_prefix(1);
    right.remove_prefix(1);
  }
  if (left.empty() || right.empty()) return left.size() + right.size() <= differences;
  if (differences-- == 0) return false;
  return IsLike(left.substr(1), right, differences) || IsLike(left, right.substr(1), differences) ||
         IsLike(left.substr(1), right.substr(1), differences);
}

Words Arranged(const CLI::App& app, const Words& words) {
  if (!words.empty() && app.get_option_no_throw(words.front()) != nullptr) return words;
  const CLI::App* command = &app;
  std::string path = "bxvbwiz";
  Words line;
  Words early;  // options before the command
  Words rest;
  for (auto word = words.begin(); word != words.end(); ++word) {
    const bool awaitsCommand = !CommandsOf(*command).empty();
    const auto help = std::find(std::begin(kHelp), std::end(kHelp), *word);
    if (*word == "--") {
      rest.insert(rest.end(), word, words.end());
      break;
    }
    if (help != std::end(kHelp) && (help != kHelp || awaitsCommand)) {
      rest.insert(rest.begin(), "--help");
    } else if (StartsWith(*word, "-")) {
      if (awaitsCommand) early.push_back(*word);
      rest.push_back(*word);
      if (CheckOption(*command, path, *word) && word + 1 != words.end()) rest.push_back(*++word);
    } else if (awaitsCommand) {
      const auto isMeant = [&](const CLI::App* below) { return below->check_name(*word); };
      const auto found = command->get_subcommands(isMeant);
      if (found.empty()) Refuse(TextId::UnknownCommand, *word, path, CommandsOf(*command));
      command = found.front();
      line.push_back(*word);
      path += " " + *word;
    } else {
      rest.push_back(*word);
    }
  }
  const Words below = CommandsOf(*command);
  const bool asksHelp = !rest.empty() && rest.front() == "--help";
  if (!below.empty() && !asksHelp) Refuse(TextId::CommandMissing, "", path, below);
  for (const std::string& option : early) CheckOption(*command, path, option);
  line.insert(line.end(), rest.begin(), rest.end());
  return line;
}

}  // namespace bxvbwiz
