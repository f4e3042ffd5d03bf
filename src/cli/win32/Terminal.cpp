#include "cli/Terminal.h"

#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>
// after windows.h
#include <shellapi.h>

#include <memory>

#include "text/win32/WideText.h"

namespace bxvbwiz {

// Not _isatty, which counts the null device as a terminal.
bool IsTerminal(Stream stream) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(stream == Stream::Input ? STD_INPUT_HANDLE : STD_ERROR_HANDLE), &mode) !=
         FALSE;
}

std::vector<std::string> ProgramArguments(int, char**) {
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> list(CommandLineToArgvW(GetCommandLineW(), &count),
                                                           &LocalFree);
  std::vector<std::string> arguments;
  for (int i = 1; list != nullptr && i < count; ++i) arguments.push_back(Narrow(list.get()[i]));
  return arguments;
}

}  // namespace bxvbwiz
