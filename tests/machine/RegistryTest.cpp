#include <gtest/gtest.h>

#include "machine/CodePages.h"
#include "machine/MachineRegistry.h"

namespace bxvbwiz {
namespace {

using namespace std::string_literals;

constexpr RegistryHandle kMachine = kHKeyLocalMachine;

// Below HKEY_LOCAL_MACHINE: deletes the key "d", sets "v" of "s" to "2", deletes its "w" and makes "n\\m".
void Change(MachineRegistry& registry) {
  RegistryHandle key = 0;
  registry.DeleteKey(kMachine, "d");
  if (registry.OpenKey(kMachine, "s\\", kKeyAllAccess, key) == SystemError::Success) {
    registry.SetValue(key, "V", {1, "2\0"s});
    registry.SetValue(key, "new", {1, "\u0416\0"s});
    registry.DeleteValue(key, "W");
  }
  EXPECT_EQ(registry.CreateKey(kMachine, "a\nb", 0, kKeyAllAccess, key), SystemError::InvalidName);
  ASSERT_EQ(registry.CreateKey(kMachine, "n\\m", 0, kKeyAllAccess, key), SystemError::Success);
  registry.SetValue(key, "", {4, "\1\0\0\0"s});
}

TEST(Registry, ChangesOnlyTheLinesOfWhatWasChanged) {
  const std::string added =
      "\r\n[HKEY_LOCAL_MACHINE\\n]\r\n\r\n[HKEY_LOCAL_MACHINE\\n\\m]\r\n@=dword:00000001\r\n";
  const struct {
    int codePage;
    std::string lines, after;
  } cases[] = {
      {1252,
       "; by hand\n\n[HKEY_LOCAL_MACHINE\\S]\n\"u\"=\"0\"\n\"v\"=\"1\"\n; "
       "note\n\"bad\"=what\n\"w\"=hex:01,\\\n 02\n\n[x]\n",
       "; by hand\n\n[HKEY_LOCAL_MACHINE\\S]\n\"u\"=\"0\"\n\"v\"=\"2\"\r\n; "
       "note\n\"bad\"=what\n\"new\"=\"?\"\r\n\n[x]\n"},
      // A value that does not change keeps its line.
      {1252, "[HKEY_LOCAL_MACHINE\\s]\n \"v\" = \"2\" ;\n\"new\"=hex(1):3f,00\n",
       "[HKEY_LOCAL_MACHINE\\s]\n \"v\" = \"2\" ;\n\"new\"=hex(1):3f,00\n"},
      // The key above a deleted one stays.
      {1252, "[HKEY_LOCAL_MACHINE\\d]\n@=\"\"\n[HKEY_LOCAL_MACHINE\\e]\n", "[HKEY_LOCAL_MACHINE\\e]\n"},
      // EE E1 is written as FC 40; EE before a quote is not a character.
      {932, "[HKEY_USERS\\\xEE\xE1]\r\n\"a\xEE\"=\"1\"\r\n", "[HKEY_USERS\\\xEE\xE1]\r\n\"a\xEE\"=\"1\"\r\n"},
      // An unfinished value does not swallow what is added.
      {1252, "[HKEY_USERS\\a]\n\"v\"=hex:01,\\", "[HKEY_USERS\\a]\n\"v\"=hex:01\r\n"},
      // A key stays deleted when the text deletes keys itself.
      {1252, "[HKEY_LOCAL_MACHINE\\d\\b]\n[-HKEY_LOCAL_MACHINE\\d\\b]\n[HKEY_LOCAL_MACHINE\\d]\n",
       "[HKEY_LOCAL_MACHINE\\d\\b]\n[-HKEY_LOCAL_MACHINE\\d\\b]\n\r\n[-HKEY_LOCAL_MACHINE\\d]\r\n"},
  };
  for (const auto& test : cases) {
    const std::unique_ptr<CodePage> codePage = MakeCodePage(test.codePage);
    MachineRegistry registry("REGEDIT4\n" + test.lines, *codePage);
    Change(registry);
    EXPECT_EQ(registry.Text(), "REGEDIT4\n" + test.after + added);
  }
}

TEST(Registry, VolatileKeysAreSeenAndNotStored) {
  const std::unique_ptr<CodePage> codePage = MakeCodePage(1252);
  MachineRegistry registry("REGEDIT4\n[HKEY_LOCAL_MACHINE\\s]\n", *codePage);
  RegistryHandle key = 0;
  RegistryData data;
  ASSERT_EQ(registry.CreateKey(kMachine, "s\\v\\w", kRegOptionVolatile, kKeyAllAccess, key),
            SystemError::Success);
  ASSERT_EQ(registry.SetValue(key, "", {1, "1\0"s}), SystemError::Success);
  ASSERT_EQ(registry.CreateKey(key, "below", kRegOptionNonVolatile, kKeyAllAccess, key),
            SystemError::Success);
  EXPECT_FALSE(registry.Changed());
  ASSERT_EQ(registry.OpenKey(kMachine, "S\\V\\W", kKeyAllAccess, key), SystemError::Success);
  EXPECT_EQ(registry.QueryValue(key, "", 99, data), SystemError::Success);
  ASSERT_EQ(registry.CreateKey(kMachine, "s\\n", kRegOptionNonVolatile, kKeyAllAccess, key),
            SystemError::Success);
  EXPECT_EQ(registry.Text(), "REGEDIT4\n[HKEY_LOCAL_MACHINE\\s]\n\r\n[HKEY_LOCAL_MACHINE\\s\\n]\r\n");
}

TEST(Registry, TheClassesRootLiesBelowSoftwareAndSubkeysAreListedByName) {
  const std::unique_ptr<CodePage> codePage = MakeCodePage(1252);
  MachineRegistry registry(
      "REGEDIT4\n[HKEY_CLASSES_ROOT\\.vbp]\n[HKEY_LOCAL_MACHINE\\Software\\M]\n"
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\a]\n",
      *codePage);
  RegistryHandle key = 0;
  EXPECT_EQ(registry.OpenKey(kMachine, "Software\\classes\\.VBP", kKeyAllAccess, key), SystemError::Success);
  registry.OpenKey(kMachine, "Software", kKeyAllAccess, key);
  std::string name;
  std::string names;
  for (std::uint32_t i = 0; registry.EnumKey(key, i, 255, name) == SystemError::Success; ++i) names += name;
  EXPECT_EQ(names, "aClassesM");
}

}  // namespace
}  // namespace bxvbwiz
