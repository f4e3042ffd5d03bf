#include "support/Sentence.h"

#include <algorithm>

namespace bxvbwiz {

std::string TextOf(const StringTable& strings, const Sentence& sentence) {
  const std::string text = strings.Text(sentence.id);
  std::string filled;
  std::size_t start = 0;
  // In one pass, so that nothing in a value is taken for a place.
  for (std::size_t at = text.find("%%"); at != std::string::npos; at = text.find("%%", start)) {
    filled.append(text, start, at - start);
    const std::size_t index = static_cast<std::size_t>(text[at + 2] - '1');
    if (index < sentence.values.size()) filled += sentence.values[index];
    start = std::min(at + 3, text.size());
  }
  return filled.append(text, start);
}

}  // namespace bxvbwiz
