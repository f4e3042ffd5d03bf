#include "machine/RegText.h"

#include <gtest/gtest.h>

#include "machine/CodePages.h"
#include "machine/MachineRegistry.h"
#include "machine/Utf16Text.h"

namespace bxvbwiz {
namespace {

using namespace std::string_literals;

constexpr RegistryHandle kUsers = static_cast<RegistryHandle>(0x80000003U);
constexpr std::uint32_t kRead = 0x20019;

const std::unique_ptr<CodePage> kCodePage = MakeCodePage(1252);

std::string Load(const std::string& lines, const std::string& name = "a", std::size_t* skipped = nullptr) {
  MachineRegistry registry("REGEDIT4\r\n[HKEY_USERS\\k]\r\n" + lines, *kCodePage);
  RegistryHandle key = 0;
  RegistryData data;
  EXPECT_EQ(registry.OpenKey(kUsers, "k", kRead, key), SystemError::Success) << lines;
  if (skipped != nullptr) *skipped = registry.Skipped();
  if (registry.QueryValue(key, name, 1000, data) != SystemError::Success) return "(none)";
  return std::to_string(data.type) + ":" + data.data;
}

TEST(RegText, ReadsGoodValues) {
  const struct {
    std::string lines, data;
  } cases[] = {
      {"\"a\"=\"x \\\"y\\\" \\\\z\"", "1:x \"y\" \\z\0"s},
      {" \"a\" = \"\" ; comment\r\n", "1:\0"s},
      {"\"A\"=\"\xE4\"\n", "1:\u00E4\0"s},
      {"\"a\"=dword:1", "4:\1\0\0\0"s},
      {"\"a\"=dword:FFfe0a0b \t;c\r", "4:\x0B\x0A\xFE\xFF"s},
      {"\"a\"=hex:01,2, 0a,", "3:\1\2\n"s},
      {"\"a\"=hex:", "3:"s},
      {"\"a\"=hex(2):25,41,25,00", "2:%A%\0"s},
      {"\"a\"=hex(7):e4,00,00", "7:\u00E4\0\0"s},
      {"\"a\"=hex(fffffff0):00", "4294967280:\0"s},
      {"\"a\"=hex:01,\\\r\n  02,\\ ; more\r\n; between\r\n\t03\r\n", "3:\1\2\3"s},
      {"\"a\"=hex:\\\n 01,02", "3:\1\2"s},
      {"\"a\"=hex:01,\\", "3:\1"s},
      {"\"a\"=hex:01,\\\n ;ab", "3:\1"s},
      {"\"a\"=\"1\"\n\"A\"=\"2\"\n", "1:2\0"s},
      {"\"a\"=\"1\"\n[HKEY_USERS\\K\\]\n\"a\"=\"2\"\n", "1:2\0"s},
      {"\"a\"=\"1\"\n\"a\"=-\n", "(none)"},
      {"\"a\"=\"1\"\n[-HKEY_USERS\\k]\n[HKEY_USERS\\k]\n", "(none)"},
      {"# \"b\"=\n;[x]\n\"a\"=\"1\"", "1:1\0"s},
  };
  for (const auto& c : cases) {
    std::size_t skipped = 0;
    EXPECT_EQ(Load(c.lines, "a", &skipped), c.data) << c.lines;
    EXPECT_EQ(skipped, 0U) << c.lines;
  }
  EXPECT_EQ(Load("@ = \"x\"", ""), "1:x\0"s);
  EXPECT_EQ(Load("\"a\\\\\\\"b\"=\"x\"", "a\\\"b"), "1:x\0"s);
}

TEST(RegText, SkipsEachBadValueByItselfAndCountsIt) {
  const char* const bad[] = {
      "\"a\"=\"x",     "\"a\"=\"x\" y",         "\"a\"=\"\\x\"",    "\"a\"",         "\"a\"=dword:",
      "\"a\"=dword:x", "\"a\"=dword:123456789", "\"a\"=hex:01,,02", "\"a\"=hex:123", "\"a\"=hex:01\\\n  02",
      "\"a\"=hex:0g",  "\"a\"=hex():01",        "\"a\"=hex(2:01",   "\"a\"=-x",      "\"a\"=hex:01,\\ x",
      "a=\"x\"",
  };
  for (const char* lines : bad) {
    std::size_t skipped = 0;
    EXPECT_EQ(Load(std::string(lines) + "\n\"b\"=\"1\"\n", "a", &skipped), "(none)") << lines;
    EXPECT_EQ(skipped, 1U) << lines;
    EXPECT_EQ(Load(std::string(lines) + "\n\"b\"=\"1\"\n", "b"), "1:1\0"s) << lines;
  }
  std::size_t skipped = 0;
  Load("[HKEY_OTHER\\k]\n\"a\"=\"1\"\n[ HKEY_USERS\\k]\n\"a\"=\"1\"\n", "a", &skipped);
  EXPECT_EQ(skipped, 2U);
}

TEST(RegText, TakesTwoHeadersAndNoOther) {
  const std::string lines = "[HKEY_USERS\\\u00C4]\r\n\"v\"=hex(2):";
  const std::string five = "Windows Registry Editor Version 5.00\r\n";
  const std::string good[] = {
      " \tREGEDIT4\n" + kCodePage->Encode(lines) + "41,e4,00",
      five + lines + "41,e4,00",
      "\xEF\xBB\xBF" + five + lines + "41,e4,00",
      std::string(kUtf16Mark) + ToUtf16(five + lines + "41,00,e4,00,00,00"),
      std::string(kUtf16Mark) + ToUtf16("REGEDIT4\r\n" + lines + "41,00,e4,00,00,00"),
  };
  for (const std::string& bytes : good) {
    MachineRegistry registry(bytes, *kCodePage);
    RegistryHandle key = 0;
    RegistryData data;
    ASSERT_EQ(registry.OpenKey(kUsers, "\u00E4", kRead, key), SystemError::Success) << bytes;
    EXPECT_EQ(registry.QueryValue(key, "V", 3, data), SystemError::Success);
    EXPECT_EQ(data.data, "A\u00E4\0"s);
    EXPECT_EQ(registry.Text(), bytes);
  }
  for (const char* bytes :
       {"", "regedit4\n", "REGEDIT5\n", "REGEDIT4 x\n", "\nREGEDIT4\n", "\xEF\xBB\xBFREGEDIT4\n",
        "Windows Registry Editor Version 5.001\n", "[HKEY_USERS]\n"}) {
    EXPECT_THROW(MachineRegistry(bytes, *kCodePage), RegTextError) << bytes;
  }
}

TEST(RegText, FormatsValuesSoThatTheyReadBack) {
  const RegistryData values[] = {
      {1, "a \\\"\u00E4\0"s},
      {1, ""},
      {1, "no end"},
      {1, "two\r\nlines\0"s},
      {1, "a\0b\0"s},
      {2, "%x%\0"s},
      {7, "a\0b\0\0"s},
      {4, "\1\2\3\xFF"s},
      {4, "\1"s},
      {0, ""},
      {3, std::string(200, '\x5C')},
      {0x12345678, "x"s},
  };
  for (const RegEncoding encoding : {RegEncoding::CodePage, RegEncoding::Utf8, RegEncoding::Utf16}) {
    for (const RegistryData& data : values) {
      const std::string line = FormatRegValue("n\"\\", data, encoding, *kCodePage);
      ScannedValue scanned;
      EXPECT_EQ(ScanRegValue(line.data(), line.data() + line.size(), scanned), line.data() + line.size());
      ASSERT_NE(scanned.form, ScannedValue::Form::Unreadable) << line;
      EXPECT_EQ(RegValueName(scanned), "n\"\\");
      const RegistryData read = RegValueData(scanned, encoding, *kCodePage);
      EXPECT_EQ(read.type, data.type) << line;
      EXPECT_EQ(read.data, data.data) << line;
    }
  }
}

}  // namespace
}  // namespace bxvbwiz
