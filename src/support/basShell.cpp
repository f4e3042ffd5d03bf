#include "support/basShell.h"

#include "support/basLogging.h"

namespace bxvbwiz {

bool ShellAndWait(Processes& processes, User& user, const std::string& commandLine) {
  const CallStackEntry entry("ShellAndWait");
  constexpr std::uint32_t kMilliseconds = 5000;
  const std::unique_ptr<Process> process = processes.Start(commandLine);
  while (process && process->Wait(kMilliseconds) == WaitResult::TimedOut) user.DoEvents();
  return process != nullptr;
}

}  // namespace bxvbwiz
