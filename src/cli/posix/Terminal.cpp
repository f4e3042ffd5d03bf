#include "cli/Terminal.h"

#include <csignal>
#include <cstdlib>
#include <iostream>

#include <unistd.h>

namespace bxvbwiz {
namespace {

volatile std::sig_atomic_t wasInterrupted = 0;

}  // namespace

bool IsTerminal(Stream stream) {
  return isatty(static_cast<int>(stream)) != 0;
}

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::string EnvironmentText(const char* name) {
  const char* const text = std::getenv(name);
  return text == nullptr ? std::string() : text;
}

std::vector<std::string> FilesOf(const std::string& argument) {
  return {argument};
}

void ClearLine() {
  std::cerr << "\r\x1b[K" << std::flush;
}

bool CanClearLine() {
  const std::string kind = EnvironmentText("TERM");
  return !kind.empty() && kind != "dumb";
}

void NoteInterrupts() {
  struct sigaction action = {};
  action.sa_handler = [](int) { wasInterrupted = 1; };
  action.sa_flags =
      static_cast<int>(SA_RESETHAND);  // without SA_RESTART: a question's answer is no longer awaited
  sigaction(SIGINT, &action, nullptr);
}

bool WasInterrupted() {
  return wasInterrupted != 0;
}

}  // namespace bxvbwiz
