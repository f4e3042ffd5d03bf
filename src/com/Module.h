#pragma once

#include <windows.h>

#include <string>

namespace bxvbwiz {

// The loaded DLL or program that this code is part of.
HMODULE ThisModule();
// Its full path. Throws RuntimeError when the system does not give it.
std::wstring ThisModulePath();

// Keeps the module in its process from now on, however often a host unloads it: each time it is loaded, the
// compiler's run-time library takes one of the process's 1,088 slots of thread-local storage and never gives
// it back.
void StayLoaded() noexcept;

// Whether an object or a lock keeps the DLL loaded.
bool ModuleIsInUse();
// LockServer: keeps the DLL loaded. Any thread may unlock; an unlock without a lock does nothing.
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
