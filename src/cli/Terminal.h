#pragma once

#include <string>
#include <vector>

// What a console program needs from its environment. Each system has its own implementation.
namespace bxvbwiz {

enum class Stream { Input = 0, Error = 2 };

// Whether the stream is a terminal.
bool IsTerminal(Stream stream);

// The program's arguments in UTF-8, without its own name. From then on output is UTF-8, byte for byte, and
// what goes to a terminal is shown in it.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// A variable of the environment in UTF-8; empty when it is not set.
std::string EnvironmentText(const char* name);

// The files that an argument names, where the shell leaves patterns to the program; otherwise the argument.
std::vector<std::string> FilesOf(const std::string& argument);

// Clears the terminal's line on which standard error stands, and goes to its beginning.
void ClearLine();
// Whether the terminal can do that, and does not only add lines.
bool CanClearLine();

// From now on the first Ctrl-C is only noted; the second one ends the program.
void NoteInterrupts();
bool WasInterrupted();

}  // namespace bxvbwiz
