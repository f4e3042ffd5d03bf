#include "text/Text.h"

#include <array>
#include <cstdint>

namespace bxvbwiz {
namespace {

// Capital letters `first`, `first` + `step`, ... `last`; each small letter is `distance` further on. Only
// letters that map to each other both ways stand here: as in Windows file names, a dotless i, a long s or a
// micro sign is not another spelling of i, s or mu. The values are the simple case mappings of the Unicode
// character database.
struct CapitalLetters {
  std::uint16_t first;
  std::uint16_t last;
  std::uint8_t step;
  std::int16_t distance;
};

constexpr CapitalLetters kCapitalLetters[] = {
    {0x00C0, 0x00D6, 1, 32},   {0x00D8, 0x00DE, 1, 32},   {0x0100, 0x012E, 2, 1},
    {0x0132, 0x0136, 2, 1},    {0x0139, 0x0147, 2, 1},    {0x014A, 0x0176, 2, 1},
    {0x0178, 0x0178, 1, -121}, {0x0179, 0x017D, 2, 1},    {0x0181, 0x0181, 1, 210},
    {0x0182, 0x0184, 2, 1},    {0x0186, 0x0186, 1, 206},  {0x0187, 0x0187, 1, 1},
    {0x0189, 0x018A, 1, 205},  {0x018B, 0x018B, 1, 1},    {0x018E, 0x018E, 1, 79},
    {0x018F, 0x018F, 1, 202},  {0x0190, 0x0190, 1, 203},  {0x0191, 0x0191, 1, 1},
    {0x0193, 0x0193, 1, 205},  {0x0194, 0x0194, 1, 207},  {0x0196, 0x0196, 1, 211},
    {0x0197, 0x0197, 1, 209},  {0x0198, 0x0198, 1, 1},    {0x019C, 0x019C, 1, 211},
    {0x019D, 0x019D, 1, 213},  {0x019F, 0x019F, 1, 214},  {0x01A0, 0x01A4, 2, 1},
    {0x01A6, 0x01A6, 1, 218},  {0x01A7, 0x01A7, 1, 1},    {0x01A9, 0x01A9, 1, 218},
    {0x01AC, 0x01AC, 1, 1},    {0x01AE, 0x01AE, 1, 218},  {0x01AF, 0x01AF, 1, 1},
    {0x01B1, 0x01B2, 1, 217},  {0x01B3, 0x01B5, 2, 1},    {0x01B7, 0x01B7, 1, 219},
    {0x01B8, 0x01B8, 1, 1},    {0x01BC, 0x01BC, 1, 1},    {0x01C4, 0x01C4, 1, 2},
    {0x01C7, 0x01C7, 1, 2},    {0x01CA, 0x01CA, 1, 2},    {0x01CD, 0x01DB, 2, 1},
    {0x01DE, 0x01EE, 2, 1},    {0x01F1, 0x01F1, 1, 2},    {0x01F4, 0x01F4, 1, 1},
    {0x01F6, 0x01F6, 1, -97},  {0x01F7, 0x01F7, 1, -56},  {0x01F8, 0x021E, 2, 1},
    {0x0220, 0x0220, 1, -130}, {0x0222, 0x0232, 2, 1},    {0x023A, 0x023A, 1, 10795},
    {0x023B, 0x023B, 1, 1},    {0x023D, 0x023D, 1, -163}, {0x023E, 0x023E, 1, 10792},
    {0x0241, 0x0241, 1, 1},    {0x0243, 0x0243, 1, -195}, {0x0244, 0x0244, 1, 69},
    {0x0245, 0x0245, 1, 71},   {0x0246, 0x024E, 2, 1},    {0x0370, 0x0372, 2, 1},
    {0x0376, 0x0376, 1, 1},    {0x037F, 0x037F, 1, 116},  {0x0386, 0x0386, 1, 38},
    {0x0388, 0x038A, 1, 37},   {0x038C, 0x038C, 1, 64},   {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32},   {0x03A3, 0x03AB, 1, 32},   {0x03CF, 0x03CF, 1, 8},
    {0x03D8, 0x03EE, 2, 1},    {0x03F7, 0x03F7, 1, 1},    {0x03F9, 0x03F9, 1, -7},
    {0x03FA, 0x03FA, 1, 1},    {0x03FD, 0x03FF, 1, -130}, {0x0400, 0x040F, 1, 80},
    {0x0410, 0x042F, 1, 32},   {0x0460, 0x0480, 2, 1},    {0x048A, 0x04BE, 2, 1},
    {0x04C0, 0x04C0, 1, 15},   {0x04C1, 0x04CD, 2, 1},    {0x04D0, 0x052E, 2, 1},
    {0x0531, 0x0556, 1, 48},   {0x1E00, 0x1E94, 2, 1},    {0x1EA0, 0x1EFE, 2, 1},
    {0x1F08, 0x1F0F, 1, -8},   {0x1F18, 0x1F1D, 1, -8},   {0x1F28, 0x1F2F, 1, -8},
    {0x1F38, 0x1F3F, 1, -8},   {0x1F48, 0x1F4D, 1, -8},   {0x1F59, 0x1F5F, 2, -8},
    {0x1F68, 0x1F6F, 1, -8},   {0x1FB8, 0x1FB9, 1, -8},   {0x1FBA, 0x1FBB, 1, -74},
    {0x1FC8, 0x1FCB, 1, -86},  {0x1FD8, 0x1FD9, 1, -8},   {0x1FDA, 0x1FDB, 1, -100},
    {0x1FE8, 0x1FE9, 1, -8},   {0x1FEA, 0x1FEB, 1, -112}, {0x1FEC, 0x1FEC, 1, -7},
    {0x1FF8, 0x1FF9, 1, -128}, {0x1FFA, 0x1FFB, 1, -126}, {0x2160, 0x216F, 1, 16},
    {0x24B6, 0x24CF, 1, 26},
};

constexpr char16_t kFinalSigma = 0x03C2;  // a second small form of the capital sigma
constexpr char16_t kCapitalSigma = 0x03A3;
// The first full-width letters, which come long after all others.
constexpr char32_t kFullWidthCapitals = 0xFF21;
constexpr char32_t kFullWidthSmall = 0xFF41;

constexpr bool IsBetween(char32_t character, char32_t first, char32_t last) {
  return character >= first && character <= last;
}

// Both directions, spread out so that one look-up answers.
class CaseTable {
 public:
  CaseTable() {
    for (std::size_t i = 0; i < kSize; ++i) upper_[i] = lower_[i] = static_cast<char16_t>(i);
    for (const CapitalLetters& letters : kCapitalLetters) {
      for (int capital = letters.first; capital <= letters.last; capital += letters.step) {
        const int small = capital + letters.distance;
        lower_[static_cast<std::size_t>(capital)] = static_cast<char16_t>(small);
        upper_[static_cast<std::size_t>(small)] = static_cast<char16_t>(capital);
      }
    }
    upper_[kFinalSigma] = kCapitalSigma;
  }

