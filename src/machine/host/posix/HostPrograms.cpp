#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>

#include "machine/host/Host.h"

extern char** environ;  // not every system has a header that declares it

namespace bxvbwiz::host {
namespace {

class PosixProgram : public Program {
 public:
  explicit PosixProgram(pid_t process) : process_(process) {}
  // Collects its exit status if it has ended; otherwise it goes on as a child of init.
  ~PosixProgram() override { HasEnded(); }

  bool Wait(std::uint32_t milliseconds) override {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
    std::chrono::microseconds pause(100);
    while (!HasEnded()) {
      const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - Clock::now());
      if (left.count() <= 0) return false;
      std::this_thread::sleep_for(std::min(pause, left));
      pause = std::min(pause * 2, std::chrono::microseconds(10'000));
    }
    return true;
  }

 private:
  bool HasEnded() {
    if (ended_) return true;
    pid_t result = 0;
    do {
      result = waitpid(process_, nullptr, WNOHANG);
    } while (result < 0 && errno == EINTR);
    ended_ = result != 0;  // an error means that there is no such child
    return ended_;
  }

  pid_t process_;
  bool ended_ = false;
};

// What a new process does with its files before it starts.
class FileActions {
 public:
  FileActions() { valid_ = posix_spawn_file_actions_init(&actions_) == 0; }
  ~FileActions() {
    if (valid_) posix_spawn_file_actions_destroy(&actions_);
  }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;

  bool Prepare(const std::string& folder) {
    return valid_ &&
           posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0) == 0 &&
           posix_spawn_file_actions_adddup2(&actions_, STDERR_FILENO, STDOUT_FILENO) == 0 &&
           posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()) == 0;
  }
  const posix_spawn_file_actions_t* Get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_ = {};
  bool valid_ = false;
};

std::vector<std::string> EnvironmentWith(const std::string& variable) {
  const std::string_view name = std::string_view(variable).substr(0, variable.find('=') + 1);
  std::vector<std::string> variables;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    if (std::string_view(*entry).substr(0, name.size()) != name) variables.emplace_back(*entry);
  }
  variables.push_back(variable);
  return variables;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

std::unique_ptr<Program> Start(const ProgramStart& start) {
  std::vector<std::string> arguments = {start.program};
  arguments.insert(arguments.end(), start.arguments.begin(), start.arguments.end());
  std::vector<std::string> variables = EnvironmentWith(start.variable);
  FileActions actions;
  if (!actions.Prepare(start.folder)) return nullptr;
  pid_t process = 0;
  const int error = posix_spawn(&process, start.program.c_str(), actions.Get(), nullptr,
                                Pointers(arguments).data(), Pointers(variables).data());
  if (error != 0) return nullptr;
  return std::make_unique<PosixProgram>(process);
}

}  // namespace bxvbwiz::host
