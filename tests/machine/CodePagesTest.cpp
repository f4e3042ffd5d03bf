#include "machine/CodePages.h"

#include <gtest/gtest.h>

namespace bxvbwiz {
namespace {

TEST(CodePages, TextIsConvertedBothWays) {
  const struct {
    int codePage;
    const char* bytes;
    const char* text;
  } cases[] = {
      {1252, "Spa\xDF \x80\x92", "Spa\u00DF \u20AC\u2019"},
      {1252, "\x81\x8D\x9D", "\u0081\u008D\u009D"},  // undefined bytes keep their value
      {1250, "\xB9\x8A", "\u0105\u0160"},
      {1253, "\xC1\xAA", "\u0391\u00AA"},
      {874, "\xA1\xDB", "\u0E01\u00DB"},
      // second bytes that are backslashes
      {932, "C:\\\x95\x5C\\\x83\x5C\\\xB1", "C:\\\u8868\\\u30BD\\\uFF71"},
      {932, "\xFA\x5C\x81\xCA", "\u7E8A\uFFE2"},
      {936, "\xD6\xD0\x81\x5C\x80", "\u4E2D\u4E57\u20AC"},
      {949, "\xC7\xD1\x81\x41", "\uD55C\uAC02"},
      {950, "\xA4\x51\xB3\x5C", "\u5341\u8A31"},
      // lead bytes without a second one
      {932, "\x81\"\r\n\x81", "\u0081\"\r\n\u0081"},
      {932, "\xE4\"", "\uF7E4\""},
      {65001, "\xC3\xA4", "\u00E4"},
  };
  for (const auto& test : cases) {
    const std::unique_ptr<CodePage> codePage = MakeCodePage(test.codePage);
    ASSERT_TRUE(codePage) << test.codePage;
    EXPECT_EQ(codePage->Decode(test.bytes), test.text) << test.codePage;
    EXPECT_EQ(codePage->Encode(test.text), test.bytes) << test.codePage;
  }
  EXPECT_EQ(MakeCodePage(1252)->Encode("a\u8868z\U0001F600\u0416"), "a?z??") << "what it lacks";
  EXPECT_EQ(MakeCodePage(932)->Encode("\u00E4\u8868"), "?\x95\x5C");
  for (const int number : {0, 437, 1259, -1}) EXPECT_FALSE(MakeCodePage(number)) << number;
}

TEST(CodePages, LettersAndDigitsOfTheCodePageAreAlphaNumeric) {
  const std::unique_ptr<CodePage> western = MakeCodePage(1252);
  for (const char32_t character : {U'a', U'5', U'\u00E4', U'\u00B2'})
    EXPECT_TRUE(western->IsAlphaNumeric(character)) << static_cast<std::uint32_t>(character);
  for (const char32_t character : {U' ', U'\u00D7', U'\u20AC', U'\u0081', U'\u0416', U'\u8868'})
    EXPECT_FALSE(western->IsAlphaNumeric(character)) << static_cast<std::uint32_t>(character);
  EXPECT_TRUE(MakeCodePage(932)->IsAlphaNumeric(U'\u8868'));
}

}  // namespace
}  // namespace bxvbwiz
