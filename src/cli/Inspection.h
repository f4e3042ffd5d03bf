#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "project/TypeLibraryFile.h"

namespace bxvbwiz {

// What is known about one executable.
struct Inspection {
  std::string file;
  bool valid = false;
  std::int32_t exeType = 0;
  std::int32_t errorType = 0;
  std::vector<std::string> imports;
  std::vector<std::string> exports;
  std::int32_t selfRegister = 0;
  TypeLibraryFile typeLibraries;
  std::string reason;  // why it is not valid
};

}  // namespace bxvbwiz
