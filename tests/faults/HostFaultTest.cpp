#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <initializer_list>
#include <iostream>

#include "faults/FaultCase.h"
#include "text/Text.h"

// The same below the machine folder: every call that changes the disk of this computer fails
// once, or is the last thing that the process does. The linker takes these calls over from the C library
// (--wrap).
namespace bxvbwiz {
namespace {

struct HostCall {
  std::string_view name;
  std::string path;  // what is made, renamed or removed; empty for a call on an open file
};

// How it ends: it fails with `error`, or the process ends when that is 0; halfway, half of the bytes are
// written before.
struct HostEnd {
  int error;
  bool isHalfway;
};

constexpr int kKilled = 99;  // exit code of a killed process

struct HostPlan {
  std::size_t endAt = static_cast<std::size_t>(-1);
  HostEnd end{};
  std::vector<HostCall> calls{};
  // The contents that each file was given as a whole.
  std::map<std::string, std::set<std::string>> versions{};
};

HostPlan* watched = nullptr;

bool IsNow() {
  return watched != nullptr && watched->calls.size() - 1 == watched->endAt;
}

// Always true: the call has failed.
bool End() {
  if (watched->end.error == 0) _exit(kKilled);
  errno = watched->end.error;
  return true;
}

// Counts a call. True when it is to fail as a whole, with errno.
bool Fails(std::string_view name, const std::string& path) {
  if (watched != nullptr) watched->calls.push_back({name, path});
  return IsNow() && !watched->end.isHalfway && End();
}

// The same for a call that gives a file its content as a whole.
bool Fails(std::string_view name, const std::string& from, const std::string& to) {
  if (Fails(name, to)) return true;
  if (watched != nullptr) watched->versions[to].insert(ReadBytes(from));
  return false;
}

std::string PathOf(int file) {
  return "/proc/self/fd/" + std::to_string(file);
}

std::string PathIn(int folder, const char* name) {
  return std::filesystem::read_symlink(PathOf(folder)).string() + "/" + name;
}

// A call `name` of the library, which the linker names __real_<name>, and ours, which it calls instead.
#define WATCHED(result, name, parameters)                    \
  result Real_##name parameters __asm__("__real_" #name);    \
  result Watched_##name parameters __asm__("__wrap_" #name); \
  result Watched_##name parameters
// One that can fail as a whole only; the path comes last.
#define FAILING(name, parameters, arguments, ...)                  \
  WATCHED(int, name, parameters) {                                 \
    return Fails(#name, __VA_ARGS__) ? -1 : Real_##name arguments; \
  }

extern "C" {

WATCHED(ssize_t, write, (int file, const void* bytes, size_t size)) {
  const bool isAppend = (fcntl(file, F_GETFL) & O_APPEND) != 0;  // to the end of a file that is there
  if (Fails(isAppend ? "append" : "write", "")) return -1;
  if (!IsNow()) return Real_write(file, bytes, size);
  static_cast<void>(Real_write(file, bytes, size / 2));
  End();
  return -1;
}
FAILING(rename, (const char* from, const char* to), (from, to), from, to)
FAILING(renameat2, (int fromFolder, const char* from, int toFolder, const char* to, unsigned flags),
        (fromFolder, from, toFolder, to, flags), from, to)
FAILING(linkat, (int fromFolder, const char* from, int toFolder, const char* to, int flags),
        (fromFolder, from, toFolder, to, flags), *from == '\0' ? PathOf(fromFolder) : from,
        PathIn(toFolder, to))
FAILING(mkdir, (const char* path, mode_t mode), (path, mode), path)
FAILING(unlink, (const char* path), (path), path)
FAILING(chmod, (const char* path, mode_t mode), (path, mode), path)
FAILING(fchmod, (int file, mode_t mode), (file, mode), "")
FAILING(futimens, (int file, const timespec* times), (file, times), "")
// The computer stays on, so there is no need to wait for the disk.
WATCHED(int, fsync, (int /*file*/)) {
  return Fails("fsync", "") ? -1 : 0;
}

}  // extern "C"

class HostFault : public FaultCase {
 public:
  HostFault() { RunWatched(host_); }

  // A run of what was laid out; what the machine folder does by itself is part of it.
  RunResult RunWatched(HostPlan& host) {
    Restore();
    FaultPlan plan;
    plan.together = true;
    watched = &host;
    RunResult result = Run(plan);
    watched = nullptr;
    return result;
  }

  // What is wrong after the run in which this call fails; empty when nothing is.
  std::string FaultViolation(std::size_t call, HostEnd end) {
    HostPlan host{call, end};
    const RunResult broken = RunWatched(host);
    // A call on an open file writes a temporary one, whose name says nothing.
    const std::string& path = host_.calls[call].path;
    return Violation(IsTemporary(path) ? "" : path.substr(path.rfind('/') + 1), broken);
  }

  // What is wrong after the process was killed at this call.
  std::string KillViolation(std::size_t call, HostEnd end) {
    const pid_t child = fork();
    if (child == 0) {
      HostPlan host{call, end};
      RunWatched(host);
      _exit(0);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) return "no process\n";
    if (!WIFEXITED(status) || WEXITSTATUS(status) != kKilled) return "the process was not killed\n";
    const Snapshot left = Files();
    std::string wrong = Damage(before_, left);
    if (!StartsWith(LogText(), kOldText)) wrong += "the log has lost what it held\n";
    for (const auto& [path, bytes] : left) {
      if (path.back() == '/' || IsByTheWay(path) || IsTemporary(path)) continue;
      if (!IsComplete(path, bytes)) wrong += path + " is neither the old file nor a new one\n";
    }
    return left == before_ ? wrong : wrong + NotRepeatable(left);
  }

  // The old file, a new one, or one with a part of what is added to it.
  bool IsComplete(const std::string& path, const std::string& bytes) {
    std::set<std::string> known = host_.versions[Folder() + "/" + path];
    if (const auto old = before_.find(path); old != before_.end()) known.insert(old->second);
    const auto last = plain_.files.find(path);
    if (last == plain_.files.end()) return known.count(bytes) != 0;
    const bool isPart = StartsWith(last->second, bytes);
    return bytes == last->second || std::any_of(known.begin(), known.end(), [&](const std::string& whole) {
             return bytes == whole || (isPart && StartsWith(bytes, whole));
           });
  }

  // Tries calls, all or those of one name, in each of these ways.
  void TryCalls(std::string_view name, std::initializer_list<HostEnd> ends,
                std::string (HostFault::*violation)(std::size_t, HostEnd)) {
    std::vector<std::size_t> calls;
    for (std::size_t call = 0; call < host_.calls.size(); ++call) {
      if (name.empty() || host_.calls[call].name == name) calls.push_back(call);
    }
    std::size_t runs = 0;
    for (const std::size_t position : Sample(calls.size())) {
      const HostCall& call = host_.calls[calls[position]];
      for (const HostEnd end : ends) {
        if (end.isHalfway && call.name != "write" && call.name != "append") continue;
        ++runs;
        EXPECT_EQ((this->*violation)(calls[position], end), "")
            << "call " << calls[position] << ", " << call.name << " " << call.path << ", ends with "
            << end.error << (end.isHalfway ? " halfway" : "");
      }
    }
    EXPECT_NE(runs, 0U);
    std::cout << calls.size() << " host calls, " << runs << " runs\n";
  }

  HostPlan host_;  // of a run that nothing happens to
};

TEST_P(HostFault, IsReportedOrChangesNothing) {
  TryCalls({}, {{ENOSPC, false}, {EACCES, false}, {ENOSPC, true}}, &HostFault::FaultViolation);
}

TEST_P(HostFault, AKilledProcessLeavesWholeFiles) {
  TryCalls({}, {{0, false}, {0, true}}, &HostFault::KillViolation);
  TryCalls("append", {{0, true}}, &HostFault::KillViolation);  // of which a sample has few
}

INSTANTIATE_TEST_SUITE_P(Golden, HostFault, ::testing::ValuesIn(kFaultCases));

}  // namespace
}  // namespace bxvbwiz
