#pragma once

#include <string>
#include <vector>

// What a console program needs from its environment. Each system has its own implementation.
namespace bxvbwiz {

enum class Stream { Input = 0, Error = 2 };

// Whether the stream is a terminal.
bool IsTerminal(Stream stream);

// The program's arguments in UTF-8, without its own name. From then on output is UTF-8, byte for byte.
std::vector<std::string> ProgramArguments(int argc, char** argv);

}  // namespace bxvbwiz
