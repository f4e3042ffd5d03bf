#pragma once

#include <string>

namespace bxvbwiz::host {

// A host path in the form of the W calls. A long one gets the prefix that lifts the limit of 260 characters.
std::wstring SystemPath(const std::string& path);

// The host path for a path from a W call: with "/" between the names and without that prefix.
std::string HostPath(std::wstring path);

}  // namespace bxvbwiz::host
