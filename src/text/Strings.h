#pragma once

#include <string>

// The texts that the user sees, as they are compiled into the program.
namespace bxvbwiz {

// A row of Strings.inc; its value is the number that the resources and the user know it by. 0 is none.
enum class TextId : unsigned {
#define STRING(name, number, text) name = number,
#include "text/Strings.inc"
#undef STRING
};

constexpr unsigned NumberOf(TextId id) {
  return static_cast<unsigned>(id);
}

// A row of Findings.inc, numbered after all of Strings.inc.
enum class FindingId : unsigned {
#define FINDING(name, number, code, severity, values, text, advice) name = number,
#include "text/Findings.inc"
#undef FINDING
};
constexpr unsigned kFirstFinding = 2001;

// How much a finding matters, the worst first.
enum class Severity {
  Error,    // the setup lacks something or will not work
  Warning,  // it is likely wrong
  Note      // worth knowing
};

// The text of a finding, with places for its values.
constexpr TextId TextOf(FindingId id) {
  return static_cast<TextId>(id);
}
// What to do by hand, with the same places.
constexpr TextId AdviceOf(FindingId id) {
  return static_cast<TextId>(static_cast<unsigned>(id) + 1000);
}
// The name that programs know it by, in kebab case.
const char* CodeOf(FindingId id);
Severity SeverityOf(FindingId id);
// "error", "warning" or "note".
const char* NameOf(Severity severity);

// Empty when no row has that number.
std::string CompiledText(TextId id);

}  // namespace bxvbwiz