  char32_t Upper(char32_t character) const { return character < kSize ? upper_[character] : character; }
  char32_t Lower(char32_t character) const { return character < kSize ? lower_[character] : character; }

 private:
  static constexpr std::size_t kSize = 0x2C80;  // after U+2C66, the highest letter of the table
  std::array<char16_t, kSize> upper_;
  std::array<char16_t, kSize> lower_;
};

const CaseTable& Cases() {
  static const CaseTable table;
  return table;
}

bool IsAscii(char byte) {
  return static_cast<unsigned char>(byte) < 0x80;
}

char UpperAscii(char byte) {
  return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : byte;
}
char LowerAscii(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
}

// The number of bytes of the valid sequence that begins at `position`, with its value; 0 when there is none.
std::size_t SequenceLength(std::string_view text, std::size_t position, char32_t& value) {
  const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byteAt(position);
  std::size_t length = 0;
  char32_t smallest = 0;  // below it the sequence is longer than needed, and so invalid
  if (IsBetween(lead, 0xC2, 0xDF)) {
    length = 2, smallest = 0x80, value = lead & 0x1Fu;
  } else if (IsBetween(lead, 0xE0, 0xEF)) {
    length = 3, smallest = 0x800, value = lead & 0x0Fu;
  } else if (IsBetween(lead, 0xF0, 0xF4)) {
    length = 4, smallest = 0x10000, value = lead & 0x07u;
  }
  if (length == 0 || text.size() - position < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned char next = byteAt(position + i);
    if ((next & 0xC0) != 0x80) return 0;
    value = (value << 6) | (next & 0x3Fu);
  }
  const bool valid = value >= smallest && value <= 0x10FFFF && !IsBetween(value, 0xD800, 0xDFFF);
  return valid ? length : 0;
}

// The text with each character mapped; what does not change keeps its bytes, invalid ones too.
// Most text is ASCII, and most keys are looked up by it: the two functions are known where this is compiled.
template <char (*MapAscii)(char), char32_t (*Map)(char32_t)>
std::string MapCharacters(std::string_view text) {
  std::string mapped(text);
  std::size_t position = 0;
  for (; position < text.size() && IsAscii(text[position]); ++position)
    mapped[position] = MapAscii(text[position]);
  mapped.resize(position);
  while (position < text.size()) {
    if (IsAscii(text[position])) {
      mapped += MapAscii(text[position++]);
      continue;
    }
    const std::size_t start = position;
    const char32_t character = NextCharacter(text, position);
    const char32_t other = position - start > 1 ? Map(character) : character;
    if (other == character) {
      mapped += text.substr(start, position - start);
    } else {
      AppendUtf8(mapped, other);
    }
  }
  return mapped;
}

}  // namespace

void AppendUtf8(std::string& text, char32_t character) {
  const auto append = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (character > 0x10FFFF || IsBetween(character, 0xD800, 0xDFFF)) character = 0xFFFD;
  if (character < 0x80) {
    append(character);
  } else if (character < 0x800) {
    append(0xC0 | (character >> 6));
    append(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    append(0xE0 | (character >> 12));
    append(0x80 | ((character >> 6) & 0x3F));
    append(0x80 | (character & 0x3F));
  } else {
    append(0xF0 | (character >> 18));
    append(0x80 | ((character >> 12) & 0x3F));
    append(0x80 | ((character >> 6) & 0x3F));
    append(0x80 | (character & 0x3F));
  }
}

char32_t NextCharacter(std::string_view text, std::size_t& position) {
  char32_t value = 0;
  if (!IsAscii(text[position])) {
    const std::size_t length = SequenceLength(text, position, value);
    if (length != 0) {
      position += length;
      return value;
    }
  }
  return static_cast<unsigned char>(text[position++]);
}

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t position = 0; position < text.size(); ++count) NextCharacter(text, position);
  return count;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  if (text.size() <= count) return text;
  std::size_t position = 0;
  while (count-- > 0 && position < text.size()) NextCharacter(text, position);
  return text.substr(0, position);
}

