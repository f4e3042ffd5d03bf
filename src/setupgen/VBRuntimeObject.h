#pragma once

#include <cstdint>
#include <string>

#include "platform/ProfileStrings.h"
#include "project/basGlobal.h"

namespace bxvbwiz {

// Adds the Visual Basic runtime component to the component definitions of the setup project in
// `templateFolder`. True when it was listed already. False when it was added, and also when nothing was
// written because no GUID could be made or Visual Basic is neither 5 nor 6.
bool AddVBRuntimeObject(basGlobal& global, const std::string& templateFolder);

// Looks for `wanted` (exact) among number + suffix keys, always afresh. True: `index` is the found key's
// number plus one. False: the first free number. Raises error 6 when that is over 32767.
bool FindIniFileEntry(ProfileStrings& profiles, const std::string& file, const std::string& section,
                      const std::string& keySuffix, const std::string& wanted, std::int16_t& index);

}  // namespace bxvbwiz
