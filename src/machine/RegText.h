#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/Platform.h"

// The text that the registry editor exports: how it is encoded, and how one value is read and written.
namespace bxvbwiz {

inline bool IsTextType(std::uint32_t type) {
  return type == kRegSz || type == kRegExpandSz || type == kRegMultiSz;
}

// A text that is not a registry export; says why, without naming the file.
class RegTextError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class RegEncoding { CodePage, Utf8, Utf16 };

// A registry export, decoded.
struct RegText {
  std::string text;  // UTF-8, complete
  RegEncoding encoding = RegEncoding::CodePage;
  std::size_t body = 0;  // where the line after the header begins
  // The original bytes of lines that encode to other bytes, by their text: a code page may have two codes for
  // a character.
  std::unordered_map<std::string, std::string> irregularLines;
};

// Decodes an export. "REGEDIT4" is in the code page, "Windows Registry Editor Version 5.00" in UTF-8; bytes
// that begin with FF FE are UTF-16 with either header. Throws RegTextError for any other first line and for 4
// GB and more.
RegText DecodeRegText(std::string bytes, const CodePage& codePage);

// Encodes a text that was made from `source`: lines that both have keep their bytes. `text` begins with the
// header.
std::string EncodeRegText(std::string text, const RegText& source, const CodePage& codePage);

// One value of the text, "name"=data, and its kind. The views point into the text.
struct ScannedValue {
  enum class Form { Unreadable, Delete, String, Dword, Hex };
  Form form = Form::Unreadable;
  std::uint32_t type = 0;
  std::string_view name;   // between the quotes, with its backslashes; empty for @
  std::string_view data;   // between the quotes; after the colon for numbers and bytes
  bool continues = false;  // the text ends where another line of bytes is announced
};

// Reads the value at `position`, which is a line's first visible character, a quote or "@". Gives the
// position after the value's last line, even when the value cannot be read.
const char* ScanRegValue(const char* position, const char* end, ScannedValue& value);
// Calls `use` with each readable value whose first line lies in the text from `begin` to `end`, and with the
// positions where its first line begins and its last one ends.
void ForEachRegValue(std::string_view text, std::size_t begin, std::size_t end,
                     const std::function<void(const ScannedValue&, std::size_t, std::size_t)>& use);

// The start of the next line.
const char* NextRegLine(const char* position, const char* end);
inline const char* SkipRegBlanks(const char* position, const char* end) {
  while (position != end && (*position == ' ' || *position == '\t')) ++position;
  return position;
}

// The name of a scanned value.
std::string RegValueName(const ScannedValue& value);
// Its data, in the form of the registry calls. The form must be String, Dword or Hex.
RegistryData RegValueData(const ScannedValue& value, RegEncoding encoding, const CodePage& codePage);

// Whether the text has no line break. Only such a name can be written.
inline bool IsOneLine(std::string_view text) {
  return text.find_first_of("\r\n") == std::string_view::npos;
}

// The lines of a value as the registry editor writes it, each ended by CR LF. `name` must be one line.
std::string FormatRegValue(std::string_view name, const RegistryData& data, RegEncoding encoding,
                           const CodePage& codePage);

}  // namespace bxvbwiz
