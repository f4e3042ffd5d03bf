#include "contract/ContractPlatform.h"

namespace bxvbwiz {
namespace {

using namespace std::string_literals;

class ContractProfileStrings : public ContractTest {
 protected:
  std::string Read(ProfileText section, ProfileText key, std::size_t size = 255) {
    return profiles_.GetString(section, key, "default  ", size, At("a.ini"));
  }
  ProfileStrings& profiles_ = platform_.profiles;
};

TEST_F(ContractProfileStrings, ReadsWhatWindowsReadsAndCutsItToTheBuffer) {
  Put("a.ini",
      "before=1\r\n[ s ] tail\r\n k \t=  v w \t\r\nq=\" x \"\nq2='y'\rm=\"a'\r\n;note\r\ne=\r\nline\r\n"
      "semi=v ; c\r\n#h=2\r\nK=second\r\nd=\"\"z\"\"\r\n[S]\r\nlate=1\r\n[\xC4rger]\r\n\xFC=\x80\x80");
  const struct {
    ProfileText section, key;
    std::string expected;
    std::size_t size = 255;
  } cases[] = {
      {"s", "k", "v w"},
      {"S ", " K", "v w"},
      {"s", "k", "v w", 4},
      {"s", "k", "v ", 3},
      {"s", "k", "", 1},
      {"s", "q", " x "},
      {"s", "q2", "y"},
      {"s", "m", "\"a'"},
      {"s", "e", ""},
      {"s", "line", "default"},
      {"s", "line", "def", 4},
      {"s", "semi", "v ; c"},
      {"s", "#h", "2"},
      {"s", "d", "\"z\""},
      {"s", "late", "default"},
      {"s", "before", "default"},
      {"none", "k", "default"},
      {"\u00C4rger", "\u00FC", "\u20AC\u20AC"},
      {"\u00C4rger", "\u00FC", "\u20AC", 2},
      {"s", std::nullopt, "k\0q\0q2\0m\0e\0semi\0#h\0K\0d\0"s},
      {"s", std::nullopt, "k\0q\0"s, 6},
      {"s", std::nullopt, "k\0q"s, 5},
      {std::nullopt, std::nullopt, "s\0S\0\u00C4rger\0"s},
  };
  for (const auto& test : cases)
    EXPECT_EQ(Read(test.section, test.key, test.size), test.expected) << *test.key.value_or("(names)").data();
  EXPECT_EQ(profiles_.GetString("s", "k", "default", 255, At("none.ini")), "default");
}

TEST_F(ContractProfileStrings, WritesWhatWindowsWrites) {
  const struct {
    const char* before;  // null: no file
    ProfileText section, key, value;
    const char* after;
  } cases[] = {
      {nullptr, "s", "k", "v", "[s]\r\nk=v\r\n"},
      {"[s]", "s", "k", "", "[s]\r\nk=\r\n"},
      {"[S]\r\nKey=1\r\nb=2\r\n", "s", " KEY ", "9 ; x=y", "[S]\r\nKey=9 ; x=y\r\nb=2\r\n"},
      {"[s]\r\na=1\r\n[t]\r\nb=2\r\n", " s", "c", "3", "[s]\r\na=1\r\nc=3\r\n[t]\r\nb=2\r\n"},
      {"[s]\r\na=1\r\n", "t", "b", "\u00E4\u20AC\u0416", "[s]\r\na=1\r\n[t]\r\nb=\xE4\x80?\r\n"},
      {"[s]\r\n;note\r\na=1\r\na=2\r\n[s]\r\na=3\r\n", "s", "a", "4",
       "[s]\r\n;note\r\na=4\r\na=2\r\n[s]\r\na=3\r\n"},
      {"[s]\r\nk=1\r\n[t]\r\n", "s", "K", std::nullopt, "[s]\r\n[t]\r\n"},
      {"[s]\r\nk=1\r\n[t]\r\nb=2\r\n", "S", std::nullopt, std::nullopt, "[t]\r\nb=2\r\n"},
      {"[s]\r\nk=1\r\n", "s", "none", std::nullopt, "[s]\r\nk=1\r\n"},
      {"[s]\r\nk=1\r\n", "t", std::nullopt, std::nullopt, "[s]\r\nk=1\r\n"},
  };
  int number = 0;
  for (const auto& test : cases) {
    const std::string name = std::to_string(++number) + ".ini";
    if (test.before != nullptr) Put(name, test.before);
    EXPECT_TRUE(profiles_.WriteString(test.section, test.key, test.value, At(name))) << test.after;
    EXPECT_EQ(Get(At(name)), test.after);
  }
}

TEST_F(ContractProfileStrings, WritesWholeSections) {
  Put("a.ini", "[a]\r\nx=1\r\n[s]\r\nk=1\r\nl=2\r\n[z]\r\ny=1\r\n");
  EXPECT_TRUE(profiles_.WriteSection("S", "k=3\0new=4\0nothing\0"s, At("a.ini")));
  EXPECT_EQ(Get(At("a.ini")), "[a]\r\nx=1\r\n[s]\r\nk=3\r\nnew=4\r\n[z]\r\ny=1\r\n");
  EXPECT_TRUE(profiles_.WriteSection("s", "", At("a.ini")));
  EXPECT_TRUE(profiles_.WriteSection("new", "k=v\0"s, At("a.ini")));
  EXPECT_EQ(Get(At("a.ini")), "[a]\r\nx=1\r\n[s]\r\n[z]\r\ny=1\r\n[new]\r\nk=v\r\n");
}

TEST_F(ContractProfileStrings, AWriteThatCannotBeMadeFailsAndChangesNothing) {
  Put("held.ini", "[s]\r\nk=v\r\n");
  ASSERT_EQ(files_.MakeDirectory(At("folder.ini")), SystemError::Success);
  const FileHandle held = files_.Open(At("held.ini"), kGenericRead | kGenericWrite, 0, kOpenExisting, 0);
  ASSERT_NE(held, kInvalidFile);
  for (const std::string& file : {At("missing\\a.ini"), At("folder.ini"), At("held.ini")}) {
    EXPECT_FALSE(profiles_.WriteString("s", "k", "new", file)) << file;
    EXPECT_TRUE(profiles_.Flush().empty()) << file;
  }
  files_.Close(held);
  EXPECT_EQ(Get(At("held.ini")), "[s]\r\nk=v\r\n");
  EXPECT_EQ(Get(At("missing\\a.ini")), "3");
}

TEST_F(ContractProfileStrings, AFileWithoutAPathLiesInTheWindowsFolder) {
  const std::string path = platform_.facts.WindowsDirectory(260) + "\\bxvbwiz_contract.ini";
  ASSERT_TRUE(profiles_.WriteString("s", "k", "v", "bxvbwiz_contract.ini"));
  EXPECT_EQ(Get(path), "[s]\r\nk=v\r\n");
  EXPECT_EQ(profiles_.GetString("s", "k", "", 255, path), "v");
  files_.Delete(path);
}

TEST_F(ContractProfileStrings, AChangedFileIsReadAnew) {
  ASSERT_TRUE(profiles_.WriteString("s", "k", "v", At("a.ini")));
  EXPECT_EQ(Read("s", "k"), "v");
  Put("a.ini", "[s]\r\nk=changed\r\n");
  EXPECT_EQ(Read("s", "k"), "changed");
  ASSERT_TRUE(profiles_.WriteString("s", "l", "1", At("a.ini")));
  EXPECT_EQ(Get(At("A.INI")), "[s]\r\nk=changed\r\nl=1\r\n");
}

}  // namespace
}  // namespace bxvbwiz
