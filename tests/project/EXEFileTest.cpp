#include "project/EXEFile.h"
#include "ProjectFixture.h"
#include "tools/PeWriter.h"

namespace bxvbwiz {
namespace {

// Where MakePe puts the fields of the headers, and the section.
constexpr std::size_t kNewHeaderOffset = 0x3C;
constexpr std::size_t kNewHeader = 0x40;
constexpr std::size_t kSectionCount = 0x46;
constexpr std::size_t kDirectoryCount = 0xB4;
constexpr std::size_t kExportDirectory = 0xB8;
constexpr std::size_t kImportDirectory = 0xC0;
constexpr std::size_t kSection = 0x138;
constexpr std::size_t kVirtualSize = kSection + 8;
constexpr std::size_t kRawSize = kSection + 16;
constexpr std::size_t kDescriptors = 0x204;
constexpr std::uint32_t kFileSize = 0x400;
constexpr std::uint32_t kZeroFilled = 0x1C00;  // an address after the section's raw data

// A file with some of its 32-bit (or 16-bit) fields changed.
class Made {
 public:
  explicit Made(std::string bytes = MakePe({"A.DLL", "B.DLL"}, {"One", "Two"})) : bytes_(std::move(bytes)) {}
  Made Long(std::size_t offset, std::uint32_t value, std::size_t size = 4) && {
    for (std::size_t index = 0; index < size; ++index) {
      bytes_[offset + index] = static_cast<char>(value & 0xFFU);
      value >>= 8;
    }
    return std::move(*this);
  }
  Made Word(std::size_t offset, std::uint32_t value) && { return std::move(*this).Long(offset, value, 2); }
  std::uint32_t At(std::size_t offset) const { return GetLongFromBytes(bytes_, offset); }
  operator std::string() && { return std::move(bytes_); }

 private:
  std::string bytes_;
};

struct EXEFileTest : ProjectFixture {
  // "ExeType/ErrorType" (with "!" when an error was raised), the imports, "|", the exports.
  std::string Show(const std::string& bytes) {
    EXEFile file(platform(), nullptr);
    std::string shown;
    try {
      const bool opened = file.OpenBytes(bytes, false);
      EXPECT_TRUE(file.IsValid);
      EXPECT_EQ(opened, file.ExeType == kExeTypePE);
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), kExeFileError);
      EXPECT_NE(file.ErrorType, kExeErrorNone);
      EXPECT_EQ(file.IsValid, file.ErrorType == kExeErrorNoImports);
      shown = "!";
    }
    shown += std::to_string(file.ExeType) + "/" + std::to_string(file.ErrorType);
    for (const Dependency& import : file.Dependencies) shown += " " + import.ShortName;
    shown += " |";
    for (const std::string& name : file.Exports) shown += " " + name;
    return shown;
  }
};

