#pragma once

#include <string>

namespace bxvbwiz::host {

// A host path as the W calls take it. A long one gets the prefix that lifts the limit of 260 characters.
std::wstring SystemPath(const std::string& path);

// The host path of what a W call gave: "/" between the names, without that prefix.
std::string HostPath(std::wstring path);

}  // namespace bxvbwiz::host
