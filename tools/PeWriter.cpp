#include "tools/PeWriter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace bxvbwiz {
namespace {

// Field values and sizes are those of the IMAGE_... structures in winnt.h.
constexpr std::uint32_t kHeadersSize = 0x200;
constexpr std::uint32_t kSectionAddress = 0x1000;
constexpr std::uint32_t kFileAlignment = 0x200;
constexpr std::uint32_t kSectionAlignment = 0x1000;
constexpr std::uint32_t kNewHeader = 0x40;
constexpr std::uint32_t kOptionalHeaderSize = 224;
constexpr std::size_t kDescriptorSize = 20;

std::uint32_t RoundUp(std::size_t size, std::uint32_t unit) {
  return (static_cast<std::uint32_t>(size) + unit - 1) / unit * unit;
}

// A byte sequence to which little-endian numbers and texts are appended.
class Bytes {
 public:
  void Word(std::uint32_t value) {
    for (unsigned shift = 0; shift < 16; shift += 8) text += static_cast<char>(value >> shift & 0xFFU);
  }
  void Long(std::uint32_t value) {
    Word(value & 0xFFFFU);
    Word(value >> 16);
  }
  void Longs(std::initializer_list<std::uint32_t> values) {
    for (const std::uint32_t value : values) Long(value);
  }
  void Name(const std::string& name) { text.append(name).append(1, '\0'); }
  void PadTo(std::size_t size) { text.resize(std::max(size, text.size())); }
  // The address that the next byte has in memory, when these are a section's bytes.
  std::uint32_t Address() const { return kSectionAddress + static_cast<std::uint32_t>(text.size()); }

  std::string text;
};

struct Table {
  std::uint32_t address = 0;
  std::uint32_t size = 0;
};

Table AddImports(Bytes& section, const std::vector<std::string>& imports) {
  if (imports.empty()) return {};
  // After the descriptors, two equal lists and the name of each module.
  constexpr std::uint32_t kFirstOrdinal = 0x80000001U;
  const Table table{section.Address(), static_cast<std::uint32_t>((imports.size() + 1) * kDescriptorSize)};
  Bytes descriptors;
  Bytes rest;
  const std::uint32_t restAddress = table.address + table.size;
  for (const std::string& import : imports) {
    const std::uint32_t lists = restAddress + static_cast<std::uint32_t>(rest.text.size());
    rest.Longs({kFirstOrdinal, 0, kFirstOrdinal, 0});
    rest.Name(import);
    rest.PadTo(RoundUp(rest.text.size(), 4));
    // The zeros are time stamp and forwarder chain: not bound.
    descriptors.Longs({lists, 0, 0, lists + 16, lists + 8});
  }
  descriptors.PadTo(table.size);
  section.text += descriptors.text + rest.text;
  return table;
}

Table AddExports(Bytes& section, std::vector<std::string> exports) {
  if (exports.empty()) return {};
  // The loader finds names by bisection.
  std::sort(exports.begin(), exports.end());
  const auto count = static_cast<std::uint32_t>(exports.size());
  constexpr std::uint32_t kDirectorySize = 40;
  Table table{section.Address(), 0};
  const std::uint32_t functions = table.address + kDirectorySize;
  const std::uint32_t names = functions + 4 * count;
  const std::uint32_t ordinals = names + 4 * count;
  const std::uint32_t moduleName = ordinals + 2 * count;

  Bytes texts;
  texts.Name("made.dll");
  std::vector<std::uint32_t> addresses;
  for (const std::string& name : exports) {
    addresses.push_back(moduleName + static_cast<std::uint32_t>(texts.text.size()));
    texts.Name(name);
  }
  // After characteristics, time stamp and version; 1 is the first ordinal.
  section.Longs({0, 0, 0, moduleName, 1, count, count, functions, names, ordinals});
  for (std::uint32_t ordinal = 0; ordinal < count; ++ordinal) section.Long(kSectionAddress);
  for (const std::uint32_t address : addresses) section.Long(address);
  for (std::uint32_t ordinal = 0; ordinal < count; ++ordinal) section.Word(ordinal);
  section.text += texts.text;
  table.size = section.Address() - table.address;
  return table;
}

// The tree of resources has three levels: type, number and language.
Table AddResources(Bytes& section, const std::vector<std::string>& libraries) {
  if (libraries.empty()) return {};
  constexpr std::uint32_t kDirectorySize = 16;
  constexpr std::uint32_t kEntrySize = 8;
  constexpr std::uint32_t kDataEntrySize = 16;
  constexpr std::uint32_t kHighBit = 0x80000000U;
  const auto count = static_cast<std::uint32_t>(libraries.size());
  section.PadTo(RoundUp(section.text.size(), 4));
  const Table begin{section.Address(), 0};
  const std::uint32_t numbers = kDirectorySize + kEntrySize;
  const std::uint32_t languages = numbers + kDirectorySize + count * kEntrySize;
  const std::uint32_t entries = languages + count * (kDirectorySize + kEntrySize);
  const std::uint32_t name = entries + count * kDataEntrySize;
  Bytes bytes;
  const auto directory = [&](std::uint32_t named, std::uint32_t numbered) {
    bytes.Longs({0, 0, 0});
    bytes.Word(named);
    bytes.Word(numbered);
  };
  directory(1, 0);
  bytes.Longs({name | kHighBit, numbers | kHighBit});
  directory(0, count);
  for (std::uint32_t i = 0; i < count; ++i)
    bytes.Longs({i + 1, (languages + i * (kDirectorySize + kEntrySize)) | kHighBit});
  for (std::uint32_t i = 0; i < count; ++i) {
    directory(0, 1);
    bytes.Longs({0, entries + i * kDataEntrySize});
  }
  const std::string type = "TYPELIB";
  std::uint32_t data = begin.address + name + 2 + 2 * static_cast<std::uint32_t>(type.size());
  for (const std::string& library : libraries) {
    bytes.Longs({data, static_cast<std::uint32_t>(library.size()), 0, 0});
    data += static_cast<std::uint32_t>(library.size());
  }
  bytes.Word(static_cast<std::uint32_t>(type.size()));
  for (const char letter : type) bytes.Word(static_cast<unsigned char>(letter));
  for (const std::string& library : libraries) bytes.text += library;
  section.text += bytes.text;
  return {begin.address, section.Address() - begin.address};
}

void AddOptionalHeader(Bytes& file, std::uint32_t rawSize, std::uint32_t imageSize, const Table& exports,
                       const Table& imports, const Table& resources) {
  constexpr std::uint32_t kImageBase = 0x10000000;
  constexpr std::uint32_t kDirectories = 16;
  const std::size_t end = file.text.size() + kOptionalHeaderSize;
  file.Longs({0x10B, rawSize, 0, 0});                 // PE32; bytes of code, initialized and other data
  file.Longs({0, kSectionAddress, kSectionAddress});  // no entry point
  file.Longs({kImageBase, kSectionAlignment, kFileAlignment});
  file.Longs({4, 4, 4, 0});  // operating system, image and subsystem version 4.0
  file.Longs({imageSize, kHeadersSize, 0});
  file.Long(2);                                      // graphical subsystem
  file.Longs({0x100000, 0x1000, 0x100000, 0x1000});  // stack and heap: reserved, committed
  file.Longs({0, kDirectories, exports.address, exports.size, imports.address, imports.size,
              resources.address, resources.size});
  file.PadTo(end);
}

}  // namespace

