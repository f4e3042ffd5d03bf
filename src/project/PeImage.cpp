#include "project/PeImage.h"

#include <algorithm>
#include <functional>
#include <queue>

namespace bxvbwiz {
namespace {

// Sizes and offsets of IMAGE_NT_HEADERS32 and IMAGE_SECTION_HEADER in winnt.h.
constexpr std::uint32_t kSignatureSize = 4;
constexpr std::uint32_t kFileHeaderSize = 20;
constexpr std::uint32_t kNumberOfSections = 2;  // in the file header
constexpr std::uint32_t kSizeOfOptionalHeader = 16;
constexpr std::size_t kOptionalHeaderSize = 224;
constexpr std::uint16_t kMagic64Bit = 0x20B;
constexpr std::uint32_t kSectionAlignment = 32;  // in the optional header
constexpr std::uint32_t kSizeOfHeaders = 60;
constexpr std::uint32_t kNumberOfDirectories = 92;
constexpr std::uint32_t kDirectories = 96;
constexpr std::uint32_t kDirectorySize = 8;
constexpr std::uint32_t kSectionHeaderSize = 40;
constexpr std::uint32_t kVirtualSize = 8;  // in a section header
constexpr std::uint32_t kVirtualAddress = 12;
constexpr std::uint32_t kRawSize = 16;
constexpr std::uint32_t kRawPointer = 20;

constexpr std::uint64_t kPage = 0x1000;
constexpr std::uint32_t kSector = 0x200;
constexpr std::size_t kLongestName = 260;

std::uint64_t RoundUp(std::uint64_t size, std::uint64_t unit) {
  return (size + unit - 1) / unit * unit;
}

}  // namespace

std::uint32_t GetLongFromBytes(std::string_view bytes, std::uint64_t offset) {
  const std::string_view four = BytesFrom(bytes, offset).substr(0, 4);
  std::uint32_t number = 0;
  for (std::size_t index = four.size(); index > 0; --index)
    number = number << 8 | static_cast<unsigned char>(four[index - 1]);
  return number;
}

std::uint16_t GetWordFromBytes(std::string_view bytes, std::uint64_t offset) {
  return static_cast<std::uint16_t>(GetLongFromBytes(bytes, offset) & 0xFFFFU);
}

PeImage::PeImage(const BytesSource& file, std::uint32_t newHeader) : file_(file) {
  const std::uint64_t fileHeader = std::uint64_t{newHeader} + kSignatureSize;
  optionalHeader_ = file.Part(fileHeader + kFileHeaderSize, kOptionalHeaderSize);
  is64Bit_ = GetWordFromBytes(optionalHeader_, 0) == kMagic64Bit;
  if (is64Bit_) return;
  ReadSections(newHeader + kSignatureSize);
  DivideAddresses();
}

void PeImage::ReadSections(std::uint32_t fileHeader) {
  // With an alignment below the page size the loader takes the file as it stands; else it maps whole pages
  // from whole sectors.
  const std::uint32_t alignment = GetLongFromBytes(optionalHeader_, kSectionAlignment);
  const bool wholePages = alignment == 0 || alignment >= kPage;

  const std::string_view header = file_.Part(fileHeader, kFileHeaderSize);
  const std::uint64_t table =
      std::uint64_t{fileHeader} + kFileHeaderSize + GetWordFromBytes(header, kSizeOfOptionalHeader);
  std::size_t count = GetWordFromBytes(header, kNumberOfSections);
  std::string_view headers = file_.Part(table, count * kSectionHeaderSize);
  count = std::min<std::size_t>(count, headers.size() / kSectionHeaderSize + 1);
  sections_.reserve(count);
  for (; count > 0 && !headers.empty(); --count) {
    const std::uint32_t rawSize = GetLongFromBytes(headers, kRawSize);
    const std::uint32_t virtualSize = GetLongFromBytes(headers, kVirtualSize);
    std::uint64_t size = virtualSize != 0 ? virtualSize : rawSize;
    if (wholePages) size = RoundUp(size, kPage);
    const std::uint64_t begin = GetLongFromBytes(headers, kVirtualAddress);

    std::uint32_t raw = GetLongFromBytes(headers, kRawPointer);
    // A section without a raw pointer is all zero.
    const std::uint64_t used = raw == 0 ? 0 : std::min<std::uint64_t>(rawSize, size);
    if (wholePages) raw -= raw % kSector;
    if (size != 0) sections_.push_back({begin, begin + size, raw, used});
    headers = BytesFrom(headers, kSectionHeaderSize);
  }
}

// Of sections that overlap, the first in the table has the address. A sweep over all ends, so that a file of
// 65,535 overlapping sections costs no more to search than a sound one.
void PeImage::DivideAddresses() {
  std::vector<std::uint64_t> ends;
  std::vector<std::size_t> byBegin;
  for (const Section& section : sections_) {
    byBegin.push_back(byBegin.size());
    ends.insert(ends.end(), {section.begin, section.end});
  }
  std::sort(ends.begin(), ends.end());
  ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
  std::sort(byBegin.begin(), byBegin.end(), [this](std::size_t left, std::size_t right) {
    return sections_[left].begin < sections_[right].begin;
  });

  // The sections that have begun, the first of the table on top; those that have ended are dropped when they
  // come up.
  std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> begun;
  auto next = byBegin.begin();
  for (std::size_t index = 0; index + 1 < ends.size(); ++index) {
    for (; next != byBegin.end() && sections_[*next].begin <= ends[index]; ++next) begun.push(*next);
    while (!begun.empty() && sections_[begun.top()].end <= ends[index]) begun.pop();
    if (begun.empty()) continue;
    const Range range{ends[index], ends[index + 1], begun.top()};
    if (!ranges_.empty() && ranges_.back().section == range.section && ranges_.back().end == range.begin)
      ranges_.back().end = range.end;
    else
      ranges_.push_back(range);
  }
}

std::uint32_t PeImage::AddressOf(Directory directory) const {
  const auto index = static_cast<std::uint32_t>(directory);
  if (is64Bit_ || index >= GetLongFromBytes(optionalHeader_, kNumberOfDirectories)) return 0;
  return GetLongFromBytes(optionalHeader_, kDirectories + index * kDirectorySize);
}

std::optional<std::string_view> PeImage::At(std::uint64_t address, std::size_t size) const {
  const auto isBefore = [](std::uint64_t wanted, const Range& range) { return wanted < range.begin; };
  const auto after = std::upper_bound(ranges_.begin(), ranges_.end(), address, isBefore);
  if (after != ranges_.begin() && address < (after - 1)->end) {
    const Section& section = sections_[(after - 1)->section];
    const std::uint64_t offset = address - section.begin;
    if (offset >= section.rawSize) return std::string_view();
    const std::uint64_t used = std::min<std::uint64_t>(size, section.rawSize - offset);
    return file_.Part(section.raw + offset, static_cast<std::size_t>(used));
  }
  // The headers are mapped as they stand in the file, and so is a file without sections.
  const bool isHeader = sections_.empty() || address < GetLongFromBytes(optionalHeader_, kSizeOfHeaders);
  if (isHeader && address < file_.Size()) return file_.Part(address, size);
  return std::nullopt;
}

std::string_view PeImage::NameAt(std::uint32_t address) const {
  if (address == 0) return {};
  const std::string_view bytes = At(address, kLongestName).value_or(std::string_view());
  return bytes.substr(0, bytes.find('\0'));
}

}  // namespace bxvbwiz
