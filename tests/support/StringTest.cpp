#include <gtest/gtest.h>

#include "machine/CodePages.h"
#include "support/basParse.h"
#include "support/basStr.h"
#include "support/CCmdOptions.h"
#include "support/Conversion.h"

namespace bxvbwiz {
namespace {

TEST(GetToken, CountsEmptyFieldsAndWrapsRoundPastTheEnd) {
  const std::tuple<const char*, std::int16_t, const char*, const char*> cases[] = {
      {"a;b;;c", 1, ";", "a"}, {"a;b;;c", 2, ";", "b"},    {"a;b;;c", 3, ";", ""},
      {"a;b;;c", 4, ";", "c"}, {"a;b;;c", 5, ";", ""},     {"a;b;;c", 6, ";", ""},
      {"a;b;;c", 7, ";", "a"}, {"", 1, ";", ""},           {"abc", 0, ";", ""},
      {"abc", 1, "", ""},      {"a, b, c", 3, ", ", " c"}, {"\u00C4\u20AC\u00D6", 2, "\u20AC", "\u00D6"},
  };
  for (const auto& [text, number, separator, token] : cases)
    EXPECT_EQ(GetToken(text, number, separator), token) << text << " " << number;
}

TEST(CountChar, CountsCharactersNotBytes) {
  EXPECT_EQ(CountChar("\u00E4b\u00E4", "\u00E4"), 2);
  EXPECT_EQ(CountChar("aaaa", "aa"), 0);
  EXPECT_TRUE(ContainsAnyChar("a*b", "?*"));
  EXPECT_FALSE(ContainsAnyChar("\u00E4", "\u00F6\u00FC"));  // the three share their first byte
}

TEST(MakeCollectionKey, KeepsWhatTheCodePageCallsAlphanumeric) {
  EXPECT_EQ(MakeCollectionKey(*MakeCodePage(1252), "M\u00FCller & S\u00F6hne \u0416_[`{@/:"),
            "KM\u00FCllerS\u00F6hne");
}

TEST(ReplaceAll, NeverSearchesReplacedText) {
  EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
  EXPECT_EQ(ReplaceAll(std::nullopt, "a", "b"), std::nullopt);
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
}

TEST(StripQuotes, TakesOneQuoteFromEachEnd) {
  const std::pair<const char*, const char*> cases[] = {{"", ""},        {"\"", ""},    {"'", ""},
                                                       {"a", "a"},      {"\"\"", ""},  {"\"a", "a"},
                                                       {"a'", "a"},     {"\"a'", "a"}, {"\"\"a\"\"", "\"a\""},
                                                       {"a\"b", "a\"b"}};
  for (const auto& [text, stripped] : cases) EXPECT_EQ(StripQuotes(text), stripped) << text;
}

TEST(TokenReplace, FillsInOrderTheFirstPlaceholderOnly) {
  EXPECT_EQ(TokenReplace("The file %%1 of %%2, %%1", {"a", "b"}), "The file a of b, %%1");
  EXPECT_EQ(TokenReplace("%%1", {"%%2", "x"}), "x");
  // "%%10" begins with "%%1", which is filled first.
  const std::vector<std::string> ten = {"A", "B", "C", "D", "E", "F", "G", "H", "I", "J"};
  EXPECT_EQ(TokenReplace("[%%1][%%10]", ten), "[A][J]");
}

TEST(GetItem, FindsWholeNamesOnly) {
  const char* const font = "Name=MS Sans Serif;Bold=0;Italic=0;Size=8";
  using Text = std::optional<std::string>;
  const std::tuple<Text, const char*, bool, std::int32_t, Text> cases[] = {
      {font, "Name", true, 1, "MS Sans Serif"},
      {font, "size", true, 0, std::nullopt},
      {font, "size", false, 36, "8"},
      {font, "ize", true, 0, std::nullopt},
      {"Bold=;Size=8", "Bold", true, 1, std::nullopt},
      {"Size=8;Bold=", "Bold", true, 8, ""},
      {"\u00E4=\u00F6;B=\u00FC", "b", false, 5, "\u00FC"},
      {"\u00E4=\u00F6;B=\u00FC", "\u00C4", false, 1, "\u00F6"},
      {std::nullopt, "Bold", true, 0, std::nullopt},
      {font, "", true, 0, std::nullopt},
  };
  for (const auto& [list, name, caseSensitive, position, value] : cases) {
    bool found = position == 0;
    EXPECT_EQ(FindItemPos(list, name, caseSensitive), position) << name;
    EXPECT_EQ(GetItem(list, name, found, caseSensitive), value) << name;
    EXPECT_EQ(found, position != 0) << name;
  }
}

TEST(TextToNumber, TakesNothingButADecimalNumber) {
  const std::pair<std::string, std::optional<double>> cases[] = {
      {"3", 3},    {" -3 ", -3}, {"+2.5", 2.5},          {"1e2", 100}, {"", {}},
      {"+-1", {}}, {"inf", {}},  {"Service Pack 3", {}}, {"3 4", {}},  {std::string("3\0", 2), {}},
      {".", {}}};
  for (const auto& [text, number] : cases) EXPECT_EQ(TextToNumber(text), number) << text;
  EXPECT_EQ(RoundToInteger(2.5, -9, 9), 2);
  EXPECT_EQ(RoundToInteger(-3.5, -9, 9), -4);
  EXPECT_EQ(RoundToInteger(9.5, -9, 9), std::nullopt);
}

TEST(CCmdOptions, CutsPiecesAtSingleBlanks) {
  CCmdOptions options("/a -Bfoo bar /");
  ASSERT_EQ(options.Count(), 4);
  EXPECT_EQ(options.Item("A").Text(), "");
  EXPECT_EQ(options.Item("b").Text(), "foo");
  EXPECT_FALSE(options.Item(3).IsDelimited());
  EXPECT_EQ(options.Item(3).Tag() + "|" + options.Item(3).Text(), "|bar");
  EXPECT_TRUE(options.Item(4).IsDelimited());
  EXPECT_TRUE(options.TagExists("a"));
  EXPECT_FALSE(options.TagExists("ab"));
  EXPECT_EQ(options.TextExists("FOO"), 2);
  EXPECT_EQ(options.TextExists("baz"), 0);
  EXPECT_EQ(CCmdOptions("/a  /b").Count(), 1);
  EXPECT_EQ(CCmdOptions(" /a").Count(), 0);
  const CCmdOptions wide("/\u00E4\u00F6");
  EXPECT_EQ(wide.Item(1).Tag() + "|" + wide.Item(1).Text(), "\u00E4|\u00F6");
}

TEST(CCmdOptions, RefusesATagTwiceAndTooManyPieces) {
  const auto numberOf = [](const std::string& commandLine) {
    try {
      CCmdOptions options(commandLine);
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  };
  EXPECT_EQ(numberOf("/p1 -P2"), kErrorDuplicateKey);
  std::string pieces = "x";
  for (int count = 1; count < 255; ++count) pieces += " x";
  EXPECT_EQ(numberOf(pieces), 0);
  EXPECT_EQ(numberOf(pieces + " x"), kErrorOverflow);
}

}  // namespace
}  // namespace bxvbwiz
