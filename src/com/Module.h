#pragma once

#include <windows.h>

#include <string>

namespace bxvbwiz {

// The loaded DLL or program that this code is part of.
HMODULE ThisModule();
// Its full path. Throws RuntimeError when the system does not give it.
std::wstring ThisModulePath();

// Whether an object or a lock keeps the DLL loaded.
bool ModuleIsInUse();

// Keeps the DLL loaded while it lives.
class ModuleUse {
 public:
  ModuleUse();
  ~ModuleUse();
  ModuleUse(const ModuleUse&) = delete;
  ModuleUse& operator=(const ModuleUse&) = delete;
};

}  // namespace bxvbwiz
