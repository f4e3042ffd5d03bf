#pragma once

#include <string>

#include "platform/Platform.h"

namespace bxvbwiz {

// A new GUID in registry form (StringFromGUID2): 38 characters with braces, 36 without; empty when none can
// be made. `place` names where it will stand.
std::string CreateGUID(Guids& guids, const std::string& place, bool stripBraces);
// The same form of a GUID that is known.
std::string GuidText(const GuidBytes& guid, bool stripBraces);

}  // namespace bxvbwiz
