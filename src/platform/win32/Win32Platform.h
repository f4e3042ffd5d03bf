#pragma once

#include "platform/CompiledStringTable.h"
#include "platform/win32/Win32FileSystem.h"
#include "platform/win32/Win32Parts.h"
#include "platform/win32/Win32Registry.h"

namespace bxvbwiz {

// This computer, which runs Windows.
class Win32Platform {
 public:
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
  CompiledStringTable strings_;
  Platform platform_{registry_, facts_,    files_, profiles_, processes_,
                     guids_,    settings_, clock_, codePage_, strings_};
};

}  // namespace bxvbwiz
