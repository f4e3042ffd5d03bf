#pragma once

#include <string>
#include <vector>

namespace bxvbwiz {

// The bytes of a small 32-bit DLL (PE32) with these imported modules (one function each, by ordinal) and
// exported functions (each does nothing and returns 0). A table that would be empty is left out.
std::string MakePe(const std::vector<std::string>& imports, const std::vector<std::string>& exports);

}  // namespace bxvbwiz
