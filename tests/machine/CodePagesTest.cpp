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
      {1251, "\xCF\xF0\xB8", "\u041F\u0440\u0451"},
      {1253, "\xC1\xAA", "\u0391\u00AA"},
      {1255, "\xE0\xCA", "\u05D0\u05BA"},
      {874, "\xA1\xDB", "\u0E01\u00DB"},
      // second bytes that are backslashes
      {932, "C:\\\x95\x5C\\\x83\x5C\\\xB1", "C:\\\u8868\\\u30BD\\\uFF71"},
      {932, "\xFA\x5C\x81\xCA", "\u7E8A\uFFE2"},
      {936, "\xD6\xD0\x81\x5C\x80", "\u4E2D\u4E57\u20AC"},
      {949, "\xC7\xD1\x81\x41", "\uD55C\uAC02"},
      {950, "\xA4\x51\xB3\x5C", "\u5341\u8A31"},
      {65001, "\xC3\xA4", "\u00E4"},
  };
  for (const auto& test : cases) {
    const std::unique_ptr<CodePage> codePage = MakeCodePage(test.codePage);
    ASSERT_TRUE(codePage) << test.codePage;
    EXPECT_EQ(codePage->Decode(test.bytes), test.text) << test.codePage;
    EXPECT_EQ(codePage->Encode(test.text), test.bytes) << test.codePage;
  }
}

TEST(CodePages, WhatACodePageLacksBecomesAQuestionMark) {
  EXPECT_EQ(MakeCodePage(1252)->Encode("a\u8868z\U0001F600\u0416"), "a?z??");
  EXPECT_EQ(MakeCodePage(932)->Encode("\u00E4\u8868"), "?\x95\x5C");
}

TEST(CodePages, ABrokenPairLosesNoByte) {
  EXPECT_EQ(MakeCodePage(932)->Decode("\x81"), "\u0081") << "cut at the end";
  EXPECT_EQ(MakeCodePage(932)->Decode("\x81\"\r\n"), "\u0081\"\r\n") << "no second byte";
  EXPECT_EQ(MakeCodePage(932)->Encode("\u0081\""), "\x81\"");
  const std::string lead = MakeCodePage(932)->Decode("\xE4\"");
  EXPECT_EQ(lead.back(), '"');
  EXPECT_EQ(MakeCodePage(932)->Encode(lead), "\xE4\"");
  EXPECT_EQ(MakeCodePage(65001)->Decode("a\xE4z"), "a\u00E4z");
}

TEST(CodePages, AsciiIsTheSameInAllAndOtherNumbersAreNotSupported) {
  std::string ascii;
  for (char character = 0; character < 0x7F; ++character) ascii += character;
  for (const int number : {874, 932, 936, 949, 950, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258}) {
    const std::unique_ptr<CodePage> codePage = MakeCodePage(number);
    ASSERT_TRUE(codePage) << number;
    EXPECT_EQ(codePage->Decode(ascii), ascii) << number;
    EXPECT_EQ(codePage->Encode(ascii), ascii) << number;
  }
  for (const int number : {0, 437, 1259, 20127, -1}) EXPECT_FALSE(MakeCodePage(number)) << number;
}

TEST(CodePages, LettersAndDigitsOfTheCodePageAreAlphaNumeric) {
  const std::unique_ptr<CodePage> western = MakeCodePage(1252);
  for (const char32_t character : {U'a', U'Z', U'5', U'\u00E4', U'\u00DF', U'\u00B2'}) {
    EXPECT_TRUE(western->IsAlphaNumeric(character)) << static_cast<std::uint32_t>(character);
  }
  for (const char32_t character : {U' ', U'.', U'-', U'\u00D7', U'\u20AC', U'\u0081', U'\u0416', U'\u8868'}) {
    EXPECT_FALSE(western->IsAlphaNumeric(character)) << static_cast<std::uint32_t>(character);
  }
  EXPECT_TRUE(MakeCodePage(932)->IsAlphaNumeric(U'\u8868'));
  EXPECT_TRUE(MakeCodePage(1251)->IsAlphaNumeric(U'\u0416'));
}

}  // namespace
}  // namespace bxvbwiz
