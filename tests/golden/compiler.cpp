// The compiler of the golden cases. It does what vb6.txt beside it says, one action per line:
//   program PATH     writes the compiled program
//   arguments PATH   writes the arguments, one a line
//   log TEXT         adds a line to the build log
//   wait PATH        waits until that file is there
// Paths are those in a machine folder ("drive_c/Src/x.exe"); without $BXVBWIZ_MACHINE they are on this
// computer.
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

namespace {

std::fstream Open(const std::string& path, std::ios::openmode mode) {
  const char* const machine = std::getenv("BXVBWIZ_MACHINE");
  const std::string place = machine != nullptr ? machine + ("/" + path) : path[6] + (":" + path.substr(7));
  return std::fstream(place, std::ios::binary | mode);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string program = argv[0];
  std::ifstream lines(program.substr(0, program.find_last_of("/\\") + 1) + "vb6.txt");
  for (std::string word, rest; lines >> word && std::getline(lines >> std::ws, rest);) {
    if (word == "program") {
      Open(rest, std::ios::out) << "program\n";
    } else if (word == "arguments") {
      std::fstream out = Open(rest, std::ios::out);
      for (int i = 1; i < argc; ++i) out << argv[i] << '\n';
    } else if (word == "log") {
      Open("drive_c/windows/_BxVbErr.txt", std::ios::out | std::ios::app) << rest << "\r\n";
    } else if (word == "wait") {
      while (!Open(rest, std::ios::in)) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }
  return 0;
}
