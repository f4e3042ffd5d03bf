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

// The same one floor deeper, on the machine folder: every call that changes the disk of this computer fails
// once, or is the last thing that the process does. The linker takes these calls over from the C library
// (--wrap).
namespace bxvbwiz {
namespace {

struct HostCall {
  std::string_view name;
  std::string path;  // what is made, renamed or removed; empty for a call on an open file
};

constexpr std::string_view kWrite = "write";
constexpr std::string_view kAppend = "append";  // a write to the end of a file that is there

enum class HostEnd {
  Killed,         // the process ends before the call
  KilledHalfway,  // the process ends when half of the bytes are written
  NoSpace,        // the call fails with ENOSPC
  NoPermission,   // the call fails with EACCES
  FullHalfway,    // half of the bytes are written, then the call fails with ENOSPC
};

constexpr int kKilled = 99;  // exit code of a killed process

struct HostPlan {
  std::size_t endAt = static_cast<std::size_t>(-1);
  HostEnd end = HostEnd::Killed;
  std::vector<HostCall> calls{};
  // The contents that each file was given as a whole.
  std::map<std::string, std::set<std::string>> versions{};
};

HostPlan* watched = nullptr;

bool IsNow() {
  return watched != nullptr && watched->calls.size() - 1 == watched->endAt;
}

// Counts a call and ends the process when that is planned. True when the call is to fail as a whole, with
// errno.
bool Fails(std::string_view name, const char* path) {
  if (watched == nullptr) return false;
  watched->calls.push_back({name, path});
  if (!IsNow()) return false;
  if (watched->end == HostEnd::Killed) _exit(kKilled);
  errno = watched->end == HostEnd::NoPermission ? EACCES : ENOSPC;
  return watched->end == HostEnd::NoPermission || watched->end == HostEnd::NoSpace;
}

// The same for a call that gives a file its content as a whole.
bool Fails(std::string_view name, const char* from, const std::string& to) {
  if (Fails(name, to.c_str())) return true;
  if (watched != nullptr) watched->versions[to].insert(ReadBytes(from));
  return false;
}

// A call `name` of the library, which the linker names __real_<name>, and ours, which it calls instead.
#define WATCHED(result, name, ...)                             \
  result Real_##name(__VA_ARGS__) __asm__("__real_" #name);    \
  result Watched_##name(__VA_ARGS__) __asm__("__wrap_" #name); \
  result Watched_##name(__VA_ARGS__)

extern "C" {

WATCHED(ssize_t, write, int file, const void* bytes, size_t size) {
  if (Fails((fcntl(file, F_GETFL) & O_APPEND) != 0 ? kAppend : kWrite, "")) return -1;
  if (!IsNow()) return Real_write(file, bytes, size);
  static_cast<void>(Real_write(file, bytes, size / 2));
  if (watched->end == HostEnd::KilledHalfway) _exit(kKilled);
  errno = ENOSPC;
  return -1;
}
WATCHED(int, rename, const char* from, const char* to) {
  return Fails("rename", from, to) ? -1 : Real_rename(from, to);
}
WATCHED(int, renameat2, int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
  return Fails("renameat2", from, to) ? -1 : Real_renameat2(fromFolder, from, toFolder, to, flags);
}
WATCHED(int, linkat, int fromFolder, const char* from, int toFolder, const char* to, int flags) {
  const std::string folder = "/proc/self/fd/" + std::to_string(toFolder);
  const std::string path = std::filesystem::read_symlink(folder).string() + "/" + to;
  return Fails("linkat", from, path) ? -1 : Real_linkat(fromFolder, from, toFolder, to, flags);
}
WATCHED(int, mkdir, const char* path, mode_t mode) {
  return Fails("mkdir", path) ? -1 : Real_mkdir(path, mode);
}
WATCHED(int, unlink, const char* path) {
  return Fails("unlink", path) ? -1 : Real_unlink(path);
}
WATCHED(int, chmod, const char* path, mode_t mode) {
  return Fails("chmod", path) ? -1 : Real_chmod(path, mode);
}
WATCHED(int, fchmod, int file, mode_t mode) {
  return Fails("fchmod", "") ? -1 : Real_fchmod(file, mode);
}
WATCHED(int, futimens, int file, const timespec* times) {
  return Fails("futimens", "") ? -1 : Real_futimens(file, times);
}
// Nobody pulls the plug here, so that the disk need not be waited for.
WATCHED(int, fsync, int) {
  return Fails("fsync", "") ? -1 : 0;
}

}  // extern "C"

class HostFault : public FaultCase {
 protected:
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
  template <class Violation>
  void TryCalls(std::string_view name, std::initializer_list<HostEnd> ends, Violation violation) {
    std::vector<std::size_t> calls;
    for (std::size_t call = 0; call < host_.calls.size(); ++call) {
      if (name.empty() || host_.calls[call].name == name) calls.push_back(call);
    }
    std::size_t runs = 0;
    for (const std::size_t position : Sample(calls.size())) {
      const HostCall& call = host_.calls[calls[position]];
      for (const HostEnd end : ends) {
        const bool isHalfway = end == HostEnd::KilledHalfway || end == HostEnd::FullHalfway;
        if (isHalfway && call.name != kWrite && call.name != kAppend) continue;
        ++runs;
        EXPECT_EQ(violation(calls[position], end), "")
            << "call " << calls[position] << ", " << call.name << " " << call.path << ", ends in way "
            << static_cast<int>(end);
      }
    }
    EXPECT_NE(runs, 0U);
    std::cout << calls.size() << " host calls, " << runs << " runs\n";
  }

  HostPlan host_;  // of a run that nothing happens to
};

TEST_P(HostFault, IsReportedOrChangesNothing) {
  TryCalls({}, {HostEnd::NoSpace, HostEnd::NoPermission, HostEnd::FullHalfway},
           [&](std::size_t call, HostEnd end) { return FaultViolation(call, end); });
}

TEST_P(HostFault, AKilledProcessLeavesWholeFiles) {
  const auto kill = [&](std::size_t call, HostEnd end) { return KillViolation(call, end); };
  TryCalls({}, {HostEnd::Killed, HostEnd::KilledHalfway}, kill);
  TryCalls(kAppend, {HostEnd::KilledHalfway}, kill);  // of which a sample has few
}

INSTANTIATE_TEST_SUITE_P(Golden, HostFault, ::testing::ValuesIn(kFaultCases));

}  // namespace
}  // namespace bxvbwiz
