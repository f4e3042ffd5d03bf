#include "machine/CommandLine.h"

#include <algorithm>

namespace bxvbwiz {
namespace {

constexpr std::string_view kBlanks = " \t";

void AddCandidate(std::vector<ProgramCandidate>& candidates, std::string_view program,
                  std::string_view rest) {
  program = program.substr(0, program.find_last_not_of(kBlanks) + 1);
  if (program.empty()) return;
  candidates.push_back({std::string(program), rest});
  const std::string_view name = program.substr(program.find_last_of("\\/:") + 1);
  if (name.find('.') == std::string_view::npos) candidates.push_back({std::string(program) + ".exe", rest});
}

}  // namespace

std::vector<ProgramCandidate> ProgramCandidates(std::string_view commandLine) {
  std::vector<ProgramCandidate> candidates;
  commandLine.remove_prefix(std::min(commandLine.find_first_not_of(kBlanks), commandLine.size()));
  if (!commandLine.empty() && commandLine.front() == '"') {
    const std::size_t end = std::min(commandLine.find('"', 1), commandLine.size());
    const std::string_view rest = commandLine.substr(std::min(end + 1, commandLine.size()));
    AddCandidate(candidates, commandLine.substr(1, end - 1), rest);
    return candidates;
  }
  for (std::size_t end = 0; end < commandLine.size();) {
    end = std::min(commandLine.find_first_of(kBlanks, end), commandLine.size());
    AddCandidate(candidates, commandLine.substr(0, end), commandLine.substr(end));
    end = std::min(commandLine.find_first_not_of(kBlanks, end), commandLine.size());
  }
  return candidates;
}

std::vector<std::string> SplitArguments(std::string_view text) {
  std::vector<std::string> arguments;
  std::size_t position = 0;
  const auto skip = [&](std::string_view characters) {
    const std::size_t start = position;
    position = std::min(text.find_first_not_of(characters, position), text.size());
    return position - start;
  };
  skip(kBlanks);
  while (position < text.size()) {
    std::string argument;
    bool quoted = false;
    while (position < text.size()) {
      const std::size_t backslashes = skip("\\");
      if (position < text.size() && text[position] == '"') {
        argument.append(backslashes / 2, '\\');
        if (backslashes % 2 != 0) {
          argument += '"';
        } else if (quoted && text.substr(position + 1, 1) == "\"") {
          argument += text[position++];  // a doubled quote inside quotes is one quote
        } else {
          quoted = !quoted;
        }
        ++position;
        continue;
      }
      argument.append(backslashes, '\\');
      if (position == text.size()) break;
      if (!quoted && kBlanks.find(text[position]) != std::string_view::npos) break;
      argument += text[position++];
    }
    arguments.push_back(std::move(argument));
    skip(kBlanks);
  }
  return arguments;
}

}  // namespace bxvbwiz
