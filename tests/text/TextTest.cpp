#include "text/Text.h"

#include <gtest/gtest.h>

namespace bxvbwiz {
namespace {

TEST(Text, LettersOfAllSupportedScriptsHaveTheirOtherCase) {
  const struct {
    const char* lower;
    const char* upper;
  } cases[] = {{"az09_{\u00E4\u00F6\u00FE\u00FF", "AZ09_{\u00C4\u00D6\u00DE\u0178"},
               {"\u0101\u017E\u01C6\u0253\u03B1\u03CE", "\u0100\u017D\u01C4\u0181\u0391\u038F"},
               {"\u0430\u044F\u0451\u0491\u0561\u0586", "\u0410\u042F\u0401\u0490\u0531\u0556"},
               {"\u1EA1\u1F00\u2170\u24D0\uFF41\uFF5A", "\u1EA0\u1F08\u2160\u24B6\uFF21\uFF3A"},
               {"\u00DF\u0131\u00B5\u017F\u8868\u00F7", "\u00DF\u0131\u00B5\u017F\u8868\u00F7"}};
  for (const auto& test : cases) {
    EXPECT_EQ(UpperCase(test.lower), test.upper);
    EXPECT_EQ(LowerCase(test.upper), test.lower);
    EXPECT_TRUE(EqualsIgnoreCase(test.lower, test.upper)) << test.lower;
  }
  EXPECT_EQ(UpperCase("\u03C2"), "\u03A3") << "both small sigmas have one capital";
  EXPECT_FALSE(EqualsIgnoreCase("\u0131", "I") || EqualsIgnoreCase("\u00E4", "\u00E4x"));
}

TEST(Text, ABrokenSequenceIsCharactersOfItsBytes) {
  EXPECT_EQ(UpperCase("a\xC3z\xE2\x82"), "A\xC3Z\xE2\x82") << "its bytes stay";
  EXPECT_EQ(CharacterCount("a\xC3z\xE2\x82"), 5u);
  EXPECT_EQ(CharacterCount("\xE0\x80\xAF"), 3u) << "longer than needed";
  EXPECT_EQ(CharacterCount("\xED\xA0\x80"), 3u) << "half of a pair";
  EXPECT_EQ(CharacterCount("\xF4\x90\x80\x80"), 4u) << "after the last code point";
  EXPECT_EQ(FirstCharacters("\u00E4\u8868z", 2), "\u00E4\u8868");
}

}  // namespace
}  // namespace bxvbwiz
