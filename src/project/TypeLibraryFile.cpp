#include "project/TypeLibraryFile.h"

#include <algorithm>
#include <array>
#include <optional>

#include "support/basGUID.h"
#include "support/Conversion.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// IMAGE_RESOURCE_DIRECTORY, its entries and IMAGE_RESOURCE_DATA_ENTRY in winnt.h.
constexpr std::uint32_t kResourceDirectorySize = 16;
constexpr std::uint32_t kNumberOfNamedEntries = 12;
constexpr std::uint32_t kNumberOfIdEntries = 14;
constexpr std::uint32_t kEntrySize = 8;
constexpr std::uint32_t kIsNameOrDirectory = 0x80000000;
constexpr std::uint32_t kDataEntrySize = 16;
constexpr std::string_view kResourceType = "TYPELIB";
constexpr int kMostResources = 100;  // no more are looked at: a library has a handful

// The newer format: the header, then the offsets of the type infos, then the segments' directory.
constexpr std::uint32_t kMsft = 0x5446534D;  // "MSFT"
constexpr std::uint32_t kGuidOffset = 0x08;
constexpr std::uint32_t kLanguage = 0x10;
constexpr std::uint32_t kVarFlags = 0x14;
constexpr std::uint32_t kHasExtraField = 0x100;
constexpr std::uint32_t kVersion = 0x18;
constexpr std::uint32_t kLibraryFlags = 0x1C;
constexpr std::uint32_t kTypeInfoCount = 0x20;
constexpr std::uint32_t kDescription = 0x24;
constexpr std::uint32_t kName = 0x38;
constexpr std::uint32_t kMsftHeaderSize = 0x54;
constexpr std::uint32_t kSegmentSize = 16;
enum Segment : std::uint32_t { kGuids = 5, kNames = 7, kStrings = 8 };
constexpr std::uint32_t kNameHead = 12;
constexpr std::uint32_t kNameLength = 8;  // in the head

// The older format: the library's block is found by the word that it begins with.
constexpr std::uint32_t kSltg = 0x47544C53;  // "SLTG"
constexpr std::string_view kLibraryBlock = "\xCC\x51";
constexpr std::uint32_t kBlockTexts = 8;
constexpr std::uint16_t kNoText = 0xFFFF;
constexpr std::uint16_t kLastSystemKind = 3;  // SYS_WIN64 of oaidl.h
constexpr std::uint32_t kBlockTail = 34;      // from the help context to the end of the GUID

constexpr std::uint32_t kNoOffset = 0xFFFFFFFF;
constexpr std::size_t kGuidSize = std::tuple_size<GuidBytes>::value;

std::string VersionText(std::uint32_t major, std::uint32_t minor) {
  return Hexadecimal(major) + "." + Hexadecimal(minor);
}

// Empty for bytes that are no GUID, or the one that stands for none.
std::string Identifier(std::string_view bytes) {
  GuidBytes guid{};
  if (bytes.size() < kGuidSize) return {};
  std::transform(bytes.begin(), bytes.begin() + kGuidSize, guid.begin(),
                 [](char byte) { return static_cast<std::uint8_t>(byte); });
  return guid == GuidBytes{} ? std::string() : GuidText(guid, false);
}

// A resource of an executable, as a file of its own.
class ResourceSource : public BytesSource {
 public:
  ResourceSource(const PeImage& image, std::uint32_t address, std::uint32_t size)
      : image_(image), address_(address), size_(size) {}
  std::uint64_t Size() const override { return size_; }
  std::string_view Part(std::uint64_t offset, std::size_t size) const override {
    if (offset >= size_) return {};
    const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, size_ - offset));
    return image_.At(address_ + offset, wanted).value_or(std::string_view());
  }

 private:
  const PeImage& image_;
  const std::uint32_t address_;
  const std::uint32_t size_;
};

// A library in the newer format.
class MsftLibrary {
 public:
  MsftLibrary(const BytesSource& file, const CodePage& codePage)
      : file_(file), codePage_(codePage), header_(file.Part(0, kMsftHeaderSize)) {
    const std::uint32_t extra = (Long(kVarFlags) & kHasExtraField) != 0 ? 4 : 0;
    directory_ = std::uint64_t{kMsftHeaderSize} + extra + std::uint64_t{4} * Long(kTypeInfoCount);
  }

