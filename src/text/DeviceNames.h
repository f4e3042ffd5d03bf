#pragma once

#include <string_view>

// Names that mean a device to the system, in every folder and with any extension.
namespace bxvbwiz {

// What the system compares with the names of devices: the name up to its first "." or ":", without blanks at
// its end.
std::string_view DeviceStem(std::string_view name);

// True for the stems of devices that every Windows has, in any case: CON, NUL, COM1 and so on.
bool IsDevice(std::string_view stem);

}  // namespace bxvbwiz
