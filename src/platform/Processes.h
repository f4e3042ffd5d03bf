#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace bxvbwiz {

// The results of WaitForSingleObject: WAIT_OBJECT_0, WAIT_TIMEOUT, WAIT_FAILED.
enum class WaitResult : std::uint32_t { Ended = 0, TimedOut = 258, Failed = 0xFFFFFFFF };

// A started process; its handle is closed when the object goes.
class Process {
 public:
  virtual ~Process() = default;
  // Waits at most `milliseconds` for the end of the process.
  virtual WaitResult Wait(std::uint32_t milliseconds) = 0;
};

class Processes {
 public:
  virtual ~Processes() = default;
  // CreateProcessA without an application name, flags 32 (normal priority), handles inherited, the caller's
  // environment and current folder. Null when the process cannot be started. As on Windows, an unquoted path
  // with blanks is tried up to each blank in turn.
  virtual std::unique_ptr<Process> Start(const std::string& commandLine) = 0;
};

}  // namespace bxvbwiz
