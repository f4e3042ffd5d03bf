#include "machine/ProfileEngine.h"

#include <gtest/gtest.h>

#include "machine/CodePages.h"
#include "text/Utf16Text.h"

namespace bxvbwiz {
namespace {

// Files as today's editors and users write them. The contract of the seam covers what the system writes.
TEST(ProfileEngine, ReadsAsTheSystemDoes) {
  const struct {
    std::string file, section, key, value;
    int codePage = 1252;
  } cases[] = {
      {"[s]\n\t k\v = \v\tv w \t\n", "s", "k", "v w"},
      {"[s]\nk=\"\n", "s", "k", "\""},
      {"[s]\n ;k=v\n", "s", ";k", "(none)"},
      {"[a]b]\nk=v\n", "a", "k", "v"},
      {" \t[ s \nk=v\n", "s", "k", "v"},
      {"k=0\n[s]\nk=v\n", "", "k", "(none)"},
      {"[s]\rk=v\rj=w", "s", "j", "w"},
      {"\xEF\xBB\xBF[s]\nk=v\n[t]\nk=w\n", "s", "k", "(none)"},
      {std::string(kUtf16Mark) + ToUtf16("[s]\nk=\u00E4"), "S", "K", "\xE4"},
      {"[\x83\x5Dz]\nk=v\n", "\x83\x5DZ", "k", "v", 932},  // the letter's second byte is that of a bracket
  };
  for (const auto& c : cases) {
    const auto codePage = MakeCodePage(c.codePage);
    EXPECT_EQ(ProfileEngine(*codePage, c.file).Value(c.section, c.key).value_or("(none)"), c.value) << c.file;
  }
}

TEST(ProfileEngine, WhatAChangeDoesNotTouchKeepsItsBytes) {
  const auto codePage = MakeCodePage(1252);
  for (const bool utf16 : {false, true}) {
    const auto file = [&](const char* text) {
      return utf16 ? std::string(kUtf16Mark) + ToUtf16(text) : std::string(text);
    };
    ProfileEngine engine(*codePage, file("; odd\n\n[s]\rk = \"1\"\r\nline\n;c\n[t]\n[s]\nj=2"));
    EXPECT_TRUE(engine.SetValue("s", "k", "new"));
    EXPECT_TRUE(engine.SetValue(" S", "line", " v"));
    EXPECT_EQ(engine.Bytes(), file("; odd\n\n[s]\rk = new\r\nline= v\r\nline\n;c\n[t]\n[s]\nj=2\r\n"));
    EXPECT_FALSE(engine.RemoveKey("s", "none"));
    EXPECT_TRUE(engine.SetValue("t", "x", "1\r\nX=2") && engine.RemoveKey("t", "x"));
    EXPECT_EQ(engine.Value("t", "x"), "2") << "the next key of that name is found now";
    EXPECT_TRUE(engine.RemoveKey("t", "x"));
    EXPECT_TRUE(engine.RemoveSection("s"));
    EXPECT_EQ(engine.Bytes(), file("; odd\n\nline\n;c\n[t]\n[s]\nj=2\r\n"));
    EXPECT_EQ(engine.Value("s", "j"), "2") << "the next section of that name is found now";
  }
}

}  // namespace
}  // namespace bxvbwiz
