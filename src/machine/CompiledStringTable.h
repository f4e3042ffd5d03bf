#pragma once

#include "platform/Platform.h"
#include "text/Strings.h"

namespace bxvbwiz {

// The texts that are compiled into the program, for a platform without module resources.
class CompiledStringTable : public StringTable {
 public:
  std::string Text(TextId id) const override { return CompiledText(id); }
};

}  // namespace bxvbwiz