TEST_F(EXEFileTest, NothingInAFileIsTrusted) {
  const std::string all = "5/0 A.DLL B.DLL | One Two";
  const std::uint32_t nameOfA = Made().At(kDescriptors + 12);
  const std::size_t exports = Made().At(kExportDirectory) - 0xE00;
  const struct {
    const char* rule;
    std::string bytes;
    std::string shown;
  } cases[] = {
      {"a sound file", Made(), all},
      {"an empty file", "", "!0/2 |"},
      {"DOS program", Made().Word(0x18, 0x1C), "!1/2 |"},
      {"odd header", Made(std::string(65, 'M') + "PE").Word(0, 0x5A4D).Long(kNewHeaderOffset, 65), "!0/2 |"},
      {"header after the end", Made().Long(kNewHeaderOffset, 0xFFFFFFF0), "!0/2 |"},
      {"XE", Made().Long(kNewHeader, 0x4558), "4/0 |"},
      {"LX", Made().Long(kNewHeader, 0x584C), "!0/2 |"},
      {"64-bit", Made().Word(0x58, 0x20B), "!5/7 |"},
      {"no imports", MakePe({}, {"One"}), "!5/7 | One"},
      {"blank name", MakePe({" ", "A.DLL"}, {}), "5/0 A.DLL |"},
      {"no sections",
       Made()
           .Word(kSectionCount, 0)
           .Long(kImportDirectory, Made().At(kImportDirectory) - 0xE00)
           .Long(kDescriptors + 12, nameOfA - 0xE00),
       "5/0 A.DLL |"},
      {"no virtual size", Made().Long(kVirtualSize, 0), all},
      {"name near 2^32", Made().Long(kDescriptors + 12, 0xFFFFFFFE), "5/0 B.DLL | One Two"},
      {"last descriptor after the raw data",
       Made().Long(kImportDirectory, kZeroFilled - 0xA14).Long(kFileSize - 8, nameOfA),
       "5/0 A.DLL | One Two"},
      {"name up to the end of the file",
       Made().Long(kDescriptors + 12, kZeroFilled - 0xA02).Word(kFileSize - 2, 0x7878),
       "5/0 xx B.DLL | One Two"},
      {"more names and functions than fit",
       Made().Long(exports + 20, 0xFFFFFFFF).Long(exports + 24, 0xFFFFFFFF), all},
      {"only the name ends", Made().Long(kDescriptors + 32, 0), "5/0 A.DLL | One Two"},
      {"long name", MakePe({std::string(60000, 'x')}, {}), "5/0 " + std::string(260, 'x') + " |"},
      {"code page", MakePe({"\xE4.DLL"}, {"\xFC"}), "5/0 \u00E4.DLL | \u00FC"},
      {"repeated names", MakePe({"A", "A"}, {"x", "x", "X"}), "5/0 A A | X"},
      {"raw pointer not at a sector", Made().Long(kSection + 20, 0x3FF), all},
      {"one directory", Made().Long(kDirectoryCount, 1), "!5/7 | One Two"},
      {"optional header cut off", std::string(Made()).substr(0, kImportDirectory + 2), "!5/7 |"},
  };
  for (const auto& each : cases) EXPECT_EQ(Show(each.bytes), each.shown) << each.rule;
}

TEST_F(EXEFileTest, ManyNamesInFewBytesTakeNoMoreMemoryThanTheFile) {
  // Every address, count and name in it is made of the same byte, and all of them are inside the section.
  constexpr std::uint32_t kBytes = 0x100000;
  std::string bytes = MakePe({}, {});
  bytes.resize(kBytes, '\x01');
  const std::string shown = Show(Made(std::move(bytes))
                                     .Long(kSection + 12, 0x01000000)
                                     .Long(kVirtualSize, kBytes)
                                     .Long(kRawSize, kBytes)
                                     .Long(kImportDirectory, 0x01020000)
                                     .Long(kExportDirectory, 0x01020000));
  EXPECT_GT(shown.size(), kBytes);
  EXPECT_LT(shown.size(), kBytes + 0x20000);
}

TEST_F(EXEFileTest, ImportsAreSearchedByNameAndSystemFilesLeftOut) {
  Put("C:\\windows\\system32\\found.dll", "");
  Put("C:\\App\\app.dll",
      MakePe({"kernel32.dll", "FOUND.DLL", "lost.dll", "..\\C:\\found.dll"}, {"DllRegisterServer"}));
  EXEFile file(platform(), &context().global);
  EXPECT_TRUE(file.OpenFile("C:\\App\\APP.DLL"));
  std::string imports;
  for (const Dependency& import : file.Dependencies)
    imports += import.ShortName + "=" + UpperCase(import.FullName) + " ";
  EXPECT_EQ(imports,
            "FOUND.DLL=C:\\WINDOWS\\SYSTEM32\\FOUND.DLL lost.dll= "
            "..\\C:\\found.dll=C:\\WINDOWS\\SYSTEM32\\FOUND.DLL ");
  EXPECT_TRUE(file.IsExported("DLLRegisterServer"));
  EXPECT_THROW(file.OpenFile("missing.dll"), RuntimeError);
  EXPECT_EQ(file.ErrorType, kExeErrorNotValid);
}

}  // namespace
}  // namespace bxvbwiz
