#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

// Strings cut into fields, filled, stripped and made into keys. Positions count characters from 1;
// comparisons are case-sensitive.
namespace bxvbwiz {

// How often `character` (one character) stands in `text`; 0 when it is longer.
std::int16_t CountChar(std::string_view text, std::string_view character);
// True when `text` holds one of `characters`.
bool ContainsAnyChar(std::string_view text, std::string_view characters);
// The field `number` (from 1) of `text`; an empty field counts. Past the end the numbers wrap around: with k
// fields, k + 1 and k + 2 are empty and k + 3 is field 1. A separator of several characters leaves its tail
// in front of every field after the first.
std::string GetToken(std::string_view text, std::int16_t number, std::string_view separator);
// The alphanumeric characters of `text`, as the code page's system call sees them.
std::string MakeStringAlphaNumeric(const CodePage& codePage, std::string_view text);
// "K" and the alphanumeric characters: the key of every keyed collection, so that no key is a number.
std::string MakeCollectionKey(const CodePage& codePage, std::string_view value);
// Replaces every `search` by `replacement`; replaced text is not searched again. Null stays null.
std::optional<std::string> ReplaceAll(std::optional<std::string> text, std::string_view search,
                                      std::string_view replacement);
// Without one quote (double or apostrophe) at each end, the ends tested independently.
std::string StripQuotes(std::string_view text);
// Fills "%%1", "%%2", ... with the values in their order, the first occurrence of each only.
std::string TokenReplace(std::string text, const std::vector<std::string>& values);
// "a, b, c"
std::string Joined(const std::vector<std::string>& texts);

}  // namespace bxvbwiz
