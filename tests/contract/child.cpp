// The program that the tests of processes start: notes its arguments in child.log of its current folder. With
// the argument "wait" it first waits until that folder has a file "stop".
#include <chrono>
#include <fstream>
#include <string>
#include <thread>

int main(int argc, char** argv) {
  if (argc > 1 && std::string(argv[1]) == "wait") {
    while (!std::ifstream("stop")) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  std::ofstream log("child.log", std::ios::binary);
  for (int i = 1; i < argc; ++i) log << '[' << argv[i] << ']';
  return 0;
}
