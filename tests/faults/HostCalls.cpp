#include "faults/HostCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "TestMachine.h"

namespace bxvbwiz {
namespace {

HostPlan* watched = nullptr;

// Counts a call and ends the process when that is planned. True when the call is to fail as a whole, with
// errno.
bool Fails(std::string_view name, const char* path) {
  if (watched == nullptr) return false;
  watched->calls.push_back({name, path});
  if (watched->calls.size() - 1 != watched->endAt) return false;
  if (watched->end == HostEnd::Killed) _exit(kKilled);
  errno = watched->end == HostEnd::NoPermission ? EACCES : ENOSPC;
  return watched->end == HostEnd::NoPermission || watched->end == HostEnd::NoSpace;
}

void NoteVersion(const char* from, const char* to) {
  if (watched != nullptr) watched->versions[to].insert(ReadBytes(from));
}

}  // namespace

HostWatch::HostWatch(HostPlan& plan) {
  watched = &plan;
}

HostWatch::~HostWatch() {
  watched = nullptr;
}

// A call `name` of the library, which the linker names __real_<name>, and ours, which it calls instead.
#define WATCHED(result, name, ...)                             \
  result Real_##name(__VA_ARGS__) __asm__("__real_" #name);    \
  result Watched_##name(__VA_ARGS__) __asm__("__wrap_" #name); \
  result Watched_##name(__VA_ARGS__)

extern "C" {

WATCHED(ssize_t, write, int file, const void* bytes, size_t size) {
  if (Fails((fcntl(file, F_GETFL) & O_APPEND) != 0 ? kAppend : kWrite, "")) return -1;
  const bool isNow = watched != nullptr && watched->calls.size() - 1 == watched->endAt;
  if (!isNow) return Real_write(file, bytes, size);
  static_cast<void>(Real_write(file, bytes, size / 2));
  if (watched->end == HostEnd::KilledHalfway) _exit(kKilled);
  errno = ENOSPC;
  return -1;
}

WATCHED(int, rename, const char* from, const char* to) {
  if (Fails("rename", to)) return -1;
  NoteVersion(from, to);
  return Real_rename(from, to);
}

WATCHED(int, renameat2, int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
  if (Fails("renameat2", to)) return -1;
  NoteVersion(from, to);
  return Real_renameat2(fromFolder, from, toFolder, to, flags);
}

WATCHED(int, linkat, int fromFolder, const char* from, int toFolder, const char* to, int flags) {
  const std::string folder = "/proc/self/fd/" + std::to_string(toFolder);
  const std::string path = std::filesystem::read_symlink(folder).string() + "/" + to;
  if (Fails("linkat", path.c_str())) return -1;
  NoteVersion(from, path.c_str());
  return Real_linkat(fromFolder, from, toFolder, to, flags);
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

}  // namespace bxvbwiz
