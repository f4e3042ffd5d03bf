#include <gtest/gtest.h>

#include "platform/ProfileFakes.h"

namespace bxvbwiz {
namespace {

class ProfileStringsTest : public testing::Test {
 protected:
  std::string Get(ProfileText section, ProfileText key, std::size_t size,
                  const std::string& file = "C:\\a.ini") {
    return profiles_.GetString(section, key, "default  ", size, file);
  }
  bool Set(const std::string& value, const std::string& file = "C:\\a.ini") {
    return profiles_.WriteString("s", "k", value, file);
  }

  FakeCodePage codePage_;
  FakeProfileStore store_;
  MachineProfileStrings profiles_{codePage_, store_, "C:\\WINDOWS"};
};

TEST_F(ProfileStringsTest, CutsToTheBufferInBytesOfTheCodePage) {
  store_.Put("C:\\a.ini", "[s]\nk=abc\nz=\x81\x5D\x81\x5D\n[none]\n");
  const struct {
    ProfileText section, key;
    std::size_t size;
    std::string expected;
  } cases[] = {
      {"s", "k", 4, "abc"},
      {"s", "k", 3, "ab"},
      {"s", "k", 1, ""},
      {"s", "k", 0, ""},
      {"s", "z", 5, "\u4E00\u4E00"},
      {"s", "z", 4, "\u4E00"},
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
  EXPECT_EQ(store_.loads, 2);
}

TEST_F(ProfileStringsTest, FailsAtOnceWhereNothingCanBeWritten) {
  store_.Put("C:\\readonly.ini", "[s]\nk=v\n");
  store_.Put("C:\\secret.ini", "[s]\nk=v\n");
  for (const char* file : {"C:\\missing\\a.ini", "C:\\readonly.ini", "C:\\secret.ini"}) {
    EXPECT_FALSE(Set("new", file)) << file;
    EXPECT_FALSE(profiles_.WriteString("s", "k", std::nullopt, file)) << file;
  }
  EXPECT_TRUE(profiles_.WriteString("s", "k", std::nullopt, "C:\\new.ini"));
  EXPECT_TRUE(profiles_.Flush().empty());
  EXPECT_EQ(store_.files.size(), 2U);
  EXPECT_EQ(store_.At("C:\\readonly.ini"), "[s]\nk=v\n");
}

TEST_F(ProfileStringsTest, StoresWhenTheFileIsNeededAndNotBefore) {
  EXPECT_TRUE(Set("1", "C:\\dir\\a.ini"));
  EXPECT_TRUE(Set("1", "C:\\dir b\\a.ini"));
  EXPECT_TRUE(Set("\xE2\x82\xAC", "b.ini"));
  EXPECT_TRUE(store_.files.empty());
  EXPECT_EQ(Get("s", "k", 9, "c:\\DIR\\A.INI"), "1");
  profiles_.BeforeFileAccess("C:\\Dir");
  EXPECT_EQ(store_.At("C:\\dir\\a.ini"), "[s]\r\nk=1\r\n");
  EXPECT_EQ(store_.files.size(), 1U);
  EXPECT_TRUE(profiles_.Flush().empty());
  EXPECT_EQ(store_.At("C:\\WINDOWS\\b.ini"), "[s]\r\nk=?\r\n");
  EXPECT_EQ(store_.files.size(), 3U);
}

TEST_F(ProfileStringsTest, SeesAtOnceWhatAnotherProgramChanges) {
  store_.Put("C:\\a.ini", "[s]\nk=1\n");
  EXPECT_EQ(Get("s", "k", 9), "1");
  store_.Put("C:\\a.ini", "[s]\nk=2\n");
  EXPECT_EQ(Get("s", "k", 9), "2");
  EXPECT_TRUE(Set("3"));
  store_.Put("C:\\a.ini", "[s]\nk=4\nother=5\n");
  EXPECT_EQ(Get("s", "other", 9), "5");
  EXPECT_TRUE(profiles_.Flush().empty());
  EXPECT_EQ(store_.At("C:\\a.ini"), "[s]\nk=3\nother=5\r\n");
  store_.files.clear();
  EXPECT_EQ(Get("s", "k", 9), "default");
}

TEST_F(ProfileStringsTest, GivesAFileThatCouldNotBeStoredOnce) {
  store_.Put("C:\\a.ini", "[s]\nk=1\n");
  EXPECT_TRUE(Set("2"));
  EXPECT_TRUE(Set("2", "C:\\b.ini"));
  store_.full = true;
  profiles_.StoreAll();
  EXPECT_EQ(Get("s", "k", 9), "1");
  EXPECT_TRUE(Set("3"));
  EXPECT_EQ(profiles_.Flush(), (std::vector<std::string>{"C:\\a.ini", "C:\\b.ini"}));
  store_.full = false;
  EXPECT_TRUE(profiles_.Flush().empty());
  EXPECT_EQ(store_.At("C:\\a.ini"), "[s]\nk=1\n");
}

}  // namespace
}  // namespace bxvbwiz
