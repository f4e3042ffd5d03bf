#include "project/EXEFile.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

#include "support/basLogging.h"
#include "text/Text.h"
#include "text/Utf16Text.h"

namespace bxvbwiz {
namespace {

// Sizes and offsets of IMAGE_DOS_HEADER, IMAGE_IMPORT_DESCRIPTOR and IMAGE_EXPORT_DIRECTORY in winnt.h.
constexpr std::uint32_t kDosHeaderSize = 64;
constexpr std::uint32_t kRelocationTable = 24;
// Fields of IMAGE_FILE_HEADER, from the signature in front of it on.
constexpr std::uint32_t kMachine = 4;
constexpr std::uint32_t kTimeDateStamp = 8;
constexpr std::uint32_t kFileHeaderEnd = 24;
constexpr std::uint32_t kDescriptorSize = 20;
constexpr std::uint32_t kDescriptorName = 12;
constexpr std::uint32_t kExportDirectorySize = 40;
constexpr std::uint32_t kNumberOfNames = 24;
constexpr std::uint32_t kAddressOfNames = 32;

// Names in a sound file take no more bytes than the file. A small file gets some more: its names may overlap.
constexpr std::size_t kFreeNameBytes = 0x10000;

// The format that the signature of the new header names; 0 when none.
std::int32_t ExeTypeOf(const BytesSource& file, std::uint32_t newHeader) {
  const std::string_view signature = file.Part(newHeader, sizeof(std::uint32_t));
  if (GetLongFromBytes(signature, 0) == kPeSignature) return kExeTypePE;
  switch (GetWordFromBytes(signature, 0)) {
    case 0x454E:
      return kExeTypeNE;
    case 0x454C:
      return kExeTypeLE;
    case 0x4558:  // the bytes "X", "E"; not the "LX" that one expects
      return kExeTypeXE;
    default:
      return 0;
  }
}

// A name in an import table has no folder; in a table made to mislead it may have.
std::string WithoutFolder(const std::string& name) {
  const std::size_t separator = name.find_last_of("\\/:");
  return separator == std::string::npos ? name : name.substr(separator + 1);
}

// Searching for a file may change the directory that the host works in; it gets it back.
class CurrentDirectoryKeeper {
 public:
  explicit CurrentDirectoryKeeper(FileSystem& files) : files_(files), directory_(files.CurrentDirectory()) {}
  ~CurrentDirectoryKeeper() { files_.ChangeDirectory(directory_); }
  CurrentDirectoryKeeper(const CurrentDirectoryKeeper&) = delete;
  CurrentDirectoryKeeper& operator=(const CurrentDirectoryKeeper&) = delete;

