#pragma once

#include <map>
#include <string>

#include "platform/machine/MachineProfileStrings.h"
#include "platform/Text.h"

namespace bxvbwiz {

// Bytes are the characters of their value; two bytes that begin with 0x81 are one character, as in a
// double-byte code page: 81 5D, whose second byte is "]", is U+4E00.
class FakeCodePage : public CodePage {
 public:
  std::string Decode(std::string_view bytes) const override {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const bool pair = StartsWith(bytes.substr(i), "\x81\x5D");
      AppendUtf8(text, pair ? 0x4E00 : static_cast<unsigned char>(bytes[i]));
      if (pair) ++i;
    }
    return text;
  }
  std::string Encode(std::string_view text) const override {
    std::string bytes;
    for (std::size_t i = 0; i < text.size();) {
      const char32_t character = NextCharacter(text, i);
      if (character == 0x4E00) {
        bytes += "\x81\x5D";
      } else {
        bytes += character < 0x100 ? static_cast<char>(character) : '?';
      }
    }
    return bytes;
  }
  bool IsAlphaNumeric(char32_t) const override { return true; }
};

// A disk whose files are strings. `C:\missing` is no folder, `C:\readonly.ini` cannot be written.
class FakeProfileStore : public ProfileStore {
 public:
  struct Entry {
    std::string bytes;
    std::uint64_t version = 0;
  };

  std::string Key(const std::string& path) override { return UpperCase(path); }
  SystemError Load(const std::string& path, std::string& bytes, FileStamp& stamp) override {
    ++loads;
    if (StartsWith(Key(path), "C:\\MISSING\\")) return SystemError::PathNotFound;
    const auto entry = files.find(Key(path));
    if (entry == files.end()) return SystemError::FileNotFound;
    if (Key(path) == "C:\\SECRET.INI") return SystemError::AccessDenied;
    bytes = entry->second.bytes;
    stamp.inode = entry->second.version;
    return SystemError::Success;
  }
  bool Changed(const std::string& path, const FileStamp& stamp) override {
    const auto entry = files.find(Key(path));
    return entry == files.end() || entry->second.version != stamp.inode;
  }
  SystemError CheckWritable(const std::string& path) override {
    if (StartsWith(Key(path), "C:\\MISSING\\")) return SystemError::PathNotFound;
    return Key(path) == "C:\\READONLY.INI" ? SystemError::AccessDenied : SystemError::Success;
  }
  SystemError Replace(const std::string& path, std::string_view bytes, FileStamp& stamp) override {
    if (full) return SystemError::DiskFull;
    Put(path, bytes);
    stamp.inode = files[Key(path)].version;
    return SystemError::Success;
  }

  void Put(const std::string& path, std::string_view bytes) {
    files[Key(path)] = {std::string(bytes), ++lastVersion};
  }
  std::string At(const std::string& path) {
    return files.count(Key(path)) ? files[Key(path)].bytes : "(none)";
  }

  std::map<std::string, Entry> files;
  std::uint64_t lastVersion = 0;
  int loads = 0;
  bool full = false;
};

}  // namespace bxvbwiz
