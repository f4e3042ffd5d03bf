#include "text/Utf16Text.h"

#include <cstdint>
#include <cstring>

#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr char32_t kHighSurrogates = 0xD800;
constexpr char32_t kLowSurrogates = 0xDC00;
constexpr char32_t kAfterSurrogates = 0xE000;
constexpr char32_t kFirstPair = 0x10000;

bool IsHigh(char32_t unit) {
  return unit >= kHighSurrogates && unit < kLowSurrogates;
}
bool IsLow(char32_t unit) {
  return unit >= kLowSurrogates && unit < kAfterSurrogates;
}

char32_t UnitAt(std::string_view bytes, std::size_t position) {
  const auto low = static_cast<std::uint8_t>(bytes[position]);
  const auto high = position + 1 < bytes.size() ? static_cast<std::uint8_t>(bytes[position + 1]) : 0U;
  return low | static_cast<char32_t>(high) << 8;
}

void AppendUnit(std::string& bytes, char32_t unit) {
  bytes.push_back(static_cast<char>(unit & 0xFF));
  bytes.push_back(static_cast<char>(unit >> 8 & 0xFF));
}

void AppendHalfPair(std::string& text, char32_t unit) {
  text.push_back(static_cast<char>(0xE0 | unit >> 12));
  text.push_back(static_cast<char>(0x80 | (unit >> 6 & 0x3F)));
  text.push_back(static_cast<char>(0x80 | (unit & 0x3F)));
}

// The half pair at `position` as AppendHalfPair writes it, or 0.
char32_t HalfPairAt(std::string_view text, std::size_t position) {
  if (position + 2 >= text.size() || text[position] != '\xED') return 0;
  const auto second = static_cast<std::uint8_t>(text[position + 1]);
  const auto third = static_cast<std::uint8_t>(text[position + 2]);
  if (second < 0xA0 || second > 0xBF || third < 0x80 || third > 0xBF) return 0;
  return 0xD000U | (second & 0x3FU) << 6 | (third & 0x3FU);
}

}  // namespace

std::string FromUtf16(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    const char32_t unit = UnitAt(bytes, i);
    if (unit < 0x80) {
      text.push_back(static_cast<char>(unit));
    } else if (IsHigh(unit) && i + 2 < bytes.size() && IsLow(UnitAt(bytes, i + 2))) {
      i += 2;
      AppendUtf8(text, kFirstPair + ((unit - kHighSurrogates) << 10) + (UnitAt(bytes, i) - kLowSurrogates));
    } else if (IsHigh(unit) || IsLow(unit)) {
      AppendHalfPair(text, unit);
    } else {
      AppendUtf8(text, unit);
    }
  }
  return text;
}

std::string ToUtf16(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() * 2);
  for (std::size_t i = 0; i < text.size();) {
    if (const char32_t half = HalfPairAt(text, i); half != 0) {
      AppendUnit(bytes, half);
      i += 3;
      continue;
    }
    const char32_t character = NextCharacter(text, i);
    if (character < kFirstPair) {
      AppendUnit(bytes, character);
    } else {
      AppendUnit(bytes, kHighSurrogates + (character - kFirstPair) / 0x400);
      AppendUnit(bytes, kLowSurrogates + (character - kFirstPair) % 0x400);
    }
  }
  return bytes;
}

std::size_t FindNonAscii(std::string_view text, std::size_t position) {
  // Eight bytes at a time, because an export can have hundreds of megabytes.
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  for (std::uint64_t word = 0; position + sizeof word <= text.size(); position += sizeof word) {
    std::memcpy(&word, text.data() + position, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  while (position < text.size() && static_cast<unsigned char>(text[position]) < 0x80) ++position;
  return position < text.size() ? position : std::string_view::npos;
}

}  // namespace bxvbwiz
