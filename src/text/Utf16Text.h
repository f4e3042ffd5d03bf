#pragma once

#include <string>
#include <string_view>

// Files that begin with FF FE hold UTF-16, low byte first. FromUtf16 and ToUtf16 lose nothing: half a
// surrogate pair, which valid UTF-8 cannot hold, becomes the three bytes that its number would have.
namespace bxvbwiz {

// The bytes that mark a UTF-16 file.
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

// To UTF-8. An odd last byte counts as a unit of that value.
std::string FromUtf16(std::string_view bytes);

// From UTF-8 to the bytes of UTF-16.
std::string ToUtf16(std::string_view text);

// The position of the first byte of 0x80 or above, from `position` on; npos when there is none.
std::size_t FindNonAscii(std::string_view text, std::size_t position = 0);

// A text of bytes below 0x80 only is the same in UTF-8 and in every code page.
inline bool IsAscii(std::string_view text) {
  return FindNonAscii(text) == std::string_view::npos;
}

}  // namespace bxvbwiz
