#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bxvbwiz {

// The bytes of a small 32-bit DLL (PE32) with these imported modules (one function each, by ordinal) and
// exported functions (each does nothing and returns 0). A table that would be empty is left out.
// Each of `libraries`, bytes of type libraries, becomes a resource; the first has the number 1.
std::string MakePe(const std::vector<std::string>& imports, const std::vector<std::string>& exports,
                   const std::vector<std::string>& libraries = {});

// What a type library says of itself.
struct LibraryHead {
  std::string guid;  // 32 hexadecimal digits in the order of the registry form, without hyphens
  std::uint32_t major = 1;
  std::uint32_t minor = 0;
  std::uint32_t language = 0;  // an LCID
  std::string description;
};
// The bytes of a type library without types, in the format that begins with "MSFT".
std::string MakeTypeLibrary(const LibraryHead& head);

}  // namespace bxvbwiz
