#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bxvbwiz {

// One way to read a command line: a program and the text after it.
struct ProgramCandidate {
  std::string program;
  std::string_view rest;  // a part of the command line
};

// The programs that CreateProcess tries, in its order: the text in quotes, or else the text up to each blank
// in turn; each as it stands, and with ".exe" when its name has no extension.
std::vector<ProgramCandidate> ProgramCandidates(std::string_view commandLine);

// The arguments as the C run-time library of Windows splits them: at blanks outside quotes. \" is a quote;
// backslashes stand for themselves unless a quote follows them.
std::vector<std::string> SplitArguments(std::string_view text);

}  // namespace bxvbwiz
