#include "setupgen/Report.h"

#include "SetupFixture.h"
#include "setupgen/Patches.h"

namespace bxvbwiz {
namespace {

using ReportTest = SetupFixture;
using PatchTest = SetupFixture;

TEST(Format, LinesBreakAtMarkersAndAtBlanksFromColumn75On) {
  const std::string nine = *ReplaceAll(std::string(9, '#'), "#", "1234567 ");  // 72 columns
  const std::string accents = *ReplaceAll(std::string(73, '#'), "#", "\xC3\xA0");
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {"A/nB", "A\r\nB"},
      {"A/n/nB", "A\r\n\r\nB"},
      {"A\r\nB\r\n\r\nC", "A\r\nB\r\n\r\nC"},
      {"A\nB\rC", "A\r\nBC"},
      {"   and/or n /", "and/or n /"},
      {std::string(100, 'x'), std::string(100, 'x')},
      {nine + "12 b c", nine + "12\r\nb c"},  // the blank is column 75
      {nine + "1 b c", nine + "1 b\r\nc"},    // the first blank is column 74
      {nine + "a/n" + nine + "12 b", nine + "a\r\n" + nine + "12\r\nb"},
      {accents + " b c", accents + " b\r\nc"},
      {std::string(73, 'x') + "\r b", std::string(73, 'x') + "\r\nb"},  // a dropped return counts
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(FormatFor80CharDisplay(text), expected) << text;
}

TEST_F(ReportTest, TheTextAsksForTheDataAccessThatIsNeeded) {
  const StringTable& strings = run().platform.strings;
  const std::string start = *ReplaceAll(strings.Text(1021), "/n", "\r\n");
  for (int bits = 0; bits < 16; ++bits) {
    const DataAccessNeeds needs{(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
    std::string expected = start;
    const unsigned dao[] = {0, 1063, 1061, 1064};
    for (const unsigned number : {dao[bits & 3], needs.rdo ? 1062U : 0U, needs.ado ? 1075U : 0U})
      if (number != 0) expected += "\r\n\r\n" + strings.Text(number);
    const std::string report = AssembleReport(strings, needs, {});
    EXPECT_EQ(report.substr(0, expected.size()), expected) << bits;
    EXPECT_EQ(report.substr(expected.size(), 30), "\r\n\r\nPlease ensure you take any") << bits;
    EXPECT_EQ(report.find("/n"), std::string::npos);
  }
  EXPECT_TRUE(ScriptDefinedVariableNames(2, 2).empty());
  EXPECT_NE(AssembleReport(strings, {}, ScriptDefinedVariableNames(1, 3))
                .find("\r\n\r\n" + strings.Text(1073) + "\r\n - <VBWizVar-1>, <VBWizVar-2>\r\n\r\nPlease"),
            std::string::npos);
}

TEST_F(ReportTest, TheFileHoldsTheReportAndTheTree) {
  std::vector<std::unique_ptr<TreeNode>> view(2);
  for (auto& node : view) node = std::make_unique<TreeNode>();
  view[0]->text = "D\xC3\xA9mo";
  view[1]->text = "Empty";
  TreeNode& forms = view[0]->Add("", "Forms", NodeImage::Heading);
  forms.Add("", "a.frm", NodeImage::Form).Add("", "Objects", NodeImage::Heading);
  view[0]->Add("", "Visual Basic 5.0 Support Files", NodeImage::Heading);
  view[0]->Add("", "Visual Basic 6.0 Support Files", NodeImage::Heading);
  const std::string tree =
      "[D\xE9mo]\r\n   [Forms]\r\n      -> a.frm\r\n         [Objects]\r\n            None\r\n"
      "   [Visual Basic 5.0 Support Files]\r\n      None\r\n   -> Visual Basic 6.0 Support Files\r\n";
  WriteReport(run().platform, "C:\\Setup", "  first/nsecond", view);
  const std::string separator = std::string(60, '=') + "\r\n\r\n\r\n";
  EXPECT_EQ(Stored("Setup\\Script Files\\Report.txt"),
            "****** Borvex VB Project Wizard Report ******\r\n\r\nThis file contains information such as the "
            "the VB Project Wizard's Report and\r\na printout of the VB Project View of file dependencies "
            "found by the Wizard.\r\n\r\n1/2/2003 12:00:00 AM\r\n\r\n\r\n" +
                separator + "*** VB Project Wizard Report ***\r\n\r\n\r\nfirst\r\nsecond\r\n\r\n\r\n" +
                separator + "*** VB Project View of File Dependencies ***\r\n\r\n\r\n" + tree +
                "[Empty]\r\n   None\r\n");

  WriteTreeViewToFile(run().platform, *view[0], 0, "", "C:\\tree.txt");
  WriteTreeViewToFile(run().platform, forms, 1, "", "C:\\tree.txt");
  EXPECT_EQ(Stored("tree.txt"), tree + tree.substr(8, 66));
  EXPECT_THROW(WriteReport(run().platform, "C:\\None", "", view), RuntimeError);
}

TEST_F(PatchTest, TheTemplateIsFilledWithTheAnswers) {
  Put("Setup\\My.bxp", "[Data]\r\nInstallationGUID=old\r\n[Language]\r\nLanguageSupport0=0007\r\n");
  Put("Setup\\String Tables\\0009-English\\value.shl", "");
  Put("Links\\Old.bxl", "something longer than what will be written into the data link file afterwards");
  const SetupAnswers answers{"My App", "Acme", "Utility", "1.2", "my.exe"};
  for (int repeat = 0; repeat < 2; ++repeat) {
    PatchIpr(run().platform, run().lists, answers, "C:\\Setup\\My.bxp");
    run().lists.Forget();
  }
  PatchShl(run().platform, answers, "C:\\Setup");
  PatchMda(run().platform, answers, "C:\\Setup");
  PatchShell(run().platform, answers, kSetup);
  CreateDataLink(run().platform, kSetup, "Old");
  EXPECT_EQ(Words("Setup\\My.bxp"),
            "[Data] InstallationGUID=0F1E2D3C-4A5B-6987-A5B4-C3D2E1F00102 InstallRoot=C:\\Setup "
            "CompanyName=Acme Type=Utility Version=1.2 ProductName=My App [Language] LanguageSupport0=0007 "
            "LanguageSupport1=0009");
  EXPECT_EQ(Words("Setup\\String Tables\\0009-English\\value.shl"),
            "[Data] TITLE_MAIN=My App UNINST_KEY=My App TITLE_CAPTIONBAR=My App Setup "
            "UNINST_DISPLAY_NAME=My App FOLDER_NAME=My App PRODUCT_NAME=My App COMPANY_NAME=Acme "
            "PRODUCT_VERSION=1.2 PRODUCT_KEY=my.exe");
  EXPECT_EQ(Words("Setup\\Media\\Default\\Default.mda"),
            "[SetupInfo] APPLICATIONNAME=My App [TagFileInfo] APPLICATIONNAME=My App");
  EXPECT_EQ(Words("Setup\\Shell Objects\\Default.shl"),
            "[Shortcut0] DisplayText=My App Target=<TARGETDIR>\\my.exe [Icon0] DisplayText=My App "
            "Target=<TARGETDIR>\\my.exe [Data] Shortcut0=Folder2\\My App Icon0=Group0\\My App");
  EXPECT_EQ(Stored("Links\\Old.bxl"),
            "[Data]\r\nLocation=C:\\Setup\r\n\r\n[General]\r\nId=BXLinkFile\r\nVersion=1.00.000\r\n");
}

}  // namespace
}  // namespace bxvbwiz
