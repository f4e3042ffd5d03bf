#include "text/Strings.h"

#include <algorithm>
#include <iterator>

namespace bxvbwiz {
namespace {

struct Entry {
  unsigned number;
  const char* text;
};

#define STRING(name, number, text) {number, text},
#define FINDING(name, number, code, severity, text) {number, text},
constexpr Entry kEntries[] = {
#include "text/Strings.inc"
// Findings have the higher numbers.
#include "text/Findings.inc"
};
#undef STRING
#undef FINDING

constexpr bool IsSorted() {
  for (std::size_t i = 1; i < std::size(kEntries); ++i) {
    if (kEntries[i - 1].number >= kEntries[i].number) return false;
  }
  return true;
}
static_assert(IsSorted(), "the texts stand in the order of their numbers, each number once");

}  // namespace

std::string CompiledText(TextId id) {
  const Entry* entry =
      std::lower_bound(std::begin(kEntries), std::end(kEntries), NumberOf(id),
                       [](const Entry& candidate, unsigned wanted) { return candidate.number < wanted; });
  return entry != std::end(kEntries) && entry->number == NumberOf(id) ? entry->text : std::string();
}

}  // namespace bxvbwiz
