#pragma once

#include <string>

// The texts that the user sees, as they are compiled into the program.
namespace bxvbwiz {

// The text of a number of Strings.inc; empty when there is none.
std::string CompiledText(unsigned number);

}  // namespace bxvbwiz
