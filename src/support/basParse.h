#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Lists of Name=Value items separated by ";" (control tags, the font description).
namespace bxvbwiz {

// The position (from 1) of the item's name in the list, 0 when it is absent, the list null or the name empty.
std::int32_t FindItemPos(const std::optional<std::string>& list, std::string_view name,
                         bool caseSensitive = true);
// The item's value, null when it is absent or empty in front of a ";"; `found` distinguishes the two. An
// empty value at the end of the list is an empty text.
std::optional<std::string> GetItem(const std::optional<std::string>& list, std::string_view name, bool& found,
                                   bool caseSensitive = true);

}  // namespace bxvbwiz
