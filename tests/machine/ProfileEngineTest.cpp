#include "machine/ProfileEngine.h"

#include <gtest/gtest.h>

#include "machine/CodePages.h"
#include "machine/Utf16Text.h"

namespace bxvbwiz {
namespace {

constexpr const char* kNone = "(none)";

struct ReadCase {
  std::string file, section, key, value;
};

// What files of today's editors and hands hold; what the system's own hold is in the contract of the seam.
TEST(ProfileEngine, ReadsAsTheSystemDoes) {
  const ReadCase cases[] = {
      {"[s]\n\t k\v = \v\tv w \t\n", "s", "k", "v w"},
      {"[s]\nk=\"\n", "s", "k", "\""},
      {"[s]\nk=\"\"\n", "s", "k", ""},
      {"[s]\n ;k=v\n", "s", ";k", kNone},
      {"[a]b]\nk=v\n", "a", "k", "v"},
      {" \t[ s \nk=v\n", "s", "k", "v"},
      {"[s] x=y\nk=v\n", "s", "k", "v"},
      {"k=0\n[s]\nk=v\n", "", "k", kNone},
      {"[s]\rk=v\rj=w", "s", "j", "w"},
      {"\xEF\xBB\xBF[s]\nk=v\n[t]\nk=w\n", "s", "k", kNone},
      {"\xEF\xBB\xBF[s]\nk=v\n[t]\nk=w\n", "t", "k", "w"},
      {std::string(kUtf16Mark) + ToUtf16("[s]\nk=\u00E4"), "S", "K", "\xE4"},
      {"", "s", "k", kNone},
  };
  const auto codePage = MakeCodePage(1252);
  for (const ReadCase& c : cases) {
    EXPECT_EQ(ProfileEngine(*codePage, c.file).Value(c.section, c.key).value_or(kNone), c.value)
        << c.file << " [" << c.section << "] " << c.key;
  }
  // The second byte of the letter is that of a bracket.
  EXPECT_EQ(ProfileEngine(*MakeCodePage(932), "[\x83\x5Dz]\nk=v\n").Value("\x83\x5DZ", "k"), "v");
}

// The change: "k=v" sets, "k" removes the key, "" removes the section, a list replaces the section.
struct WriteCase {
  const char* before;
  const char* section;
  const char* change;
  const char* after;
};

bool Change(ProfileEngine& engine, const std::string& section, const std::string& change) {
  const std::size_t equals = change.find('=');
  if (change.empty()) return engine.RemoveSection(section);
  if (equals == std::string::npos) return engine.RemoveKey(section, change);
  return engine.SetValue(section, change.substr(0, equals), change.substr(equals + 1));
}

const WriteCase kWriteCases[] = {
    {"", " s ", " k = v ", "[s]\r\nk= v \r\n"},
    {"[s]\r\nk = old \r\n", "s", "k=new", "[s]\r\nk = new\r\n"},
    {"[s]\r\nk=\"old\"\r\n", "s", "k=", "[s]\r\nk=\r\n"},
    {"[s]\r\na=1\r\n;c\r\n\r\n[t]\r\nk=v", "s", "b=2", "[s]\r\na=1\r\nb=2\r\n;c\r\n\r\n[t]\r\nk=v\r\n"},
    {"[s]\nk=v\n[t]\nk=v\n", "u", "k=v", "[s]\nk=v\n[t]\nk=v\r\n[u]\r\nk=v\r\n"},
    {"; odd\n\n[s]\rk=1\r\nj = 2\n", "s", "k=3", "; odd\n\n[s]\rk=3\r\nj = 2\r\n"},
    {"[s]\r\nline\r\n", "s", "line=v", "[s]\r\nline=v\r\nline\r\n"},
    {"[s]\r\na=1\r\n;c\r\nb=2\r\n", "s", "b", "[s]\r\na=1\r\n;c\r\n"},
    {"[s]\na=1", "s", "b", "[s]\na=1"},
    {"[s]\na=1", "t", "", "[s]\na=1"},
    {"[s]\r\n;c\r\na=1\r\n[t]\r\nb=2\r\n", "s", "", ";c\r\n[t]\r\nb=2\r\n"},
    {"[s]\r\na=1\r\n[t]\r\n[s]\r\nb=2\r\n", "s", "", "[t]\r\n[s]\r\nb=2\r\n"},
    {"[s]\r\n", "s", "k=v\r\n[t]\r\nx=y", "[s]\r\nk=v\r\n[t]\r\nx=y\r\n"},
    {"[s]\r\n", "a]b", "k=v", "[s]\r\n[a]b]\r\nk=v\r\n"},
};

TEST(ProfileEngine, WritesTheBytesThatTheSystemWrites) {
  const auto codePage = MakeCodePage(1252);
  for (const WriteCase& c : kWriteCases) {
    for (const bool utf16 : {false, true}) {
      const auto file = [&](const char* text) {
        return utf16 ? std::string(kUtf16Mark) + ToUtf16(text) : std::string(text);
      };
      ProfileEngine engine(*codePage, file(c.before));
      EXPECT_EQ(Change(engine, c.section, c.change), std::string(c.before) != c.after) << c.before;
      EXPECT_EQ(engine.Bytes(), file(c.after)) << c.before << "[" << c.section << "] " << c.change;
    }
  }
}

TEST(ProfileEngine, ReadsItsOwnChangesLikeAFileThatWasReadAgain) {
  const auto codePage = MakeCodePage(1252);
  ProfileEngine engine(*codePage, "[s]\na=1\na=2\n[s]\nb=1\n");
  engine.RemoveKey("s", "a");
  EXPECT_EQ(engine.Value("s", "a"), "2");
  engine.RemoveSection("s");
  EXPECT_EQ(engine.Value("s", "b"), "1");
  engine.SetValue("s", "n", "v\r\n[t]\r\nx=y");
  EXPECT_EQ(engine.Value("t", "x"), "y");
  engine.SetValue("s", "a=b", "c");
  EXPECT_EQ(engine.Value("s", "a"), "b=c");
}

TEST(ProfileEngine, AReplacedSectionKeepsItsComments) {
  const auto codePage = MakeCodePage(1252);
  ProfileEngine engine(*codePage, "[s]\r\na=1\r\n;c\r\nb=2\r\n[t]\r\nk=v\r\n");
  EXPECT_TRUE(engine.SetSection("S", std::string_view("x=1\0dropped\0y= 2\0", 17)));
  EXPECT_EQ(engine.Bytes(), "[s]\r\nx=1\r\ny= 2\r\n;c\r\n[t]\r\nk=v\r\n");
  EXPECT_FALSE(engine.SetSection("S", std::string_view("x=1\0y= 2\0", 9)));
}

}  // namespace
}  // namespace bxvbwiz
