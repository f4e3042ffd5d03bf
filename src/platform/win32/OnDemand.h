#pragma once

#include <windows.h>

// A function of a system library that is loaded when the function is first needed. A program without windows
// then starts without user32 and the libraries that load it. A template would lose the calling convention.
#define BXVBWIZ_ON_DEMAND(library, function) \
  (*reinterpret_cast<decltype(&function)>(   \
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryA(library), #function))))
