#pragma once

#include <string_view>

#include "platform/Platform.h"

namespace bxvbwiz {

// The GUID of a name in a namespace, by RFC 4122, version 5: the same name always has the same one.
// `space` has the bytes in the order in which they are printed, the result in the memory order of the
// GUID structure.
GuidBytes NamedGuid(const GuidBytes& space, std::string_view name);

}  // namespace bxvbwiz
