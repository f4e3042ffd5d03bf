#pragma once

#include "win32/Win32FileSystem.h"
#include "win32/Win32Parts.h"
#include "win32/Win32Registry.h"
#include "win32/Win32StringTable.h"

namespace bxvbwiz {

// This computer, which runs Windows.
class Win32Platform {
 public:
  // `module` holds the texts; null is the program.
  explicit Win32Platform(HMODULE module = nullptr) : strings_(module) {}
  Platform& platform() { return platform_; }

 private:
  Win32Registry registry_;
  Win32SystemFacts facts_;
  Win32FileSystem files_;
  Win32ProfileStrings profiles_;
  Win32Processes processes_;
  Win32Guids guids_;
  Win32Settings settings_;
  Win32Clock clock_;
  Win32CodePage codePage_;
  Win32StringTable strings_;
  Platform platform_{registry_, facts_,    files_, profiles_, processes_,
                     guids_,    settings_, clock_, codePage_, strings_};
};

}  // namespace bxvbwiz
