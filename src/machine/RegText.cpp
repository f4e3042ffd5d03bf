#include "machine/RegText.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "text/Text.h"
#include "text/Utf16Text.h"

namespace bxvbwiz {
namespace {

constexpr std::string_view kHeader4 = "REGEDIT4";
constexpr std::string_view kHeader5 = "Windows Registry Editor Version 5.00";
constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kHexDigits = "0123456789abcdef";
// The registry editor breaks lines of bytes after this column.
constexpr std::size_t kLastColumn = 76;

// Converts the lines that are not ASCII; a line's end is never part of a character in a code page.
template <typename Convert>
std::string ConvertLines(std::string text, Convert convert) {
  std::size_t other = FindNonAscii(text);
  if (other == std::string::npos) return text;
  std::string converted;
  converted.reserve(text.size() + text.size() / 16);
  std::size_t copied = 0;
  for (; other != std::string::npos; other = FindNonAscii(text, copied)) {
    const std::size_t begin = text.find_last_of(kLineEnds, other) + 1;  // npos + 1 is 0
    const std::size_t end = std::min(text.find_first_of(kLineEnds, other), text.size());
    converted.append(text, copied, begin - copied);
    converted.append(convert(std::string_view(text).substr(begin, end - begin)));
    copied = end;
  }
  converted.append(text, copied);
  return converted;
}

// The position of the line after `header`; npos when the first line is not that header.
std::size_t AfterHeader(std::string_view text, std::string_view header) {
  const std::size_t start = std::min(text.find_first_not_of(" \t"), text.size());
  const std::size_t end = start + header.size();
  if (!StartsWith(text.substr(start), header)) return std::string_view::npos;
  if (end < text.size() && text[end] != '\r' && text[end] != '\n') return std::string_view::npos;
  return static_cast<std::size_t>(NextRegLine(text.data() + end, text.data() + text.size()) - text.data());
}

constexpr std::uint8_t kNoDigit = 0xFF;

std::array<std::uint8_t, 256> MakeDigits() {
  std::array<std::uint8_t, 256> digits{};
  digits.fill(kNoDigit);
  for (std::size_t i = 0; i < kHexDigits.size(); ++i) {
    digits[static_cast<unsigned char>(kHexDigits[i])] = static_cast<std::uint8_t>(i);
  }
  for (std::uint8_t i = 10; i < 16; ++i) digits[static_cast<std::size_t>('A' + i - 10)] = i;
  return digits;
}

const std::array<std::uint8_t, 256> kDigitOf = MakeDigits();

std::uint8_t Digit(char c) {
  return kDigitOf[static_cast<unsigned char>(c)];
}

std::uint32_t HexNumber(std::string_view digits) {
  std::uint32_t number = 0;
  for (const char c : digits) number = number << 4 | Digit(c);
  return number;
}

std::string Unescape(std::string_view escaped) {
  std::string text;
  text.reserve(escaped.size());
  for (std::size_t i = 0; i < escaped.size(); ++i) {
    if (escaped[i] == '\\') ++i;
    text.push_back(escaped[i]);
  }
  return text;
}

void AppendQuoted(std::string& line, std::string_view text) {
  line += '"';
  for (const char c : text) {
    if (c == '"' || c == '\\') line += '\\';
    line += c;
  }
  line += '"';
}

std::string HexBytes(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ';') i = text.find_first_of("\r\n", i);
    if (i == std::string_view::npos) break;
    std::uint8_t value = Digit(text[i]);
    if (value == kNoDigit) continue;
    if (i + 1 < text.size() && Digit(text[i + 1]) != kNoDigit) {
      value = static_cast<std::uint8_t>(value << 4 | Digit(text[++i]));
    }
    bytes.push_back(static_cast<char>(value));
  }
  return bytes;
}

void AppendHex(std::string& line, std::string_view bytes) {
  std::size_t column = line.size();
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto value = static_cast<unsigned char>(bytes[i]);
    line += kHexDigits[value >> 4];
    line += kHexDigits[value & 15U];
    if (i + 1 == bytes.size()) break;
    line += ',';
    column += 3;
    if (column > kLastColumn) {
      line += "\\\r\n  ";
      column = 2;
    }
  }
}

// The text of a string value that can stand between quotes: one line and its NUL, without another.
bool FitsQuotes(const RegistryData& data) {
  return data.type == kRegSz && !data.data.empty() && data.data.find('\0') == data.data.size() - 1 &&
         IsOneLine(data.data);
}

}  // namespace

