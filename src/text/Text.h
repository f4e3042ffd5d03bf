#pragma once

#include <string>
#include <string_view>

// Text as the whole wizard uses it: UTF-8, counted in characters (code points). The same on every platform.
namespace bxvbwiz {

// What some editors write at the beginning of a UTF-8 file: U+FEFF.
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// Appends one character; a value that is not a code point becomes U+FFFD.
void AppendUtf8(std::string& text, char32_t character);

// Reads the character at `position` (which must be inside) and moves past it. A byte that does not begin a
// valid sequence is a character of its own value, so that nothing is lost.
char32_t NextCharacter(std::string_view text, std::size_t& position);

// The number of characters.
std::size_t CharacterCount(std::string_view text);

// The text's first `count` characters, or all of it when it has fewer.
std::string_view FirstCharacters(std::string_view text, std::size_t count);

// One letter in upper or lower case: the simple case mappings of Latin, Greek, Cyrillic, Armenian and
// full-width letters, which are what the Windows code pages hold. Other characters are returned as they are.
char32_t UpperCharacter(char32_t character);
char32_t LowerCharacter(char32_t character);

std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);
bool EqualsIgnoreCase(std::string_view left, std::string_view right);

// True when `text` begins with `prefix`, exactly.
inline bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}
inline bool EndsWith(std::string_view text, std::string_view suffix) {
  return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

// Without blanks at both ends; only the blank (0x20) counts, as for Trim$.
std::string_view TrimBlanks(std::string_view text);

}  // namespace bxvbwiz
