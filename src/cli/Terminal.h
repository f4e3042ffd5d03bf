#pragma once

#include <string>
#include <vector>

// What a console program asks of its surroundings. One implementation a system.
namespace bxvbwiz {

enum class Stream { Input = 0, Error = 2 };

// Whether a person sits at that end.
bool IsTerminal(Stream stream);

// The program's arguments in UTF-8, without its own name. From then on what is printed is UTF-8, byte for
// byte.
std::vector<std::string> ProgramArguments(int argc, char** argv);

}  // namespace bxvbwiz
