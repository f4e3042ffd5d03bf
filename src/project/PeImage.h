#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace bxvbwiz {

// Numbers of a file, low byte first. Bytes behind the end count as zero, wherever `offset` lies.
std::uint32_t GetLongFromBytes(std::string_view bytes, std::uint64_t offset);
std::uint16_t GetWordFromBytes(std::string_view bytes, std::uint64_t offset);

// What stands behind `offset`; empty when that is not inside.
inline std::string_view BytesFrom(std::string_view bytes, std::uint64_t offset) {
  return offset < bytes.size() ? bytes.substr(static_cast<std::size_t>(offset)) : std::string_view();
}

// The layout of a Portable Executable in memory. Nothing in the file is trusted; no call fails or takes more
// time than the logarithm of the number of sections.
class PeImage {
 public:
  enum class Directory { Exports = 0, Imports = 1 };  // IMAGE_DIRECTORY_ENTRY_... in winnt.h

  // `newHeader` is the offset of the signature "PE". The bytes must outlive the image.
  PeImage(std::string_view file, std::uint32_t newHeader);

  // True when the optional header is that of a 64-bit module; its directories are not read.
  bool Is64Bit() const { return is64Bit_; }
  // The address of a table; 0 when there is none.
  std::uint32_t AddressOf(Directory directory) const;
  // The file's bytes from an address on, as far as they go: what a section has behind them is zero. Nothing
  // when the module has no such address.
  std::optional<std::string_view> At(std::uint64_t address) const;
  // The text at an address up to its NUL, at most 260 bytes; empty when there is none.
  std::string_view NameAt(std::uint32_t address) const;

 private:
  struct Section {
    std::uint64_t begin;  // addresses, relative to the module's base
    std::uint64_t end;
    std::string_view bytes;  // its part of the file
  };
  // Addresses that belong to one section.
  struct Range {
    std::uint64_t begin;
    std::uint64_t end;
    std::size_t section;
  };
  void ReadSections(std::uint32_t fileHeader);
  void DivideAddresses();

  std::string_view file_;
  std::string_view optionalHeader_;
  bool is64Bit_ = false;
  std::vector<Section> sections_;  // in the file's order
  std::vector<Range> ranges_;      // by address, without overlap
};

}  // namespace bxvbwiz
