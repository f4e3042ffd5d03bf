#include "com/Module.h"

#include <atomic>

#include "support/Errors.h"

// The linker's name of the module's first byte, which is its handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace bxvbwiz {
namespace {

std::atomic<long> uses{0};
std::atomic<long> locks{0};

// Of a path with the prefix "\\?\" (UNICODE_STRING of ntdef.h).
constexpr DWORD kLongestPath = 32767;

}  // namespace

HMODULE ThisModule() {
  return reinterpret_cast<HMODULE>(&__ImageBase);
}

std::wstring ThisModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(ThisModule(), path.data(), static_cast<DWORD>(path.size()));
    if (length == 0 || path.size() > kLongestPath)
      throw RuntimeError(kErrorPathNotFound, "The server's own path cannot be found out");
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

void StayLoaded() noexcept {
  HMODULE pinned = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     reinterpret_cast<LPCWSTR>(&__ImageBase), &pinned);
}

bool ModuleIsInUse() {
  return uses != 0 || locks != 0;
}

void LockModule(bool lock) noexcept {
  if (lock) {
    ++locks;
    return;
  }
  long held = locks;
  while (held > 0 && !locks.compare_exchange_weak(held, held - 1)) {
    // Another thread locked or unlocked meanwhile; `held` is what there is now.
  }
}

ModuleUse::ModuleUse() {
  ++uses;
}

ModuleUse::~ModuleUse() {
  --uses;
}

}  // namespace bxvbwiz
