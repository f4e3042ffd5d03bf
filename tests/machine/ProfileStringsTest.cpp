#include <gtest/gtest.h>

#include <filesystem>

#include "TestMachine.h"

namespace bxvbwiz {
namespace {

class ProfileStringsTest : public testing::Test {
 protected:
  std::string Get(const std::string& key, std::size_t size = 9, const std::string& file = "C:\\a.ini") {
    return profiles_.GetString("s", key, "default", size, file);
  }
  bool Set(const std::string& value, const std::string& file = "C:\\a.ini") {
    return profiles_.WriteString("s", "k", value, file);
  }
  // "(none)" when the file is not on the disk.
  std::string At(const std::string& name) const {
    return disk_.Exists("drive_c/" + name) ? disk_.Read("drive_c/" + name) : "(none)";
  }

  TestMachine disk_;
  FileSystem& files_ = disk_.platform().files;
  ProfileStrings& profiles_ = disk_.platform().profiles;
};

TEST_F(ProfileStringsTest, GivesOnceWhatIsThereAndCannotBeRead) {
  files_.MakeDirectory("C:\\folder.ini");
  for (const char* file : {"C:\\folder.ini", "C:\\missing.ini", "C:\\missing\\a.ini", "C:\\folder.ini"})
    EXPECT_EQ(Get("k", 9, file), "default");
  EXPECT_EQ(profiles_.Unreadable(), std::vector<std::string>{"C:\\folder.ini"});
  EXPECT_TRUE(profiles_.Unreadable().empty());
}

TEST_F(ProfileStringsTest, StoresWhenTheFileIsNeededAndNotBefore) {
  for (const char* folder : {"C:\\dir", "C:\\dir b"}) files_.MakeDirectory(folder);
  EXPECT_TRUE(Set("1", "C:\\dir\\a.ini") && Set("1", "C:\\dir b\\a.ini"));
  EXPECT_TRUE(profiles_.WriteString("s", "k", std::nullopt, "C:\\none.ini"));
  EXPECT_EQ(At("dir/a.ini") + At("dir b/a.ini"), "(none)(none)");
  EXPECT_EQ(Get("k", 9, "c:\\DIR\\A.INI"), "1");
  std::vector<FoundFile> found;
  files_.Find("C:\\Dir\\*", found);
  EXPECT_EQ(At("dir/a.ini") + At("dir b/a.ini"), "[s]\r\nk=1\r\n(none)");
  EXPECT_TRUE(profiles_.Flush().empty());
  EXPECT_EQ(At("dir b/a.ini") + At("none.ini"), "[s]\r\nk=1\r\n(none)");
}

TEST_F(ProfileStringsTest, WhatAnotherProgramChangesStaysBesideOurOwnChange) {
  disk_.Write("drive_c/a.ini", "[s]\nk=1\n");
  EXPECT_TRUE(Set("3"));
  disk_.Write("drive_c/a.ini", "[s]\nk=4\nother=5\n");
  EXPECT_EQ(Get("other"), "5");
  EXPECT_TRUE(profiles_.Flush().empty());
  EXPECT_EQ(At("a.ini"), "[s]\nk=3\nother=5\r\n");
}

TEST_F(ProfileStringsTest, GivesAFileThatCouldNotBeStoredOnce) {
  disk_.Write("drive_c/a.ini", "[s]\nk=1\n");
  EXPECT_TRUE(Set("2"));
  std::filesystem::permissions(disk_.Folder() + "/drive_c/a.ini", std::filesystem::perms::owner_read);
  std::vector<FoundFile> found;
  files_.Find("C:\\*", found);
  EXPECT_EQ(Get("k"), "1");
  EXPECT_FALSE(Set("3")) << "a read-only file is refused at once";
  EXPECT_EQ(profiles_.Flush(), std::vector<std::string>{"C:\\a.ini"});
  EXPECT_TRUE(profiles_.Flush().empty());
  EXPECT_EQ(At("a.ini"), "[s]\nk=1\n");
}

}  // namespace
}  // namespace bxvbwiz
