#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"
#include "project/basGlobal.h"
#include "project/PeImage.h"
#include "support/Errors.h"
#include "support/KeyedCollection.h"

namespace bxvbwiz {

// One imported module.
struct Dependency {
  std::string FullName;   // the path where the system finds it, empty when it does not
  std::string ShortName;  // as the import table gives it
};

// Results of EXEFile, as its ErrorType and ExeType give them.
constexpr std::int32_t kExeErrorNone = 0;
constexpr std::int32_t kExeErrorNotValid = 2;
constexpr std::int32_t kExeErrorNoImports = 7;
constexpr std::int32_t kExeTypeDos = 1;
constexpr std::int32_t kExeTypeNE = 2;
constexpr std::int32_t kExeTypeLE = 3;
constexpr std::int32_t kExeTypeXE = 4;
constexpr std::int32_t kExeTypePE = 5;

// The number of every error that EXEFile raises.
constexpr std::int32_t kExeFileError = static_cast<std::int32_t>(0x80040CD7U);

// Reads a Windows executable or DLL: its format, imported modules and exported names. Sizes, counts and
// addresses in the file are never trusted: what does not fit is skipped, and time and memory stay in
// proportion to the file.
class EXEFile {
 public:
  // System files of `global` (may be null) are left out of the imports.
  EXEFile(Platform& platform, const basGlobal* global)
      : files_(&platform.files), codePage_(platform.codePage), global_(global) {}
  // For bytes in memory (OpenBytes without a search) only.
  explicit EXEFile(const CodePage& codePage) : files_(nullptr), codePage_(codePage), global_(nullptr) {}

  // Maps and reads the file. True for a PE file with an import table; an export table it need not have. False
  // for NE, LE and XE, which are recognised (IsValid) but not read. Raises kExeFileError for everything else,
  // with ErrorType set and a description that names the file and the reason; a PE file without imports
  // (ErrorType 7) has its Exports all the same, a 64-bit one nothing.
  bool OpenFile(const std::string& path);
  // The same for bytes in memory, which must outlive the use of FileBase; imports are not searched for
  // (FullName stays empty) when `search` is false.
  bool OpenBytes(std::string_view bytes, bool search);
  // The same for a file of which only the parts that count are read; imports are not searched for, and
  // FileBase is empty.
  bool OpenSource(const BytesSource& source);
  // True when a function of that name is exported, case ignored.
  bool IsExported(const std::string& name) const { return Exports.FindItem(name) != nullptr; }

  KeyedCollection<std::string> Exports{KeyCase::Ignored};  // keyed by the name; one that repeats is kept once
  std::vector<Dependency> Dependencies;                    // in the import table's order
  std::string_view FileBase;                               // the mapped view
  std::int32_t FileSize = 0;                               // in bytes, at most 2^31 - 1
  bool IsValid = false;                                    // the format was recognised (not DOS only)
  std::int32_t ErrorType = kExeErrorNone;
  std::int32_t ExeType = 0;
  // Of a PE file: its processor and time of linking, as IMAGE_FILE_HEADER in winnt.h has them.
  std::uint16_t Machine = 0;
  std::uint32_t LinkTime = 0;

 private:
  bool Read(const BytesSource& file, bool search);
  void Clear();
  [[noreturn]] void Fail(std::int32_t errorType, const std::string& reason);
  std::uint32_t FindNewHeader(const BytesSource& file);
  void ReadFileHeader(std::string_view header);
  bool GetImportInfo(const PeImage& image, bool search);
  void GetExportInfo(const PeImage& image);
  bool TakeName(const PeImage& image, std::uint32_t address, std::string& name);

  FileSystem* files_;
  const CodePage& codePage_;
  const basGlobal* global_;
  std::string path_;  // for messages
  std::unique_ptr<FileView> view_;
  std::uint64_t nameBytesLeft_ = 0;  // how many bytes of names may still be taken
};

}  // namespace bxvbwiz