char32_t UpperCharacter(char32_t character) {
  if (character < 0x80) return IsBetween(character, 'a', 'z') ? character - 32 : character;
  if (IsBetween(character, kFullWidthSmall, kFullWidthSmall + 25)) return character - 32;
  return Cases().Upper(character);
}

char32_t LowerCharacter(char32_t character) {
  if (character < 0x80) return IsBetween(character, 'A', 'Z') ? character + 32 : character;
  if (IsBetween(character, kFullWidthCapitals, kFullWidthCapitals + 25)) return character + 32;
  return Cases().Lower(character);
}

std::string UpperCase(std::string_view text) {
  return MapCharacters<UpperAscii, UpperCharacter>(text);
}
std::string LowerCase(std::string_view text) {
  return MapCharacters<LowerAscii, LowerCharacter>(text);
}

bool EqualsIgnoreCase(std::string_view left, std::string_view right) {
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < left.size() && j < right.size()) {
    if (IsAscii(left[i]) && IsAscii(right[j])) {
      if (UpperAscii(left[i++]) != UpperAscii(right[j++])) return false;
    } else if (UpperCharacter(NextCharacter(left, i)) != UpperCharacter(NextCharacter(right, j))) {
      return false;
    }
  }
  return i == left.size() && j == right.size();
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace bxvbwiz
