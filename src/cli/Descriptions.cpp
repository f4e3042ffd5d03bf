#include "cli/Descriptions.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <utility>
#include <vector>

#include "support/basStr.h"

namespace bxvbwiz {
namespace {

// A command with the words that lead to it ("machine new"); the program itself has none.
struct DescribedCommand {
  std::string path;
  const CLI::App* app;
};

void Collect(const CLI::App& app, const std::string& path, std::vector<DescribedCommand>& commands) {
  commands.push_back({path, &app});
  for (const CLI::App* below : app.get_subcommands(nullptr))
    Collect(*below, path + (path.empty() ? "" : " ") + below->get_name(), commands);
}

std::vector<const CLI::Option*> OptionsOf(const CLI::App& app, bool positional) {
  std::vector<const CLI::Option*> options;
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_positional() == positional) options.push_back(option);
  }
  return options;
}

std::string LongName(const CLI::Option& option) {
  return option.get_lnames().empty() ? std::string() : option.get_lnames().front();
}

// The words that may follow a command, with what they mean: commands below it, and options.
std::vector<std::pair<std::string, std::string>> WordsOf(const CLI::App& app) {
  std::vector<std::pair<std::string, std::string>> words;
  for (const CLI::App* below : app.get_subcommands(nullptr))
    words.emplace_back(below->get_name(), below->get_description());
  for (const CLI::Option* option : OptionsOf(app, false))
    words.emplace_back("--" + LongName(*option), option->get_description());
  return words;
}

std::string Quoted(const std::string& text, const std::string& quote) {
  return "'" + *ReplaceAll(text, "'", quote) + "'";
}

// A text in a manual page: a backslash, a hyphen and a line that begins with a dot or a quote mean something
// there.
std::string Roff(const std::string& text) {
  return "\\&" + *ReplaceAll(*ReplaceAll(text, "\\", "\\e"), "-", "\\-");
}

std::string ManPage(const CLI::App& app, const std::vector<DescribedCommand>& commands) {
  std::string page =
      ".TH BXVBWIZ 1\n.SH NAME\nbxvbwiz \\- makes setup projects of Visual Basic projects\n"
      ".SH DESCRIPTION\n" +
      Roff(app.get_description()) + "\n.SH COMMANDS\n";
  for (const DescribedCommand& command : commands) {
    if (command.path.empty()) continue;
    page += ".SS bxvbwiz " + Roff(command.path);
    for (const CLI::Option* option : OptionsOf(*command.app, true)) page += " " + Roff(option->get_name());
    page += "\n" + Roff(command.app->get_description()) + "\n";
    for (const bool positional : {true, false}) {
      for (const CLI::Option* option : OptionsOf(*command.app, positional)) {
        const std::string value = option->get_type_name();
        page += ".TP\n.B " + Roff(positional ? option->get_name() : "--" + LongName(*option)) +
                (positional || value.empty() ? "" : " \" \" " + Roff(value)) + "\n" +
                Roff(option->get_description()) + "\n";
      }
    }
  }
  return page + ".SH NOTES\n" + *ReplaceAll(Roff(app.get_footer()), "\n", "\n.br\n") + "\n";
}

// Completes the words of the command that stands on the line; otherwise names of files.
std::string BashCompletion(const std::vector<DescribedCommand>& commands, const char* begin) {
  std::string text = std::string(begin) +
                     "_bxvbwiz() {\n  local words path= word\n"
                     "  for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
                     "    case \"${path# } $word\" in\n";
  for (const DescribedCommand& command : commands) {
    if (command.path.empty()) continue;
    const bool isBelow = command.path.find(' ') != std::string::npos;
    text += "      " + Quoted(isBelow ? command.path : " " + command.path, "") +
            ") path=" + Quoted(command.path, "") + " ;;\n";
  }
  text += "    esac\n  done\n  case \"$path\" in\n";
  for (const DescribedCommand& command : commands) {
    text += "    " + Quoted(command.path, "") + ") words='";
    for (const auto& [word, description] : WordsOf(*command.app)) text += word + " ";
    text += "' ;;\n";
  }
  return text +
         "  esac\n  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"${COMP_WORDS[COMP_CWORD]}\")\n}\n"
         "complete -o default -F _bxvbwiz bxvbwiz\n";
}

std::string FishCompletion(const std::vector<DescribedCommand>& commands) {
  std::string text;
  for (const DescribedCommand& command : commands) {
    std::string when = "__fish_use_subcommand";
    if (!command.path.empty()) {
      when = "__fish_seen_subcommand_from " +
             *ReplaceAll(command.path, " ", "; and __fish_seen_subcommand_from ");
    }
    for (const auto& [word, description] : WordsOf(*command.app)) {
      const bool isOption = word[0] == '-';
      text += "complete -c bxvbwiz -n " + Quoted(when, "\\'") +
              (isOption ? " -l " + word.substr(2) : " -a " + word) + " -d " + Quoted(description, "\\'") +
              "\n";
    }
  }
  return text;
}

std::string PowerShellCompletion(const std::vector<DescribedCommand>& commands) {
  std::string text =
      "Register-ArgumentCompleter -Native -CommandName bxvbwiz -ScriptBlock {\n"
      "  param($word, $line, $position)\n  $known = @{\n";
  for (const DescribedCommand& command : commands) {
    text += "    " + Quoted(command.path, "''") + " = @(";
    std::string separator;
    for (const auto& [word, description] : WordsOf(*command.app)) {
      text += separator + Quoted(word, "''");
      separator = ", ";
    }
    text += ")\n";
  }
  return text +
         "  }\n  $path = ''\n"
         "  foreach ($element in $line.CommandElements | Select-Object -Skip 1) {\n"
         "    $longer = \"$path $element\".Trim()\n"
         "    if ($known.ContainsKey($longer)) { $path = $longer }\n  }\n"
         "  $known[$path] | Where-Object { $_ -like \"$word*\" } | ForEach-Object {\n"
         "    [System.Management.Automation.CompletionResult]::new($_, $_, 'ParameterValue', $_)\n  }\n}\n";
}

}  // namespace

std::string Describe(const CLI::App& app, const std::string& kind) {
  std::vector<DescribedCommand> commands;
  Collect(app, "", commands);
  if (kind == "man") return ManPage(app, commands);
  if (kind == "fish") return FishCompletion(commands);
  if (kind == "powershell") return PowerShellCompletion(commands);
  return BashCompletion(commands,
                        kind == "zsh" ? "#compdef bxvbwiz\nautoload -U bashcompinit && bashcompinit\n" : "");
}

}  // namespace bxvbwiz
