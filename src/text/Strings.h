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
#define FINDING(name, number, code, severity, text) name = number,
#include "text/Findings.inc"
#undef FINDING
};
constexpr unsigned kFirstFinding = 2001;

// The text of a finding, with places for its values.
constexpr TextId TextOf(FindingId id) {
  return static_cast<TextId>(id);
}

// Empty when no row has that number.
std::string CompiledText(TextId id);

}  // namespace bxvbwiz
