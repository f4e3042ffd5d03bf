#include <gtest/gtest.h>

#include "machine/CodePages.h"
#include "machine/MachineRegistry.h"

namespace bxvbwiz {
namespace {

using namespace std::string_literals;

constexpr auto kMachine = static_cast<RegistryHandle>(0x80000002U);
constexpr std::uint32_t kAll = 0x2003F;

const std::unique_ptr<CodePage> kCodePage = MakeCodePage(1252);

TEST(Registry, ChangesOnlyTheLinesOfWhatWasChanged) {
  const std::string source =
      "REGEDIT4\r\n; by hand\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Z]\r\n@=\"def\"\r\n\"one\"=\"1\"\r\n; "
      "note\r\n"
      "\"bad\"=what\r\n\"two\"=\"2\"\r\n\r\n[HKEY_CLASSES_ROOT\\.vbp]\r\n@=\"VB.Project\"\r\n\r\n"
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\a\\b]\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\M]\r\n\"v\"=hex:01,\\\r\n "
      "02\r\n";
  MachineRegistry registry(source, *kCodePage);
  EXPECT_EQ(registry.Text(), source);
  RegistryHandle software = 0;
  RegistryHandle z = 0;
  RegistryHandle key = 0;
  ASSERT_EQ(registry.OpenKey(kMachine, "Software", kAll, software), SystemError::Success);
  ASSERT_EQ(registry.OpenKey(software, "Z\\", kAll, z), SystemError::Success);
  EXPECT_EQ(registry.OpenKey(software, "Classes\\.VBP", kAll, key), SystemError::Success);
  std::string name;
  std::string names;
  for (std::uint32_t i = 0; registry.EnumKey(software, i, 255, name) == SystemError::Success; ++i)
    names += name;
  EXPECT_EQ(names, "aClassesMZ");
  EXPECT_EQ(registry.CreateKey(kMachine, "a\nb", 0, kAll, key), SystemError::InvalidName);
  EXPECT_EQ(registry.SetValue(z, "ONE", {1, "1\0"s}), SystemError::Success);
  EXPECT_FALSE(registry.Changed());
  registry.SetValue(z, "ONE", {4, "\1\0\0\0"s});
  registry.SetValue(z, "new", {1, "\u0416\0"s});
  registry.DeleteValue(z, "TWO");
  registry.DeleteKey(software, "A\\B");
  registry.DeleteKey(software, "M");
  registry.CreateKey(software, "n\\m", 0, kAll, key);
  registry.SetValue(key, "", {1, "x\0"s});
  EXPECT_TRUE(registry.Changed());
  const std::string changed =
      "REGEDIT4\r\n; by "
      "hand\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Z]\r\n@=\"def\"\r\n\"one\"=dword:00000001\r\n"
      "; note\r\n\"bad\"=what\r\n\"new\"=\"?\"\r\n\r\n[HKEY_CLASSES_ROOT\\.vbp]\r\n@=\"VB.Project\"\r\n\r\n"
      "\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\a]\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\n]\r\n"
      "\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\n\\m]\r\n@=\"x\"\r\n";
  EXPECT_EQ(registry.Text(), changed);
}

TEST(Registry, WhatIsAddedChangesNoOtherLine) {
  const struct {
    int codePage;
    std::string lines, after;
  } cases[] = {
      // EE E1 is written as FC 40; EE before a quote is no character at all.
      {932, "[HKEY_LOCAL_MACHINE\\\xEE\xE1]\r\n\"a\xEE\"=\"1\"\r\n",
       "[HKEY_LOCAL_MACHINE\\\xEE\xE1]\r\n\"a\xEE\"=\"1\"\r\n"},
      // An unfinished value does not swallow what is added.
      {1252, "[HKEY_USERS\\a]\n\"v\"=hex:01,\\", "[HKEY_USERS\\a]\n\"v\"=hex:01\r\n"},
      // A key stays deleted when the text deletes keys itself.
      {1252, "[HKEY_LOCAL_MACHINE\\d\\b]\n[-HKEY_LOCAL_MACHINE\\d\\b]\n[HKEY_LOCAL_MACHINE\\d]\n",
       "[HKEY_LOCAL_MACHINE\\d\\b]\n[-HKEY_LOCAL_MACHINE\\d\\b]\n\r\n[-HKEY_LOCAL_MACHINE\\d]\r\n"},
  };
  for (const auto& test : cases) {
    const std::unique_ptr<CodePage> codePage = MakeCodePage(test.codePage);
    MachineRegistry registry("REGEDIT4\n" + test.lines, *codePage);
    RegistryHandle key = 0;
    registry.DeleteKey(kMachine, "d");
    ASSERT_EQ(registry.CreateKey(kMachine, "Z", 0, kAll, key), SystemError::Success);
    EXPECT_EQ(registry.Text(), "REGEDIT4\n" + test.after + "\r\n[HKEY_LOCAL_MACHINE\\Z]\r\n");
  }
}

}  // namespace
}  // namespace bxvbwiz
