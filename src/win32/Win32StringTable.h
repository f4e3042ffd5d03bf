#pragma once

#include <windows.h>

#include "platform/Platform.h"

namespace bxvbwiz {

// The texts in a module's resources, which Strings.rc puts there.
class Win32StringTable : public StringTable {
 public:
  // Null is the program.
  explicit Win32StringTable(HMODULE module) : module_(module) {}
  std::string Text(TextId id) const override;

 private:
  HMODULE module_;
};

}  // namespace bxvbwiz
