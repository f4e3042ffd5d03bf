#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "machine/RegText.h"
#include "text/Text.h"

// How one value is read:
// 1. The name is "@" or stands in quotes; in quotes only \" and \\ are escapes. Blanks may stand around "=".
// 2. "text" is a string, a lone "-" deletes the value.
// 3. dword: is followed by one to eight hexadecimal digits.
// 4. hex: and hex(type): are followed by bytes of one or two digits with commas between them. A comma may end
//    the list. With a backslash after a comma or the colon the list goes on in the next line that is neither
//    blank nor a comment.
// 5. After the value there may only be blanks, and a comment that begins with ";".
// A value that breaks a rule is left out; the values around it are not affected.
namespace bxvbwiz {
namespace {

using Table = std::array<bool, 256>;

constexpr Table MakeTable(std::string_view members) {
  Table table{};
  for (const char c : members) table[static_cast<unsigned char>(c)] = true;
  return table;
}

constexpr Table kLineEnd = MakeTable("\r\n");
constexpr Table kStopsQuoted = MakeTable("\"\\\r\n");
constexpr Table kHexDigit = MakeTable("0123456789abcdefABCDEF");

bool Is(const Table& table, char c) {
  return table[static_cast<unsigned char>(c)];
}

constexpr std::ptrdiff_t kMostDigits = 8;  // of a 32-bit number

// The quote that closes the text that begins at `position`; null when the line has none.
const char* ClosingQuote(const char* position, const char* end) {
  for (;; ++position) {
    while (position != end && !Is(kStopsQuoted, *position)) ++position;
    if (position == end) return nullptr;
    if (*position == '"') return position;
    if (*position != '\\' || ++position == end) return nullptr;
    if (*position != '"' && *position != '\\') return nullptr;
  }
}

bool AtLineEnd(const char* position, const char* end) {
  return position == end || Is(kLineEnd, *position);
}

// True when nothing but blanks and a comment follows.
bool AtValueEnd(const char* position, const char* end) {
  position = SkipRegBlanks(position, end);
  return AtLineEnd(position, end) || *position == ';';
}

const char* SkipDigits(const char* position, const char* end) {
  while (position != end && Is(kHexDigit, *position)) ++position;
  return position;
}

// From the position after a backslash to the next line with bytes; null when something else follows.
const char* NextByteLine(const char* position, const char* end, ScannedValue& value) {
  if (!AtValueEnd(position, end)) return nullptr;
  do {
    position = SkipRegBlanks(NextRegLine(position, end), end);
  } while (position != end && (*position == ';' || Is(kLineEnd, *position)));
  value.continues = position == end;
  return position == end || Is(kHexDigit, *position) ? position : nullptr;
}

// Reads a list of bytes up to the end of the value; null when it cannot be read.
const char* ScanBytes(const char* position, const char* end, ScannedValue& value) {
  const char* const begin = position;
  for (;;) {
    while (end - position > 2 && Is(kHexDigit, position[0]) && Is(kHexDigit, position[1]) &&
           position[2] == ',') {
      position += 3;
    }
    position = SkipRegBlanks(position, end);
    if (AtValueEnd(position, end)) break;
    if (*position == '\\') {
      position = NextByteLine(position + 1, end, value);
      if (position == nullptr) return nullptr;
      continue;
    }
    const char* const digitsEnd = SkipDigits(position, end);
    if (digitsEnd == position || digitsEnd - position > 2) return nullptr;
    position = SkipRegBlanks(digitsEnd, end);
    if (AtValueEnd(position, end)) break;
    if (*position++ != ',') return nullptr;
  }
  value.data = {begin, static_cast<std::size_t>(position - begin)};
  return position;
}

const char* ScanHex(const char* position, const char* end, ScannedValue& value) {
  value.type = kRegBinary;
  if (position != end && *position == '(') {
    const char* const digits = ++position;
    position = SkipDigits(position, end);
    if (position == digits || position - digits > kMostDigits || position == end || *position != ')')
      return nullptr;
    value.type = 0;
    for (const char* digit = digits; digit != position; ++digit) {
      const auto low = static_cast<unsigned char>(*digit);
      value.type = value.type << 4 | (low <= '9' ? low - '0' : (low | 0x20U) - 'a' + 10U);
    }
    ++position;
  }
  if (position == end || *position != ':') return nullptr;
  return ScanBytes(position + 1, end, value);
}

// Reads the data after "="; null when it cannot be read.
const char* ScanData(const char* position, const char* end, ScannedValue& value) {
  constexpr std::string_view kDword = "dword:";
  constexpr std::string_view kHex = "hex";
  const std::string_view rest(position, static_cast<std::size_t>(end - position));
  if (rest.empty()) return nullptr;
  if (rest.front() == '"') {
    const char* const close = ClosingQuote(position + 1, end);
    if (close == nullptr) return nullptr;
    value.form = ScannedValue::Form::String;
    value.type = kRegSz;
    value.data = {position + 1, static_cast<std::size_t>(close - position - 1)};
    return close + 1;
  }
  if (rest.front() == '-') {
    value.form = ScannedValue::Form::Delete;
    return position + 1;
  }
  if (StartsWith(rest, kDword)) {
    const char* const digits = position + kDword.size();
    const char* const digitsEnd = SkipDigits(digits, end);
    if (digitsEnd == digits || digitsEnd - digits > kMostDigits) return nullptr;
    value.form = ScannedValue::Form::Dword;
    value.type = kRegDword;
    value.data = {digits, static_cast<std::size_t>(digitsEnd - digits)};
    return digitsEnd;
  }
  if (!StartsWith(rest, kHex)) return nullptr;
  value.form = ScannedValue::Form::Hex;
  return ScanHex(position + kHex.size(), end, value);
}

// The position after the lines of a value that cannot be read. Lines of bytes that follow a backslash belong
// to it, so that it counts as one value.
const char* AfterUnreadable(const char* position, const char* end) {
  for (;;) {
    const char* const next = NextRegLine(position, end);
    const char* last = next;
    while (last != position && (Is(kLineEnd, last[-1]) || last[-1] == ' ' || last[-1] == '\t')) --last;
    const bool goesOn = last != position && last[-1] == '\\';
    const char* const visible = SkipRegBlanks(next, end);
    if (!goesOn || visible == end || !Is(kHexDigit, *visible)) return next;
    position = next;
  }
}

}  // namespace

const char* NextRegLine(const char* position, const char* end) {
  // The library's search is several times faster than a loop, but must not run through the whole of a text
  // whose lines end in CR alone.
  constexpr std::ptrdiff_t kWindow = 256;
  if (position != end && !Is(kLineEnd, *position)) {
    const auto window = static_cast<std::size_t>(std::min(kWindow, end - position));
    if (const void* const feed = std::memchr(position, '\n', window); feed != nullptr) {
      const char* const lineFeed = static_cast<const char*>(feed);
      const void* const other = std::memchr(position, '\r', static_cast<std::size_t>(lineFeed - position));
      position = other == nullptr ? lineFeed : static_cast<const char*>(other);
    }
  }
  while (position != end && !Is(kLineEnd, *position)) ++position;
  if (position == end) return end;
  const bool pair = *position == '\r' && position + 1 != end && position[1] == '\n';
  return position + (pair ? 2 : 1);
}

const char* ScanRegValue(const char* position, const char* end, ScannedValue& value) {
  value = {};
  const char* next = position + 1;
  if (*position == '"') {
    next = ClosingQuote(position + 1, end);
    if (next == nullptr) return AfterUnreadable(position, end);
    value.name = {position + 1, static_cast<std::size_t>(next - position - 1)};
    ++next;
  }
  next = SkipRegBlanks(next, end);
  if (next != end && *next == '=') {
    next = ScanData(SkipRegBlanks(next + 1, end), end, value);
    if (next != nullptr && AtValueEnd(next, end)) return NextRegLine(next, end);
  }
  value.form = ScannedValue::Form::Unreadable;
  value.continues = false;
  return AfterUnreadable(position, end);
}

void ForEachRegValue(std::string_view text, std::size_t begin, std::size_t end,
                     const std::function<void(const ScannedValue&, std::size_t, std::size_t)>& use) {
  const char* const textEnd = text.data() + text.size();
  const auto positionOf = [&](const char* place) { return static_cast<std::size_t>(place - text.data()); };
  const char* position = text.data() + begin;
  while (position < text.data() + end) {
    const char* const line = position;
    position = SkipRegBlanks(position, textEnd);
    if (position == textEnd || (*position != '"' && *position != '@')) {
      position = NextRegLine(position, textEnd);
      continue;
    }
    ScannedValue value;
    position = ScanRegValue(position, textEnd, value);
    if (value.form != ScannedValue::Form::Unreadable) use(value, positionOf(line), positionOf(position));
  }
}

}  // namespace bxvbwiz
