#include <gtest/gtest.h>

#include <filesystem>

#include "TestMachine.h"

namespace bxvbwiz {
namespace {

class ProfileStringsTest : public testing::Test {
 protected:
  ProfileStringsTest() { disk_.Write("machine.ini", "[Machine]\nCodePage=932\n"); }
  std::string Get(ProfileText section, ProfileText key, std::size_t size,
                  const std::string& file = "C:\\a.ini") {
    return Profiles().GetString(section, key, "default  ", size, file);
  }
  bool Set(const std::string& value, const std::string& file = "C:\\a.ini") {
    return Profiles().WriteString("s", "k", value, file);
  }
  void Put(const std::string& name, const std::string& bytes) { disk_.Write("drive_c/" + name, bytes); }
  // "(none)" when the file is not on the disk.
  std::string At(const std::string& name) const {
    return disk_.Exists("drive_c/" + name) ? disk_.Read("drive_c/" + name) : "(none)";
  }
  ProfileStrings& Profiles() { return disk_.platform().profiles; }

  TestMachine disk_;
};

TEST_F(ProfileStringsTest, HalfACharacterIsCutOff) {
  Put("a.ini", "[s]\nz=\x95\x5C\x95\x5C\n[none]\n");
  EXPECT_EQ(Get("s", "z", 5), "\u8868\u8868");
  EXPECT_EQ(Get("s", "z", 4), "\u8868");
  EXPECT_EQ(Get("s", "z", 0), "");
  EXPECT_EQ(Get("none", std::nullopt, 255), "");
}

TEST_F(ProfileStringsTest, TellsOnceWhatIsThereAndCannotBeRead) {
  disk_.platform().files.MakeDirectory("C:\\folder.ini");
  for (const char* file : {"C:\\folder.ini", "C:\\missing.ini", "C:\\missing\\a.ini", "C:\\folder.ini"}) {
    EXPECT_EQ(Get("s", "k", 255, file), "default");
  }
  EXPECT_EQ(Profiles().Unreadable(), std::vector<std::string>{"C:\\folder.ini"});
  EXPECT_TRUE(Profiles().Unreadable().empty());
}

TEST_F(ProfileStringsTest, AReadOnlyFileIsRefusedAtOnceAndNoFileIsMadeByRemoving) {
  Put("readonly.ini", "[s]\nk=v\n");
  disk_.platform().files.SetAttributes("C:\\readonly.ini", kAttributeReadOnly);
  EXPECT_FALSE(Set("new", "C:\\readonly.ini"));
  EXPECT_TRUE(Profiles().WriteString("s", "k", std::nullopt, "C:\\new.ini"));
  EXPECT_TRUE(Profiles().Flush().empty());
  EXPECT_EQ(At("new.ini"), "(none)");
  EXPECT_EQ(At("readonly.ini"), "[s]\nk=v\n");
}

TEST_F(ProfileStringsTest, StoresWhenTheFileIsNeededAndNotBefore) {
  for (const char* folder : {"C:\\dir", "C:\\dir b"}) disk_.platform().files.MakeDirectory(folder);
  EXPECT_TRUE(Set("1", "C:\\dir\\a.ini"));
  EXPECT_TRUE(Set("1", "C:\\dir b\\a.ini"));
  EXPECT_TRUE(Set("\u20AC", "b.ini"));
  EXPECT_EQ(At("dir/a.ini") + At("dir b/a.ini"), "(none)(none)");
  EXPECT_EQ(Get("s", "k", 9, "c:\\DIR\\A.INI"), "1");
  std::vector<FoundFile> found;
  disk_.platform().files.Find("C:\\Dir\\*", found);
  EXPECT_EQ(At("dir/a.ini") + At("dir b/a.ini"), "[s]\r\nk=1\r\n(none)");
  EXPECT_TRUE(Profiles().Flush().empty());
  EXPECT_EQ(At("dir b/a.ini"), "[s]\r\nk=1\r\n");
  EXPECT_EQ(At("windows/b.ini"), "[s]\r\nk=?\r\n");
}

TEST_F(ProfileStringsTest, WhatAnotherProgramChangesStaysBesideOurOwnChange) {
  Put("a.ini", "[s]\nk=1\n");
  EXPECT_TRUE(Set("3"));
  Put("a.ini", "[s]\nk=4\nother=5\n");
  EXPECT_EQ(Get("s", "other", 9), "5");
  EXPECT_TRUE(Profiles().Flush().empty());
  EXPECT_EQ(At("a.ini"), "[s]\nk=3\nother=5\r\n");
  disk_.platform().files.Delete("C:\\a.ini");
  EXPECT_EQ(Get("s", "k", 9), "default");
}

TEST_F(ProfileStringsTest, GivesAFileThatCouldNotBeStoredOnce) {
  Put("a.ini", "[s]\nk=1\n");
  EXPECT_TRUE(Set("2"));
  std::filesystem::permissions(disk_.Folder() + "/drive_c/a.ini", std::filesystem::perms::owner_read);
  std::vector<FoundFile> found;
  disk_.platform().files.Find("C:\\*", found);
  EXPECT_EQ(Get("s", "k", 9), "1");
  EXPECT_EQ(Profiles().Flush(), std::vector<std::string>{"C:\\a.ini"});
  EXPECT_TRUE(Profiles().Flush().empty());
  EXPECT_EQ(At("a.ini"), "[s]\nk=1\n");
}

}  // namespace
}  // namespace bxvbwiz
