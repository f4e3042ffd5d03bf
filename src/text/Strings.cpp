#include "text/Strings.h"

#include <algorithm>
#include <iterator>

namespace bxvbwiz {
namespace {

struct Entry {
  unsigned number;
  const char* text;
};

#define STRING(number, text) {number, text},
constexpr Entry kEntries[] = {
#include "text/Strings.inc"
};
#undef STRING

constexpr bool IsSorted() {
  for (std::size_t i = 1; i < std::size(kEntries); ++i) {
    if (kEntries[i - 1].number >= kEntries[i].number) return false;
  }
  return true;
}
static_assert(IsSorted(), "the texts stand in the order of their numbers, each number once");

}  // namespace

std::string CompiledText(unsigned number) {
  const Entry* entry =
      std::lower_bound(std::begin(kEntries), std::end(kEntries), number,
                       [](const Entry& candidate, unsigned wanted) { return candidate.number < wanted; });
  return entry != std::end(kEntries) && entry->number == number ? entry->text : std::string();
}

}  // namespace bxvbwiz
