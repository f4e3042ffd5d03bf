#include <algorithm>

#include "contract/ContractPlatform.h"

namespace bxvbwiz {
namespace {

using namespace std::string_literals;

class ContractProfileStrings : public ContractTest {
 protected:
  // "read4 section, key" has a buffer of 4 bytes. Without a key it lists the keys, without both the sections;
  // "|" stands for the NULs of a list.
  std::string Call(const std::string& name, const std::string& a, const std::string& b) override {
    const std::size_t size = name.size() == 4 ? 255 : std::stoul(name.substr(4));
    const auto text = [](const std::string& given) { return given.empty() ? ProfileText() : given; };
    std::string value = profiles_.GetString(text(a), text(b), "default  ", size, At("a.ini"));
    std::replace(value.begin(), value.end(), '\0', '|');
    return value;
  }
  ProfileStrings& profiles_ = platform_.profiles;
};

TEST_F(ContractProfileStrings, ReadsWhatWindowsReadsAndCutsItToTheBuffer) {
  Do({"read s, k -> default"});
  Put("a.ini",
      "before=1\r\n[ s ] tail\r\n k \t=  v w \t\r\nq=\" x \"\nq2='y'\rm=\"a'\r\n;note\r\ne=\r\nline\r\n"
      "semi=v ; c\r\n#h=2\r\nK=second\r\nd=\"\"z\"\"\r\n[S]\r\nlate=1\r\n[\xC4rger]\r\n\xFC=\x80\x80");
  Do({"read s, k -> v w",
      "read S ,  K -> v w",
      "read4 s, k -> v w",
      "read3 s, k -> v ",
      "read1 s, k -> ",
      "read s, q ->  x ",
      "read s, q2 -> y",
      "read s, m -> \"a'",
      "read s, e -> ",
      "read s, line -> default",
      "read4 s, line -> def",
      "read s, semi -> v ; c",
      "read s, #h -> 2",
      "read s, d -> \"z\"",
      "read s, late -> default",
      "read s, before -> default",
      "read none, k -> default",
      "read \u00C4rger, \u00FC -> \u20AC\u20AC",
      "read2 \u00C4rger, \u00FC -> \u20AC",
      "read s -> k|q|q2|m|e|semi|#h|K|d|",
      "read6 s -> k|q|",
      "read4 s -> k|",
      "read -> s|S|\u00C4rger|"});
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

}  // namespace
}  // namespace bxvbwiz
