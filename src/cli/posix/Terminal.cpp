#include "cli/Terminal.h"

#include <unistd.h>

namespace bxvbwiz {

bool IsTerminal(Stream stream) {
  return isatty(static_cast<int>(stream)) != 0;
}

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

}  // namespace bxvbwiz