std::string MakeTypeLibrary(const LibraryHead& head) {
  constexpr std::uint32_t kHeaderSize = 0x54;
  constexpr std::uint32_t kSegments = 15;
  constexpr std::uint32_t kNone = 0xFFFFFFFFU;
  constexpr std::uint32_t kGuidSize = 16;
  const std::uint32_t data = kHeaderSize + kSegments * 16;
  Bytes file;
  file.Longs({0x5446534D, 0x10002, 0, head.language, head.language, 0x41});
  file.Word(head.major);
  file.Word(head.minor);
  // Library flags, type infos, description.
  file.Longs({0, 0, head.description.empty() ? kNone : 0});
  file.PadTo(0x38);
  file.Longs({kNone, kNone, kNone});
  file.PadTo(kHeaderSize);
  for (std::uint32_t segment = 0; segment < kSegments; ++segment) {
    std::uint32_t size = 0;
    if (segment == 5) size = kGuidSize;
    if (segment == 8) size = 2 + static_cast<std::uint32_t>(head.description.size());
    file.Longs({segment == 8 ? data + kGuidSize : data, size, kNone, 15});
  }
  constexpr std::size_t kOrder[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  for (const std::size_t index : kOrder)
    file.text += static_cast<char>(std::stoul(head.guid.substr(2 * index, 2), nullptr, 16));
  file.Word(static_cast<std::uint32_t>(head.description.size()));
  file.text += head.description;
  return file.text;
}

std::string MakePe(const std::vector<std::string>& imports, const std::vector<std::string>& exports,
                   const std::vector<std::string>& libraries) {
  Bytes section;
  section.text = std::string("\x33\xC0\xC3\x90", 4);  // xor eax, eax; ret; nop
  const Table importTable = AddImports(section, imports);
  const Table exportTable = AddExports(section, exports);
  const Table resourceTable = AddResources(section, libraries);
  const std::uint32_t virtualSize = section.Address() - kSectionAddress;
  const std::uint32_t rawSize = RoundUp(virtualSize, kFileAlignment);
  section.PadTo(rawSize);

  Bytes file;
  file.text = "MZ";
  file.PadTo(0x18);
  file.Word(kNewHeader);  // a relocation table after the DOS header: not a plain DOS program
  file.PadTo(0x3C);
  file.Long(kNewHeader);
  file.Long(0x00004550);  // "PE"
  file.Word(0x14C);       // Intel 386
  file.Word(1);           // sections
  file.Longs({0, 0, 0});  // time stamp, symbols
  file.Word(kOptionalHeaderSize);
  file.Word(0x2102);  // executable, 32-bit, DLL
  AddOptionalHeader(file, rawSize, kSectionAddress + RoundUp(virtualSize, kSectionAlignment), exportTable,
                    importTable, resourceTable);
  file.text += std::string(".text\0\0\0", 8);
  file.Longs({virtualSize, kSectionAddress, rawSize, kHeadersSize});
  // No relocations or line numbers; code, executable, readable, writable.
  file.Longs({0, 0, 0, 0xE0000020U});
  file.PadTo(kHeadersSize);
  return file.text + section.text;
}

}  // namespace bxvbwiz
