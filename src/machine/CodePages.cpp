#include "machine/CodePages.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "machine/host/Host.h"
#include "machine/SingleByteTables.h"
#include "text/Text.h"
#include "text/Utf16Text.h"

namespace bxvbwiz {
namespace {

// Private characters that stand for the bytes above 0xA0 that belong to no double-byte character.
constexpr unsigned kPrivateBytes = 0xF700;
constexpr char kNotInCodePage = '?';  // the default character of every code page here

// The number of bytes before the first one that is not ASCII; nearly all text is ASCII as a whole.
std::size_t AsciiPrefix(std::string_view text) {
  return std::min(FindNonAscii(text), text.size());
}

bool IsLetterOrDigit(char32_t character) {
  // The system's tables call the raised digits of Latin-1 digits.
  const bool raisedDigit = character == 0xB2 || character == 0xB3 || character == 0xB9;
  return raisedDigit || host::IsLetterOrDigit(character);
}

class MachineCodePage : public CodePage {
 public:
  std::string DecodeAs(int number, std::string_view bytes) const override {
    std::unique_ptr<CodePage>& other = others_[number];
    if (other == nullptr) other = MakeCodePage(number);
    return other == nullptr ? std::string() : other->Decode(bytes);
  }

 private:
  mutable std::map<int, std::unique_ptr<CodePage>>
      others_;  // those that were asked for; some take long to make
};

// What all code pages except UTF-8 share: the way through a text, with long steps over ASCII.
class TableCodePage : public MachineCodePage {
 public:
  explicit TableCodePage(int number) : number_(number) {}
  int Number() const override { return number_; }
  std::string Decode(std::string_view bytes) const override {
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
      const std::size_t ascii = AsciiPrefix(bytes);
      text.append(bytes.substr(0, ascii));
      bytes.remove_prefix(ascii);
      if (!bytes.empty()) AppendUtf8(text, TakeCharacter(bytes));
    }
    return text;
  }

  std::string Encode(std::string_view text) const override {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
      const std::size_t ascii = AsciiPrefix(text);
      bytes.append(text.substr(0, ascii));
      text.remove_prefix(ascii);
      if (text.empty()) break;
      std::size_t length = 0;
      const char32_t character = NextCharacter(text, length);
      text.remove_prefix(length);
      const unsigned code = CodeOf(character);
      if (code > 0xFF) bytes += static_cast<char>(code >> 8);
      bytes += code == 0 ? kNotInCodePage : static_cast<char>(code & 0xFF);
    }
    return bytes;
  }

  bool IsAlphaNumeric(char32_t character) const override {
    if (character >= 0x80 && CodeOf(character) == 0) return false;
    return IsLetterOrDigit(character);
  }

 protected:
  // Removes the first character, which is not ASCII, from `bytes` and gives it.
  virtual char32_t TakeCharacter(std::string_view& bytes) const = 0;
  // One byte, or lead byte * 256 + trail byte; 0 when the code page does not have the character.
  virtual unsigned CodeOf(char32_t character) const = 0;

 private:
  int number_;
};

class SingleByteCodePage : public TableCodePage {
 public:
  explicit SingleByteCodePage(const UpperHalf& table) : TableCodePage(table.codePage) {
    for (unsigned i = 0; i < characters_.size(); ++i) {
      const unsigned byte = 0x80 + i;
      const char16_t character = table.characters[i];
      characters_[i] = character != 0 ? character : static_cast<char16_t>(byte);
      codes_.emplace(characters_[i], byte);
    }
  }

 protected:
  char32_t TakeCharacter(std::string_view& bytes) const override {
    const auto byte = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    return characters_[byte - 0x80u];
  }

  unsigned CodeOf(char32_t character) const override {
    const auto found = codes_.find(character);
    return found != codes_.end() ? found->second : 0;
  }

 private:
  std::array<char16_t, 128> characters_ = {};
  std::unordered_map<char32_t, unsigned> codes_;
};

// Codes that are read but never written: their characters have another code further on, which is written
// instead. Of all other codes for one character the first is written.
bool IsRepeated(int number, unsigned code) {
  if (number == 932) return code >= 0xED00 && code <= 0xEEFF;  // NEC's selection of IBM's characters
  if (number == 950) return code == 0xA2CC || code == 0xA2CE;  // ten and thirty among the numerals
  return false;
}

class DoubleByteCodePage : public TableCodePage {
 public:
  DoubleByteCodePage(int number, std::vector<char16_t> characters)
      : TableCodePage(number), characters_(std::move(characters)), codes_(0x10000) {
    for (const bool repeated : {false, true}) {
      for (unsigned code = 0x80; code < characters_.size(); ++code) {
        const char16_t character = characters_[code];
        if (character < 0x80 || codes_[character] != 0 || IsRepeated(number, code) != repeated) continue;
        codes_[character] = static_cast<std::uint16_t>(code);
      }
    }
    for (unsigned byte = 0x80; byte < 0x100; ++byte) {
      if (characters_[byte] != 0) continue;
      // A lead byte written for a letter of Latin-1 would swallow the character after it.
      const unsigned character = byte <= 0xA0 ? byte : kPrivateBytes + byte;
      characters_[byte] = static_cast<char16_t>(character);
      if (codes_[character] == 0) codes_[character] = static_cast<std::uint16_t>(byte);
    }
  }

 protected:
  char32_t TakeCharacter(std::string_view& bytes) const override {
    const std::size_t lead = static_cast<unsigned char>(bytes.front());
    if (bytes.size() > 1) {
      const char16_t pair = characters_[lead << 8u | static_cast<unsigned char>(bytes[1])];
      if (pair != 0) {
        bytes.remove_prefix(2);
        return pair;
      }
    }
    bytes.remove_prefix(1);
    return characters_[lead];
  }

  unsigned CodeOf(char32_t character) const override {
    return character < codes_.size() ? codes_[character] : 0;
  }

 private:
  std::vector<char16_t> characters_;  // by code
  std::vector<std::uint16_t> codes_;  // by character
};

class Utf8CodePage : public MachineCodePage {
 public:
  std::string Decode(std::string_view bytes) const override {
    const std::size_t ascii = AsciiPrefix(bytes);
    std::string text(bytes.substr(0, ascii));
    for (std::size_t position = ascii; position < bytes.size();) {
      AppendUtf8(text, NextCharacter(bytes, position));
    }
    return text;
  }
  std::string Encode(std::string_view text) const override { return std::string(text); }
  bool IsAlphaNumeric(char32_t character) const override { return IsLetterOrDigit(character); }
  int Number() const override { return kUtf8CodePage; }
};

}  // namespace

std::unique_ptr<CodePage> MakeCodePage(int number) {
  if (number == kUtf8CodePage) return std::make_unique<Utf8CodePage>();
  if (const UpperHalf* table = FindUpperHalf(number)) return std::make_unique<SingleByteCodePage>(*table);
  if (number != 932 && number != 936 && number != 949 && number != 950) return nullptr;
  std::vector<char16_t> characters = host::DoubleByteCharacters(number);
  if (characters.empty()) return nullptr;
  return std::make_unique<DoubleByteCodePage>(number, std::move(characters));
}

}  // namespace bxvbwiz
