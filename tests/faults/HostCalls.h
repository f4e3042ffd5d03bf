#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// The calls by which this program changes the disk of the computer, taken over from the C library by the
// linker (--wrap), so that one of them can fail or be the process's last.
namespace bxvbwiz {

constexpr std::string_view kWrite = "write";
constexpr std::string_view kAppend = "append";  // a write to the end of a file that is there

struct HostCall {
  std::string_view name;
  std::string path;  // what is made, renamed or removed; empty for a call on an open file
};

enum class HostEnd {
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
  HostEnd end = HostEnd::Killed;
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