  // Gives what is wrong, empty when nothing is.
  std::string Read(TypeLibraryFacts& facts) const {
    if (header_.size() < kMsftHeaderSize) return "its header is cut off";
    if (Long(kGuidOffset) == kNoOffset) return "it has no identifier";
    const auto guid = InSegment(kGuids, Long(kGuidOffset), kGuidSize);
    facts.identifier = guid ? Identifier(*guid) : "";
    if (facts.identifier.empty()) return "its identifier lies outside the file";
    facts.version = VersionText(Long(kVersion) & 0xFFFFU, Long(kVersion) >> 16U);
    facts.language = Hexadecimal(Long(kLanguage));
    facts.flags = GetWordFromBytes(header_, kLibraryFlags);
    const auto description = Text(kStrings, Long(kDescription), 2, 0);
    const auto name = Text(kNames, Long(kName), kNameHead, kNameLength);
    if (!description || !name) return "its texts lie outside the file";
    facts.description = codePage_.Decode(description->empty() ? *name : *description);
    return "";
  }

 private:
  std::uint32_t Long(std::uint32_t offset) const { return GetLongFromBytes(header_, offset); }

  // The bytes at an offset of a segment; nothing when they are not all inside.
  std::optional<std::string_view> InSegment(Segment segment, std::uint32_t offset, std::size_t size) const {
    const std::string_view row = file_.Part(directory_ + std::uint64_t{segment} * kSegmentSize, kSegmentSize);
    const std::uint32_t length = GetLongFromBytes(row, 4);
    if (row.size() < kSegmentSize || offset > length || size > length - offset) return std::nullopt;
    const std::string_view bytes = file_.Part(std::uint64_t{GetLongFromBytes(row, 0)} + offset, size);
    return bytes.size() == size ? std::make_optional(bytes) : std::nullopt;
  }

  // A text whose head holds its length at `lengthAt`: a word for strings, a byte for names. Empty when there
  // is none; nothing when it lies outside.
  std::optional<std::string_view> Text(Segment segment, std::uint32_t offset, std::uint32_t headSize,
                                       std::uint32_t lengthAt) const {
    if (offset == kNoOffset) return std::string_view();
    const auto head = InSegment(segment, offset, headSize);
    if (!head) return std::nullopt;
    const std::uint32_t length = GetWordFromBytes(*head, lengthAt) & (segment == kNames ? 0xFFU : 0xFFFFU);
    return InSegment(segment, offset + headSize, length);
  }

  const BytesSource& file_;
  const CodePage& codePage_;
  const std::string_view header_;
  std::uint64_t directory_ = 0;
};

// Takes a text of a library's block in the older format from the beginning of `rest`.
std::string_view TakeText(std::string_view& rest) {
  const std::uint16_t length = GetWordFromBytes(rest, 0);
  rest = BytesFrom(rest, 2);
  if (length == kNoText) return {};
  const std::string_view text = rest.substr(0, length);
  rest = BytesFrom(rest, length);
  return text;
}

// False when what `block` begins with is no library's block.
bool ReadBlock(std::string_view block, const CodePage& codePage, TypeLibraryFacts& facts) {
  std::string_view rest = BytesFrom(block, kBlockTexts);
  const std::string_view description = TakeText(rest);
  TakeText(rest);  // the help file
  // Help context, system kind, language, a reserved long, flags, version, GUID.
  if (rest.size() < kBlockTail || GetWordFromBytes(rest, 4) > kLastSystemKind) return false;
  facts.language = Hexadecimal(GetWordFromBytes(rest, 6));
  facts.flags = GetWordFromBytes(rest, 12);
  facts.version = VersionText(GetWordFromBytes(rest, 14), GetWordFromBytes(rest, 16));
  facts.identifier = Identifier(rest.substr(18, kGuidSize));
  facts.description = codePage.Decode(description);
  return !facts.identifier.empty();
}

std::string ReadSltg(const BytesSource& file, const CodePage& codePage, TypeLibraryFacts& facts) {
  const std::string_view bytes = file.Part(0, static_cast<std::size_t>(file.Size()));
  for (std::size_t at = 0; (at = bytes.find(kLibraryBlock, at)) != std::string_view::npos; ++at) {
    if (ReadBlock(bytes.substr(at), codePage, facts)) return "";
  }
  return "its description of itself is missing";
}

// Gives what is wrong, empty when nothing is.
std::string ReadLibrary(const BytesSource& file, const CodePage& codePage, TypeLibraryFacts& facts) {
  switch (GetLongFromBytes(file.Part(0, 4), 0)) {
    case kMsft:
      return MsftLibrary(file, codePage).Read(facts);
    case kSltg:
      return ReadSltg(file, codePage, facts);
    default:
      return "it is of an unknown format";
  }
}

