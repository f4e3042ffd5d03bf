#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/Platform.h"

// The text that the registry editor exports: how it is encoded, and how one value is read and written.
namespace bxvbwiz {

// Types of a value's data, as in winnt.h.
constexpr std::uint32_t kRegSz = 1;
constexpr std::uint32_t kRegExpandSz = 2;
constexpr std::uint32_t kRegBinary = 3;
constexpr std::uint32_t kRegDword = 4;
constexpr std::uint32_t kRegMultiSz = 7;

inline bool IsTextType(std::uint32_t type) {
  return type == kRegSz || type == kRegExpandSz || type == kRegMultiSz;
}

// A text that is no registry export; says why, without naming the file.
class RegTextError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class RegEncoding { CodePage, Utf8, Utf16 };

// A registry export, decoded.
struct RegText {
  std::string text;  // UTF-8, complete
  RegEncoding encoding = RegEncoding::CodePage;
  std::size_t body = 0;  // where the line behind the header begins
  // The bytes of lines that encoding their text would not give back, by that text: a code page may have two
  // codes for a character.
  std::unordered_map<std::string, std::string> irregularLines;
};

// Decodes an export. "REGEDIT4" is in the code page, "Windows Registry Editor Version 5.00" in UTF-8, either
// in UTF-16 when the bytes begin with FF FE. Throws RegTextError for any other first line and for 4 GB and
// more.
RegText DecodeRegText(std::string bytes, const CodePage& codePage);

// The other way round for a text that was made of `source`: lines that are in both keep their bytes. `text`
// begins with the header.
std::string EncodeRegText(std::string text, const RegText& source, const CodePage& codePage);

// Where one line "name"=data lies in the text, and of what kind it is. The views point into the text.
struct ScannedValue {
  enum class Form { Unreadable, Delete, String, Dword, Hex };
  Form form = Form::Unreadable;
  std::uint32_t type = 0;
  std::string_view name;   // between the quotes, with its backslashes; empty for @
  std::string_view data;   // between the quotes; behind the colon for numbers and bytes
  bool continues = false;  // the text ended where another line of bytes was announced
};

// Reads the value at `position`, which is at a line's first visible character, a quote or "@". Gives the
// position behind the value's last line, also when it cannot be read.
const char* ScanRegValue(const char* position, const char* end, ScannedValue& value);

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

// The line, or lines, of a value as the registry editor writes it, each ended by CR LF. `name` must not hold
// a line break.
std::string FormatRegValue(std::string_view name, const RegistryData& data, RegEncoding encoding,
                           const CodePage& codePage);

}  // namespace bxvbwiz