 private:
  FileSystem& files_;
  std::string directory_;
};

}  // namespace

bool EXEFile::OpenFile(const std::string& path) {
  const CallStackEntry entry("EXEFile:OpenFile");
  Clear();
  path_ = path;
  const CurrentDirectoryKeeper keeper(*files_);
  const SystemError error = files_->Map(path, view_);
  if (error != SystemError::Success || !view_) {
    const auto code = std::to_string(static_cast<std::uint32_t>(error));
    Fail(kExeErrorNotValid, "the file cannot be opened (system error " + code + ")");
  }
  FileBase = view_->Bytes();
  return Read(BytesInMemory(FileBase), true);
}

bool EXEFile::OpenBytes(std::string_view bytes, bool search) {
  Clear();
  FileBase = bytes;
  return Read(BytesInMemory(bytes), search);
}

bool EXEFile::OpenSource(const BytesSource& source) {
  Clear();
  return Read(source, false);
}

void EXEFile::Clear() {
  path_.clear();
  Exports.Clear();
  Dependencies.clear();
  FileBase = {};
  FileSize = 0;
  IsValid = false;
  ErrorType = kExeErrorNone;
  ExeType = 0;
  Machine = 0;
  LinkTime = 0;
  view_.reset();
}

void EXEFile::Fail(std::int32_t errorType, const std::string& reason) {
  ErrorType = errorType;
  throw RuntimeError(kExeFileError, path_.empty() ? reason : path_ + ": " + reason);
}

bool EXEFile::Read(const BytesSource& file, bool search) {
  constexpr std::uint64_t kMostBytes = std::numeric_limits<std::int32_t>::max();
  FileSize = static_cast<std::int32_t>(std::min(file.Size(), kMostBytes));
  const std::uint32_t newHeader = FindNewHeader(file);
  IsValid = true;
  if (ExeType != kExeTypePE) return false;
  ReadFileHeader(file.Part(newHeader, kFileHeaderEnd));

  const PeImage image(file, newHeader);
  if (image.Is64Bit()) Fail(kExeErrorNoImports, "a 64-bit executable, whose imports are not read");
  nameBytesLeft_ = file.Size() + kFreeNameBytes;
  const bool hasImports = GetImportInfo(image, search);
  GetExportInfo(image);
  if (!hasImports) Fail(kExeErrorNoImports, "the executable has no import information");
  return true;
}

// `header` begins with the signature.
void EXEFile::ReadFileHeader(std::string_view header) {
  Machine = GetWordFromBytes(header, kMachine);
  LinkTime = GetLongFromBytes(header, kTimeDateStamp);
}

// Checks the DOS header and sets ExeType. Gives the offset of the new header.
std::uint32_t EXEFile::FindNewHeader(const BytesSource& file) {
  const std::string_view header = file.Part(0, kDosHeaderSize);
  if (header.size() < kDosHeaderSize) Fail(kExeErrorNotValid, "too short to be an executable");
  if (GetWordFromBytes(header, 0) != kDosSignature) Fail(kExeErrorNotValid, "it does not begin with \"MZ\"");
  if (GetWordFromBytes(header, kRelocationTable) < kDosHeaderSize) {
    ExeType = kExeTypeDos;
    Fail(kExeErrorNotValid, "a DOS program");
  }
  const std::uint32_t newHeader = GetLongFromBytes(header, kNewHeaderOffset);
  // The system's loader does not accept a header at an odd place or inside the DOS header either.
  if (newHeader < kDosHeaderSize || newHeader % 2 != 0 || newHeader > file.Size())
    Fail(kExeErrorNotValid,
         "not a Windows executable: its header would be at offset " + std::to_string(newHeader));
  ExeType = ExeTypeOf(file, newHeader);
  if (ExeType == 0) Fail(kExeErrorNotValid, "not an executable of a known format");
  return newHeader;
}

// Reads the imported modules. False when the file has no import table.
bool EXEFile::GetImportInfo(const PeImage& image, bool search) {
  const std::uint32_t table = image.AddressOf(PeImage::Directory::Imports);
  if (table == 0 || !image.At(table, 0)) return false;
  std::unordered_map<std::string, std::string> found;  // a name that repeats is searched for once
  std::string name;
  // Every descriptor costs at least one byte of names, so a table without end comes to one.
  for (std::uint64_t address = table;; address += kDescriptorSize) {
    const auto descriptor = image.At(address, kDescriptorSize);
    if (!descriptor) break;
    const std::uint32_t nameAddress = GetLongFromBytes(*descriptor, kDescriptorName);
    if (nameAddress == 0 || !TakeName(image, nameAddress, name)) break;
    if (TrimBlanks(name).empty() || (global_ && global_->IsSystemFile(name))) continue;
    Dependency dependency{{}, name};
    const std::string searched = WithoutFolder(name);
    if (search && !searched.empty()) {
      const auto [place, isNew] = found.try_emplace(searched);
      if (isNew) place->second = files_->Search(searched);
      dependency.FullName = place->second;
    }
    Dependencies.push_back(std::move(dependency));
  }
  return true;
}

// Reads the exported names; there are none without an export table.
void EXEFile::GetExportInfo(const PeImage& image) {
  const std::uint32_t table = image.AddressOf(PeImage::Directory::Exports);
  const auto directory = table == 0 ? std::nullopt : image.At(table, kExportDirectorySize);
  if (!directory) return;
  constexpr std::size_t kAddressSize = sizeof(std::uint32_t);
  const std::size_t named = GetLongFromBytes(*directory, kNumberOfNames);
  const std::size_t mostNamed = std::numeric_limits<std::size_t>::max() / kAddressSize;
  const auto addresses =
      image.At(GetLongFromBytes(*directory, kAddressOfNames), std::min(named, mostNamed) * kAddressSize);
  if (!addresses) return;
  const std::size_t count = addresses->size() / kAddressSize;
  Exports.Reserve(count);
  std::string name;
  for (std::size_t index = 0; index < count; ++index) {
    const std::uint32_t address = GetLongFromBytes(*addresses, index * kAddressSize);
    if (!TakeName(image, address, name)) break;
    if (!name.empty()) Exports.InsertNew(name, [&name] { return std::make_shared<std::string>(name); });
  }
}

// Reads the name at an address, empty when there is none; it costs its bytes and the NUL. False when the
// file's names have taken more bytes than it has: it was made so that few bytes are many names.
bool EXEFile::TakeName(const PeImage& image, std::uint32_t address, std::string& name) {
  const std::string_view bytes = image.NameAt(address);
  if (bytes.size() >= nameBytesLeft_) return false;
  nameBytesLeft_ -= bytes.size() + 1;
  // The code page's decoding is for the rare name that needs it.
  if (IsAscii(bytes)) {
    name.assign(bytes);
  } else {
    name = codePage_.Decode(bytes);
  }
  return true;
}

}  // namespace bxvbwiz
