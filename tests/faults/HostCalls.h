#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

// The calls by which this program changes the disk of the computer, taken over from the C library by the
// linker (--wrap), so that one of them can fail or be the process's last.
namespace bxvbwiz {

struct HostCall {
  const char* name = "";
  std::string path;  // what is made, renamed or removed; empty for a call on an open file
};

enum class HostEnd {
  None,
  Killed,         // the process ends before the call
  KilledHalfway,  // the process ends when half of the bytes are written
  NoSpace,        // the call fails with ENOSPC
  NoPermission,   // the call fails with EACCES
  FullHalfway,    // half of the bytes are written, then the call fails with ENOSPC
};

constexpr int kKilled = 99;  // exit code of a killed process

struct HostPlan {
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::vector<HostCall> calls;
  std::size_t endAt = kNone;
  HostEnd end = HostEnd::None;
  // The contents that each file was given as a whole.
  std::map<std::string, std::set<std::string>> versions;
};

// Counts the calls by `plan` while it lives.
class HostWatch {
 public:
  explicit HostWatch(HostPlan& plan);
  ~HostWatch();
  HostWatch(const HostWatch&) = delete;
  HostWatch& operator=(const HostWatch&) = delete;
};

}  // namespace bxvbwiz
