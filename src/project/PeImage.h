#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace bxvbwiz {

// How an executable begins, and where it has the offset of its newer header: e_magic and e_lfanew of
// IMAGE_DOS_HEADER, and IMAGE_NT_SIGNATURE, in winnt.h.
constexpr std::uint16_t kDosSignature = 0x5A4D;  // "MZ"
constexpr std::uint32_t kNewHeaderOffset = 60;
constexpr std::uint32_t kPeSignature = 0x00004550;  // "PE"

// Numbers of a file, low byte first. Bytes after the end count as zero, wherever `offset` lies.
std::uint32_t GetLongFromBytes(std::string_view bytes, std::uint64_t offset);
std::uint16_t GetWordFromBytes(std::string_view bytes, std::uint64_t offset);

// What follows `offset`; empty when that is not inside.
inline std::string_view BytesFrom(std::string_view bytes, std::uint64_t offset) {
  return offset < bytes.size() ? bytes.substr(static_cast<std::size_t>(offset)) : std::string_view();
}

// The bytes of a file. Parts that are not asked for need not be read.
class BytesSource {
 public:
  virtual ~BytesSource() = default;
  // How many bytes there are.
  virtual std::uint64_t Size() const = 0;
  // The bytes from `offset` on, at most `size`; fewer where the file ends or cannot be read. They stay valid
  // as long as the source.
  virtual std::string_view Part(std::uint64_t offset, std::size_t size) const = 0;
};

// Bytes in memory, which outlive this.
class BytesInMemory : public BytesSource {
 public:
  explicit BytesInMemory(std::string_view bytes) : bytes_(bytes) {}
  std::uint64_t Size() const override { return bytes_.size(); }
  std::string_view Part(std::uint64_t offset, std::size_t size) const override {
    return BytesFrom(bytes_, offset).substr(0, size);
  }

 private:
  std::string_view bytes_;
};

// The layout of a Portable Executable in memory. Nothing in the file is trusted; no call fails or takes more
// time than the logarithm of the number of sections.
class PeImage {
 public:
  enum class Directory { Exports = 0, Imports = 1, Resources = 2 };  // IMAGE_DIRECTORY_ENTRY_... in winnt.h

  // `newHeader` is the offset of the signature "PE". The file must outlive the image.
  PeImage(const BytesSource& file, std::uint32_t newHeader);

  // True when the optional header is that of a 64-bit module; its directories are not read.
  bool Is64Bit() const { return is64Bit_; }
  // The address of a table; 0 when there is none.
  std::uint32_t AddressOf(Directory directory) const;
  // The file's bytes from an address on, at most `size`, as far as they go: what a section has after
  // them is zero. Nothing when the module has no such address.
  std::optional<std::string_view> At(std::uint64_t address, std::size_t size) const;
  // The text at an address up to its NUL, at most 260 bytes; empty when there is none.
  std::string_view NameAt(std::uint32_t address) const;

 private:
  struct Section {
    std::uint64_t begin;  // addresses, relative to the module's base
    std::uint64_t end;
    std::uint64_t raw;  // its part of the file
    std::uint64_t rawSize;
  };
  // Addresses that belong to one section.
  struct Range {
    std::uint64_t begin;
    std::uint64_t end;
    std::size_t section;
  };
  void ReadSections(std::uint32_t fileHeader);
  void DivideAddresses();

  const BytesSource& file_;
  std::string_view optionalHeader_;
  bool is64Bit_ = false;
  std::vector<Section> sections_;  // in the file's order
  std::vector<Range> ranges_;      // by address, without overlap
};

}  // namespace bxvbwiz