// The resources of an executable.
class Resources {
 public:
  explicit Resources(const PeImage& image)
      : image_(image), root_(image.AddressOf(PeImage::Directory::Resources)) {}

  // Calls `take` with number, address and size of each type library; those of one that the file does not
  // hold are zero. False when there are more than a sound file has.
  template <class Take>
  bool ForEachLibrary(Take&& take) const {
    if (root_ == 0) return true;
    int looks = 0;
    for (const Entry& type : EntriesOf(0)) {
      if (!IsTypeLibrary(type)) continue;
      for (const Entry& library : EntriesOf(type.below)) {
        if (++looks > kMostResources) return false;
        const std::vector<Entry> languages = EntriesOf(library.below);
        const auto data = languages.empty()
                              ? std::nullopt
                              : image_.At(std::uint64_t{root_} + languages.front().below, kDataEntrySize);
        const std::string_view bytes = data.value_or(std::string_view());
        take(library.name, GetLongFromBytes(bytes, 0), GetLongFromBytes(bytes, 4));
      }
      if (++looks > kMostResources) return false;
    }
    return true;
  }

 private:
  struct Entry {
    std::uint32_t name;   // a number, or the offset of a text with the highest bit set
    std::uint32_t below;  // the offset of a directory or of the data, without its highest bit
  };

  std::vector<Entry> EntriesOf(std::uint32_t directory) const {
    std::vector<Entry> entries;
    const auto head = image_.At(std::uint64_t{root_} + directory, kResourceDirectorySize);
    if (!head) return entries;
    const std::size_t count = std::size_t{GetWordFromBytes(*head, kNumberOfNamedEntries)} +
                              GetWordFromBytes(*head, kNumberOfIdEntries);
    const auto rows =
        image_.At(std::uint64_t{root_} + directory + kResourceDirectorySize, count * kEntrySize);
    for (std::size_t at = 0; rows && at + kEntrySize <= rows->size(); at += kEntrySize) {
      entries.push_back({GetLongFromBytes(*rows, at), GetLongFromBytes(*rows, at + 4) & ~kIsNameOrDirectory});
    }
    return entries;
  }

  bool IsTypeLibrary(const Entry& type) const {
    if ((type.name & kIsNameOrDirectory) == 0) return false;
    const std::uint64_t place = std::uint64_t{root_} + (type.name & ~kIsNameOrDirectory);
    const auto text = image_.At(place, 2 + 2 * kResourceType.size());
    if (!text || GetWordFromBytes(*text, 0) != kResourceType.size()) return false;
    std::string name;
    for (std::size_t at = 2; at < text->size(); at += 2) name += (*text)[at];  // of UTF-16
    return EqualsIgnoreCase(name, kResourceType);
  }

  const PeImage& image_;
  const std::uint32_t root_;
};

}  // namespace

TypeLibraryFile ReadTypeLibraries(const BytesSource& file, const CodePage& codePage) {
  TypeLibraryFile result;
  const auto read = [&](const BytesSource& library, std::uint32_t resource) {
    TypeLibraryFacts facts;
    facts.resource = resource;
    const std::string fault = ReadLibrary(library, codePage, facts);
    if (fault.empty()) {
      result.libraries.push_back(std::move(facts));
    } else {
      const std::string which = resource == 0 ? "" : " in its resource " + std::to_string(resource);
      result.faults.push_back("the type library" + which + " cannot be read: " + fault);
    }
  };
  const std::string_view head = file.Part(0, kNewHeaderOffset + 4);
  const std::uint32_t format = GetLongFromBytes(head, 0);
  if (format == kMsft || format == kSltg) {
    read(file, 0);
  } else if (GetWordFromBytes(head, 0) == kDosSignature) {
    const std::uint32_t newHeader = GetLongFromBytes(head, kNewHeaderOffset);
    if (GetLongFromBytes(file.Part(newHeader, 4), 0) != kPeSignature) return result;
    const PeImage image(file, newHeader);
    const auto readResource = [&](std::uint32_t number, std::uint32_t address, std::uint32_t size) {
      read(ResourceSource(image, address, size), number);
    };
    if (!Resources(image).ForEachLibrary(readResource))
      result.faults.push_back("it has more type libraries than a sound file");
  }
  return result;
}

TypeLibraryFile ReadTypeLibraries(Platform& platform, const std::string& path) {
  std::unique_ptr<FileView> view;
  if (platform.files.Map(path, view) != SystemError::Success) return {};
  return ReadTypeLibraries(BytesInMemory(view->Bytes()), platform.codePage);
}

}  // namespace bxvbwiz
