#include "text/DeviceNames.h"

#include "text/Text.h"

namespace bxvbwiz {

std::string_view DeviceStem(std::string_view name) {
  const std::string_view stem = name.substr(0, name.find_first_of(".:"));
  return stem.substr(0, stem.find_last_not_of(' ') + 1);
}

bool IsDevice(std::string_view stem) {
  for (const char* device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"}) {
    if (EqualsIgnoreCase(stem, device)) return true;
  }
  const std::string_view kind = stem.substr(0, 3);
  return stem.size() == 4 && (EqualsIgnoreCase(kind, "COM") || EqualsIgnoreCase(kind, "LPT")) &&
         stem[3] >= '1' && stem[3] <= '9';
}

}  // namespace bxvbwiz