RegText DecodeRegText(std::string bytes, const CodePage& codePage) {
  RegText read;
  if (StartsWith(bytes, kUtf16Mark)) {
    read.encoding = RegEncoding::Utf16;
    bytes = FromUtf16(std::string_view(bytes).substr(kUtf16Mark.size()));
  }
  const std::size_t mark = StartsWith(bytes, kUtf8Mark) ? kUtf8Mark.size() : 0;
  std::size_t body = AfterHeader(std::string_view(bytes).substr(mark), kHeader5);
  if (body != std::string_view::npos) {
    if (read.encoding != RegEncoding::Utf16) read.encoding = RegEncoding::Utf8;
    read.text = std::move(bytes);
    body += mark;
  } else {
    body = mark == 0 ? AfterHeader(bytes, kHeader4) : body;
    if (body == std::string_view::npos) {
      throw RegTextError("the first line is neither \"" + std::string(kHeader4) + "\" nor \"" +
                         std::string(kHeader5) + "\"");
    }
    read.text = std::move(bytes);
    if (read.encoding == RegEncoding::CodePage) {
      read.text = ConvertLines(std::move(read.text), [&](std::string_view line) {
        std::string decoded = codePage.Decode(line);
        if (codePage.Encode(decoded) != line) read.irregularLines.emplace(decoded, line);
        return decoded;
      });
    }
  }
  read.body = body;
  if (read.text.size() >= std::numeric_limits<std::uint32_t>::max()) {
    throw RegTextError("the registry text has 4 GB or more");
  }
  return read;
}

std::string EncodeRegText(std::string text, const RegText& source, const CodePage& codePage) {
  if (source.encoding == RegEncoding::Utf8) return text;
  if (source.encoding == RegEncoding::Utf16) return std::string(kUtf16Mark) + ToUtf16(text);
  return ConvertLines(std::move(text), [&](std::string_view line) {
    if (source.irregularLines.empty()) return codePage.Encode(line);
    const auto irregular = source.irregularLines.find(std::string(line));
    return irregular != source.irregularLines.end() ? irregular->second : codePage.Encode(line);
  });
}

std::string RegValueName(const ScannedValue& value) {
  return Unescape(value.name);
}

RegistryData RegValueData(const ScannedValue& value, RegEncoding encoding, const CodePage& codePage) {
  if (value.form == ScannedValue::Form::String) return {kRegSz, Unescape(value.data) + '\0'};
  if (value.form == ScannedValue::Form::Dword) {
    const std::uint32_t number = HexNumber(value.data);
    RegistryData data{kRegDword, {}};
    for (unsigned shift = 0; shift < 32; shift += 8) {
      data.data.push_back(static_cast<char>(number >> shift & 0xFF));
    }
    return data;
  }
  std::string bytes = HexBytes(value.data);
  if (!IsTextType(value.type)) return {value.type, std::move(bytes)};
  return {value.type, encoding == RegEncoding::Utf16 ? FromUtf16(bytes) : codePage.Decode(bytes)};
}

std::string FormatRegValue(std::string_view name, const RegistryData& data, RegEncoding encoding,
                           const CodePage& codePage) {
  std::string line;
  if (name.empty()) {
    line = '@';
  } else {
    AppendQuoted(line, name);
  }
  line += '=';
  if (FitsQuotes(data)) {
    AppendQuoted(line, std::string_view(data.data).substr(0, data.data.size() - 1));
  } else if (data.type == kRegDword && data.data.size() == 4) {
    line += "dword:";
    for (auto byte = data.data.rbegin(); byte != data.data.rend(); ++byte) {
      line += kHexDigits[static_cast<unsigned char>(*byte) >> 4];
      line += kHexDigits[static_cast<unsigned char>(*byte) & 15U];
    }
  } else {
    line += "hex";
    if (data.type != kRegBinary) {
      std::string digits;
      std::uint32_t rest = data.type;
      do {
        digits.insert(digits.begin(), kHexDigits[rest & 15U]);
        rest >>= 4;
      } while (rest != 0);
      line += '(' + digits + ')';
    }
    line += ':';
    if (!IsTextType(data.type)) {
      AppendHex(line, data.data);
    } else {
      AppendHex(line, encoding == RegEncoding::Utf16 ? ToUtf16(data.data) : codePage.Encode(data.data));
    }
  }
  return line + "\r\n";
}

}  // namespace bxvbwiz
