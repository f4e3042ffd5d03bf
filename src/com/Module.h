#pragma once

#include <windows.h>

#include <string>

namespace bxvbwiz {

// The loaded DLL or program that this code is part of.
HMODULE ThisModule();
// Its full path. Throws RuntimeError when the system does not give it.
std::wstring ThisModulePath();

// Keeps the module in its process from now on, however often a host lets go of it: the compiler's run-time
// library never gives back what it takes of the process for each time that it is loaded (a slot of
// thread-local storage, of which there are 1,088).
void StayLoaded() noexcept;

// Whether an object or a lock keeps the DLL loaded.
bool ModuleIsInUse();
// LockServer: keeps the DLL loaded, whichever thread and factory lock and unlock. An unlock without a lock
// does nothing.
void LockModule(bool lock) noexcept;

// Keeps the DLL loaded while it lives.
class ModuleUse {
 public:
  ModuleUse();
  ~ModuleUse();
  ModuleUse(const ModuleUse&) = delete;
  ModuleUse& operator=(const ModuleUse&) = delete;
};

}  // namespace bxvbwiz
