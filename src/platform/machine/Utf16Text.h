#pragma once

#include <string>
#include <string_view>

// Files that begin with FF FE hold UTF-16, low byte first. These two convert without loss both ways: half a
// surrogate pair, which UTF-8 proper has no form for, becomes the three bytes that its number would have.
namespace bxvbwiz {

// The bytes that mark a UTF-16 file.
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

// To UTF-8. An odd last byte counts as a unit of that value.
std::string FromUtf16(std::string_view bytes);

// From UTF-8 to the bytes of UTF-16.
std::string ToUtf16(std::string_view text);

// True when every byte is below 0x80: such a text is the same in UTF-8 and in every code page.
bool IsAscii(std::string_view text);

}  // namespace bxvbwiz
