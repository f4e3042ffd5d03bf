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

TEST_F(ProfileStringsTest, CutsToTheBufferInBytesOfTheCodePage) {
  Put("a.ini", "[s]\nk=abc\nz=\x95\x5C\x95\x5C\n[none]\n");
  const struct {
    ProfileText section, key;
    std::size_t size;
    std::string expected;
  } cases[] = {
      {"s", "k", 4, "abc"},
      {"s", "k", 3, "ab"},
      {"s", "k", 1, ""},
      {"s", "k", 0, ""},
      {"s", "z", 5, "\u8868\u8868"},
      {"s", "z", 4, "\u8868"},
      {"s", "x", 255, "default"},
      {"s", "x", 4, "def"},
      {"t", std::nullopt, 255, "default"},
      {"s", std::nullopt, 5, std::string("k\0z\0", 4)},
      {"s", std::nullopt, 4, std::string("k\0", 2)},
      {"s", std::nullopt, 1, ""},
      {"none", std::nullopt, 255, ""},
      {std::nullopt, std::nullopt, 255, std::string("s\0none\0", 7)},
  };
  for (const auto& c : cases) EXPECT_EQ(Get(c.section, c.key, c.size), c.expected) << c.size;
  EXPECT_EQ(Get("s", "k", 255, "C:\\b.ini"), "default");
}

TEST_F(ProfileStringsTest, TellsOnceWhatIsThereAndCannotBeRead) {
  disk_.platform().files.MakeDirectory("C:\\folder.ini");
  for (const char* file : {"C:\\folder.ini", "C:\\missing.ini", "C:\\missing\\a.ini", "C:\\folder.ini"}) {
    EXPECT_EQ(Get("s", "k", 255, file), "default");
  }
  EXPECT_EQ(Profiles().Unreadable(), std::vector<std::string>{"C:\\folder.ini"});
  EXPECT_TRUE(Profiles().Unreadable().empty());
}

TEST_F(ProfileStringsTest, FailsAtOnceWhereNothingCanBeWritten) {
  Put("readonly.ini", "[s]\nk=v\n");
  disk_.platform().files.SetAttributes("C:\\readonly.ini", kAttributeReadOnly);
  disk_.platform().files.MakeDirectory("C:\\folder.ini");
  for (const char* file : {"C:\\missing\\a.ini", "C:\\readonly.ini", "C:\\folder.ini"}) {
    EXPECT_FALSE(Set("new", file)) << file;
    EXPECT_FALSE(Profiles().WriteString("s", "k", std::nullopt, file)) << file;
  }
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

TEST_F(ProfileStringsTest, SeesAtOnceWhatAnotherProgramChanges) {
  Put("a.ini", "[s]\nk=1\n");
  EXPECT_EQ(Get("s", "k", 9), "1");
  Put("a.ini", "[s]\nk=22\n");
  EXPECT_EQ(Get("s", "k", 9), "22");
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
