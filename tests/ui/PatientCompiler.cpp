// Stands for the Visual Basic compiler on a machine folder: waits for the file "go" there, then writes the
// program and a log that says so.
#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <string>

int main() {
  const std::string machine = std::getenv("BXVBWIZ_MACHINE");
  for (int look = 0; look < 6000 && !std::ifstream(machine + "/go"); ++look) Sleep(10);
  std::ofstream(machine + "/drive_c/Src/App.exe") << "MZ";
  std::ofstream(machine + "/drive_c/windows/_BxVbErr.txt")
      << "Build of 'App.exe'\nBuild of 'App.exe' succeeded.\n";
}
