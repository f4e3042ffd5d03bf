#include "setupgen/Report.h"

#include "SetupFixture.h"

namespace bxvbwiz {
namespace {

using ReportTest = SetupFixture;

TEST(Format, LinesBreakAtMarkersAndAtBlanksFromColumn75On) {
  const std::string nine = *ReplaceAll(std::string(9, '#'), "#", "1234567 ");  // 72 columns
  const std::string accents = *ReplaceAll(std::string(73, '#'), "#", "\xC3\xA0");
  const std::pair<std::string, std::string> cases[] = {
      {"A/nB", "A\r\nB"},
      {"A/n/nB", "A\r\n\r\nB"},
      {"A\r\nB\r\n\r\nC", "A\r\nB\r\n\r\nC"},
      {"A\nB\rC", "A\r\nBC"},
      {"   and/or n /", "and/or n /"},
      {nine + "12 b c", nine + "12\r\nb c"},  // the blank is column 75
      {nine + "1 b c", nine + "1 b\r\nc"},    // the first blank is column 74
      {nine + "a/n" + nine + "12 b", nine + "a\r\n" + nine + "12\r\nb"},
      {accents + " b c", accents + " b\r\nc"},
      {std::string(73, 'x') + "\r b", std::string(73, 'x') + "\r\nb"},  // a dropped return counts
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(FormatFor80CharDisplay(text), expected) << text;
}

TEST_F(ReportTest, TheTextAsksForTheDataAccessThatIsNeeded) {
  const StringTable& strings = platform().strings;
  for (int bits = 0; bits < 16; ++bits) {
    const DataAccessNeeds needs{(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
    std::string expected = *ReplaceAll(strings.Text(TextId::ReportIntroduction), "/n", "\r\n");
    const TextId dao[] = {
        {}, TextId::DaoJetRequired, TextId::DaoOdbcDirectRequired, TextId::DaoJetAndOdbcDirectRequired};
    for (const TextId text : {dao[bits & 3], needs.rdo ? TextId::RdoRequired : TextId{},
                              needs.ado ? TextId::AdoRequired : TextId{}})
      if (text != TextId{}) expected += "\r\n\r\n" + strings.Text(text);
    expected += "\r\n\r\nPlease ensure you take any";
    EXPECT_EQ(AssembleReport(strings, needs, {}).substr(0, expected.size()), expected) << bits;
  }
  EXPECT_NE(AssembleReport(strings, {}, ScriptDefinedVariableNames(1, 3))
                .find("\r\n\r\n" + strings.Text(TextId::VariablesAdded) +
                      "\r\n - <VBWizVar-1>, <VBWizVar-2>\r\n\r\nPlease"),
            std::string::npos);
}

TEST_F(ReportTest, WhatWasFoundIsListedUnformattedAndTheWorstFirst) {
  const StringTable& strings = platform().strings;
  Findings found(strings);
  EXPECT_EQ(LeftToDo(strings, found), "");
  const std::string name = "C:\\" + std::string(70, 'x') + " y/new.dll";
  found.Add({FindingId::FileTimesNotSet, {"a.bxp"}, {}});
  found.Add({FindingId::FileMissing, {name}, LineOrigin("C:\\p.vbp", 7)});
  const std::string text = LeftToDo(strings, found);
  EXPECT_EQ(text.find("*** Left To Do ***\r\n\r\nerror [file-missing]: The file " + name +
                      " was not found on this computer.\r\n  from: C:\\p.vbp, line 7\r\n  to do: "),
            0U);
  EXPECT_NE(text.find("\r\n\r\nnote [file-times-not-set]: "), std::string::npos);
}

// What no tree of a whole run has; the head of the report comes from the template.
TEST_F(ReportTest, SupportFilesOfVisualBasicSixAreNoHeading) {
  std::vector<std::unique_ptr<TreeNode>> nodes;
  TreeNode& view = *nodes.emplace_back(std::make_unique<TreeNode>());
  view.text = "D\xC3\xA9mo";
  for (const char* version : {"5", "6"})
    view.Add("", "Visual Basic " + std::string(version) + ".0 Support Files", NodeImage::Heading);
  WriteReport(platform(), kSetup, "", nodes);
  const std::string tree =
      "[D\xE9mo]\r\n   [Visual Basic 5.0 Support Files]\r\n      None\r\n"
      "   -> Visual Basic 6.0 Support Files\r\n";
  EXPECT_NE(Stored("C:\\Setup\\Script Files\\Report.txt").find(tree), std::string::npos);
}

}  // namespace
}  // namespace bxvbwiz
