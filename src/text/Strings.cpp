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
#define FINDING(name, number, code, severity, values, text, advice) {number, text},
constexpr Entry kEntries[] = {
#include "text/Strings.inc"
// Findings have the higher numbers, and their advice higher ones still.
#include "text/Findings.inc"
#undef FINDING
#define FINDING(name, number, code, severity, values, text, advice) {(number) + 1000, advice},
#include "text/Findings.inc"
};
#undef STRING
#undef FINDING

struct Kind {
  FindingId id;
  const char* code;
  Severity severity;
};

#define FINDING(name, number, code, severity, values, text, advice) \
  {FindingId::name, code, Severity::severity},
constexpr Kind kKinds[] = {
#include "text/Findings.inc"
};
#undef FINDING

const Kind& KindOf(FindingId id) {
  return *std::find_if(std::begin(kKinds), std::end(kKinds),
                       [id](const Kind& kind) { return kind.id == id; });
}

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

const char* CodeOf(FindingId id) {
  return KindOf(id).code;
}

Severity SeverityOf(FindingId id) {
  return KindOf(id).severity;
}

const char* NameOf(Severity severity) {
  constexpr const char* kNames[] = {"error", "warning", "note"};
  return kNames[static_cast<int>(severity)];
}

}  // namespace bxvbwiz
