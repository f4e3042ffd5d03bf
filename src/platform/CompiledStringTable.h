#pragma once

#include "platform/Platform.h"

namespace bxvbwiz {

// The string table as it is compiled into the program, for platforms without module resources.
class CompiledStringTable : public StringTable {
 public:
  std::string Text(unsigned number) const override;
};

}  // namespace bxvbwiz
