#include "support/basStr.h"

#include <algorithm>
#include <limits>

#include "support/CallStack.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

bool IsQuote(char character) {
  return character == '"' || character == '\'';
}

bool IsAsciiAlphaNumeric(char32_t character) {
  return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
         (character >= 'a' && character <= 'z');
}

// How many bytes the first character takes.
std::size_t FirstCharacterSize(std::string_view text) {
  return FirstCharacters(text, 1).size();
}

}  // namespace

// Searching bytes is searching characters here: no character of UTF-8 begins inside another one.

std::int16_t CountChar(std::string_view text, std::string_view character) {
  const CallStackEntry entry("CountChar");
  BXVBWIZ_ASSERT(CharacterCount(character) == 1, "Bad character in CountChar");
  if (character.empty() || FirstCharacterSize(character) != character.size()) return 0;
  std::size_t count = 0;
  for (std::size_t at = text.find(character); at != std::string_view::npos;
       at = text.find(character, at + character.size()))
    ++count;
  constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();
  return static_cast<std::int16_t>(std::min(count, kMost));
}

bool ContainsAnyChar(std::string_view text, std::string_view characters) {
  while (!characters.empty()) {
    const std::size_t size = FirstCharacterSize(characters);
    if (text.find(characters.substr(0, size)) != std::string_view::npos) return true;
    characters.remove_prefix(size);
  }
  return false;
}

std::string GetToken(std::string_view text, std::int16_t number, std::string_view separator) {
  const CallStackEntry entry("GetToken");
  BXVBWIZ_ASSERT(number >= 1, "Bad argument to GetToken");
  BXVBWIZ_ASSERT(!text.empty(), "Bad strIn to GetToken");
  BXVBWIZ_ASSERT(!separator.empty(), "Bad separator to GetToken");
  if (number < 1 || separator.empty()) return {};

  std::string working;
  working.reserve(text.size() + 2 * separator.size());
  working.append(separator).append(text).append(separator);
  // Every search goes on one character after the start of the last hit, not after its end. After a miss it
  // starts again at the beginning: this makes the numbers wrap around.
  constexpr std::size_t kMissed = std::string::npos;
  std::size_t position = kMissed;
  for (std::int16_t pass = 0; pass < number; ++pass)
    position = working.find(separator, position == kMissed ? 0 : position + 1);
  if (position == kMissed) return {};
  const std::size_t next = working.find(separator, position + 1);
  if (next == kMissed) return {};
  const std::size_t field = position + FirstCharacterSize(separator);
  return working.substr(field, next - field);
}

std::string MakeStringAlphaNumeric(const CodePage& codePage, std::string_view text) {
  const CallStackEntry entry("MakeStringAlphaNumeric");
  std::string kept;
  kept.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    const char32_t character = NextCharacter(text, position);
    const bool keep = character < 0x80 ? IsAsciiAlphaNumeric(character) : codePage.IsAlphaNumeric(character);
    if (keep) kept.append(text, start, position - start);
  }
  return kept;
}

std::string MakeCollectionKey(const CodePage& codePage, std::string_view value) {
  return "K" + MakeStringAlphaNumeric(codePage, value);
}

std::optional<std::string> ReplaceAll(std::optional<std::string> text, std::string_view search,
                                      std::string_view replacement) {
  // An empty search text would be found forever.
  if (!text || search.empty()) return text;
  std::string replaced;
  std::size_t done = 0;
  for (std::size_t at = text->find(search); at != std::string::npos; at = text->find(search, done)) {
    replaced.append(*text, done, at - done).append(replacement);
    done = at + search.size();
  }
  return replaced.append(*text, done);
}

std::string StripQuotes(std::string_view text) {
  const CallStackEntry entry("StripQuotes");
  if (!text.empty() && IsQuote(text.front())) text.remove_prefix(1);
  if (!text.empty() && IsQuote(text.back())) text.remove_suffix(1);
  return std::string(text);
}

std::string TokenReplace(std::string text, const std::vector<std::string>& values) {
  const CallStackEntry entry("TokenReplace");
  for (std::size_t index = 0; index < values.size(); ++index) {
    const std::string placeholder = "%%" + std::to_string(index + 1);
    const std::size_t at = text.find(placeholder);
    if (at != std::string::npos) text.replace(at, placeholder.size(), values[index]);
  }
  return text;
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) joined += (joined.empty() ? "" : ", ") + text;
  return joined;
}

}  // namespace bxvbwiz
