#pragma once

#include <string>
#include <vector>

#include "platform/Platform.h"

namespace bxvbwiz {

// A text of the string table, and what fills its places: "%%1" the first value, "%%2" the second.
struct Sentence {
  TextId id{};
  std::vector<std::string> values;
};

// The text with its places filled; empty when the sentence has no text.
std::string TextOf(const StringTable& strings, const Sentence& sentence);

}  // namespace bxvbwiz
