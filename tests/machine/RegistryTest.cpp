#include <gtest/gtest.h>

#include "machine/CodePages.h"
#include "machine/MachineRegistry.h"

namespace bxvbwiz {
namespace {

using namespace std::string_literals;

constexpr RegistryHandle kMachine = static_cast<RegistryHandle>(0x80000002U);
constexpr RegistryHandle kUsers = static_cast<RegistryHandle>(0x80000003U);
constexpr std::uint32_t kAll = 0x2003F;

const std::unique_ptr<CodePage> kCodePage = MakeCodePage(1252);

class RegistryTest : public testing::Test {
 protected:
  RegistryHandle Key(const std::string& path) {
    RegistryHandle key = 0;
    return registry_.OpenKey(kMachine, path, kAll, key) == SystemError::Success ? key : 0;
  }

  const std::string source_ =
      "REGEDIT4\r\n; by hand\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Z]\r\n@=\"def\"\r\n\"one\"=\"1\"\r\n; "
      "note\r\n"
      "\"bad\"=what\r\n\"two\"=\"2\"\r\n\r\n[HKEY_CLASSES_ROOT\\.vbp]\r\n@=\"VB.Project\"\r\n\r\n"
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\a\\b]\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\M]\r\n\"v\"=hex:01,\\\r\n  "
      "02\r\n";
  MachineRegistry registry_{source_, *kCodePage};
};

TEST(RegistryBytesTest, LinesThatDoNotChangeKeepCodesThatTheCodePageWouldWriteOtherwise) {
  const std::unique_ptr<CodePage> japanese = MakeCodePage(932);
  // EE E1 is written as FC 40; EE before a quote is no character at all.
  const std::string source = "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\\xEE\xE1]\r\n\"a\xEE\"=\"1\"\r\n";
  MachineRegistry registry(source, *japanese);
  RegistryHandle key = 0;
  ASSERT_EQ(registry.CreateKey(kMachine, "Z", 0, kAll, key), SystemError::Success);
  EXPECT_EQ(registry.Text(), source + "\r\n[HKEY_LOCAL_MACHINE\\Z]\r\n");
}

TEST_F(RegistryTest, WhatCannotBeDoneChangesNothing) {
  RegistryHandle key = 0;
  EXPECT_EQ(registry_.CreateKey(kMachine, "a\nb", 0, kAll, key), SystemError::InvalidName);
  EXPECT_EQ(registry_.DeleteKey(kMachine, "Software\\a"), SystemError::AccessDenied);
  EXPECT_FALSE(registry_.Changed());
  const RegistryHandle b = Key("software\\a\\b");
  EXPECT_EQ(registry_.DeleteKey(kMachine, "Software\\a\\b"), SystemError::Success);
  EXPECT_EQ(registry_.SetValue(b, "x", {1, "y\0"s}), SystemError::FileNotFound);
}

TEST_F(RegistryTest, KeysOfBothSpellingsAndAllGoodValuesAreListed) {
  std::string names;
  std::string name;
  const RegistryHandle software = Key("Software");
  for (std::uint32_t i = 0; registry_.EnumKey(software, i, 255, name) == SystemError::Success; ++i)
    names += name + ' ';
  EXPECT_EQ(names, "a Classes M Z ");
  const RegistryHandle z = Key("Software\\Z\\");
  std::uint32_t type = 0;
  names.clear();
  for (std::uint32_t i = 0; registry_.EnumValue(z, i, 255, name, type) == SystemError::Success; ++i)
    names += name + ' ';
  EXPECT_EQ(names, " one two ") << "in the order of the file";
  EXPECT_NE(Key("Software\\Classes\\.VBP"), 0);
  EXPECT_EQ(registry_.Skipped(), 1U);
}

TEST_F(RegistryTest, ChangesOnlyTheLinesOfWhatWasChanged) {
  EXPECT_EQ(registry_.Text(), source_);
  const RegistryHandle z = Key("Software\\Z");
  EXPECT_EQ(registry_.SetValue(z, "ONE", {1, "1\0"s}), SystemError::Success);
  EXPECT_FALSE(registry_.Changed());
  EXPECT_EQ(registry_.SetValue(z, "ONE", {4, "\1\0\0\0"s}), SystemError::Success);
  EXPECT_EQ(registry_.SetValue(z, "new", {1, "\u0416\0"s}), SystemError::Success);
  EXPECT_EQ(registry_.DeleteValue(z, "TWO"), SystemError::Success);
  EXPECT_EQ(registry_.DeleteKey(kMachine, "SOFTWARE\\A\\B"), SystemError::Success);
  EXPECT_EQ(registry_.DeleteKey(kMachine, "SOFTWARE\\M"), SystemError::Success);
  RegistryHandle key = 0;
  EXPECT_EQ(registry_.CreateKey(kMachine, "Software\\n\\m", 0, kAll, key), SystemError::Success);
  EXPECT_EQ(registry_.SetValue(key, "", {1, "x\0"s}), SystemError::Success);
  EXPECT_TRUE(registry_.Changed());
  const std::string changed =
      "REGEDIT4\r\n; by "
      "hand\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Z]\r\n@=\"def\"\r\n\"one\"=dword:00000001\r\n"
      "; note\r\n\"bad\"=what\r\n\"new\"=\"?\"\r\n\r\n[HKEY_CLASSES_ROOT\\.vbp]\r\n@=\"VB.Project\"\r\n\r\n"
      "\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\a]\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\n]\r\n"
      "\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\n\\m]\r\n@=\"x\"\r\n";
  EXPECT_EQ(registry_.Text(), changed);
  EXPECT_EQ(MachineRegistry(changed, *kCodePage).Text(), changed);
}

TEST(Registry, KeepsADeletedKeyDeletedWhereTheTextDeletesKeysItself) {
  MachineRegistry registry("REGEDIT4\n[HKEY_USERS\\a\\b]\n[-HKEY_USERS\\a\\b]\n[HKEY_USERS\\a]", *kCodePage);
  EXPECT_EQ(registry.DeleteKey(kUsers, "a"), SystemError::Success);
  std::string name;
  EXPECT_EQ(MachineRegistry(registry.Text(), *kCodePage).EnumKey(kUsers, 0, 9, name),
            SystemError::NoMoreItems);
}

TEST(Registry, DoesNotLetAnUnfinishedValueSwallowWhatIsAdded) {
  MachineRegistry registry("REGEDIT4\n[HKEY_USERS\\a]\n\"v\"=hex:01,\\", *kCodePage);
  RegistryHandle key = 0;
  EXPECT_EQ(registry.CreateKey(kUsers, "b", 0, kAll, key), SystemError::Success);
  EXPECT_EQ(registry.Text(), "REGEDIT4\n[HKEY_USERS\\a]\n\"v\"=hex:01\r\n\r\n[HKEY_USERS\\b]\r\n");
}

}  // namespace
}  // namespace bxvbwiz
