#include "machine/RegText.h"

#include <gtest/gtest.h>

#include "machine/CodePages.h"
#include "machine/MachineRegistry.h"
#include "text/Utf16Text.h"

namespace bxvbwiz {
namespace {

using namespace std::string_literals;

constexpr RegistryHandle kUsers = kHKeyUsers;
constexpr std::uint32_t kAll = kKeyAllAccess;

const std::unique_ptr<CodePage> kCodePage = MakeCodePage(1252);

// The type and data of the value `name` among the lines below a heading, and how many values were left out.
std::string Load(const std::string& lines, const std::string& name = "a") {
  MachineRegistry registry("REGEDIT4\r\n[HKEY_USERS\\k]\r\n" + lines, *kCodePage);
  RegistryHandle key = 0;
  RegistryData data;
  EXPECT_EQ(registry.OpenKey(kUsers, "k", kAll, key), SystemError::Success) << lines;
  const std::string skipped = registry.Skipped() == 0 ? "" : " -" + std::to_string(registry.Skipped());
  if (registry.QueryValue(key, name, 1000, data) != SystemError::Success) return "(none)" + skipped;
  return std::to_string(data.type) + ":" + data.data + skipped;
}

TEST(RegText, ReadsGoodValues) {
  const struct {
    std::string lines, data;
  } cases[] = {
      {"\"a\"=\"x \\\"y\\\" \\\\z\"", "1:x \"y\" \\z\0"s},
      {" \"a\" = \"\" ; comment\r\n", "1:\0"s},
      {"\"A\"=\"\xE4\"\n", "1:\u00E4\0"s},
      {"\"a\"=dword:FFfe0a0b \t;c\r", "4:\x0B\x0A\xFE\xFF"s},
      {"\"a\"=hex:01,2, 0a,", "3:\1\2\n"s},
      {"\"a\"=hex(7):e4,00,00", "7:\u00E4\0\0"s},
      {"\"a\"=hex(fffffff0):00", "4294967280:\0"s},
      {"\"a\"=hex:01,\\\r\n  02,\\ ; more\r\n; between\r\n\t03\r\n", "3:\1\2\3"s},
      {"\"a\"=hex:\\\n 01,02,\\\n ;ab", "3:\1\2"s},
      {"\"a\"=\"1\"\n[HKEY_USERS\\K\\]\n\"A\"=\"2\"\n", "1:2\0"s},
      {"\"a\"=\"1\"\n\"a\"=-\n", "(none)"},
      {"\"a\"=\"1\"\n[-HKEY_USERS\\k]\n[HKEY_USERS\\k]\n", "(none)"},
      {"# \"b\"=\n;[x]\n\"a\"=\"1\"", "1:1\0"s},
      {"\"a\"=\"1\"\n[HKEY_OTHER\\k]\n\"a\"=\"2\"\n[ HKEY_USERS\\k]\n\"a\"=\"3\"\n", "1:1\0 -2"s},
  };
  for (const auto& c : cases) EXPECT_EQ(Load(c.lines), c.data) << c.lines;
  EXPECT_EQ(Load("@ = \"x\"", ""), "1:x\0"s);
  EXPECT_EQ(Load("\"a\\\\\\\"b\"=\"x\"", "a\\\"b"), "1:x\0"s);
}

TEST(RegText, SkipsEachBadValueByItselfAndCountsIt) {
  for (const std::string lines :
       {"\"a\"=\"x", "\"a\"=\"x\" y", "\"a\"=\"\\x\"", "\"a\"", "\"a\"=dword:", "\"a\"=dword:x",
        "\"a\"=dword:123456789", "\"a\"=hex:01,,02", "\"a\"=hex:123", "\"a\"=hex:01\\\n  02", "\"a\"=hex:0g",
        "\"a\"=hex():01", "\"a\"=hex(2:01", "\"a\"=-x", "\"a\"=hex:01,\\ x", "a=\"x\""}) {
    EXPECT_EQ(Load(lines + "\n\"b\"=\"1\"\n"), "(none) -1") << lines;
    EXPECT_EQ(Load(lines + "\n\"b\"=\"1\"\n", "b"), "1:1\0 -1"s) << lines;
  }
}

TEST(RegText, TakesTwoHeadersAndNoOther) {
  const std::string lines = "[HKEY_USERS\\\u00C4]\r\n\"v\"=hex(2):";
  const std::string five = "Windows Registry Editor Version 5.00\r\n";
  for (const std::string& bytes : {" \tREGEDIT4\n" + kCodePage->Encode(lines) + "41,e4,00",
                                   five + lines + "41,e4,00", "\xEF\xBB\xBF" + five + lines + "41,e4,00",
                                   std::string(kUtf16Mark) + ToUtf16(five + lines + "41,00,e4,00,00,00")}) {
    MachineRegistry registry(bytes, *kCodePage);
    RegistryHandle key = 0;
    RegistryData data;
    ASSERT_EQ(registry.OpenKey(kUsers, "\u00E4", kAll, key), SystemError::Success) << bytes;
    EXPECT_EQ(registry.QueryValue(key, "V", 3, data), SystemError::Success);
    EXPECT_EQ(data.data, "A\u00E4\0"s);
    EXPECT_EQ(registry.Text(), bytes);
  }
  for (const char* bytes : {"", "regedit4\n", "REGEDIT4 x\n", "\nREGEDIT4\n", "\xEF\xBB\xBFREGEDIT4\n",
                            "Windows Registry Editor Version 5.001\n"})
    EXPECT_THROW(MachineRegistry(bytes, *kCodePage), RegTextError) << bytes;
}

}  // namespace
}  // namespace bxvbwiz
