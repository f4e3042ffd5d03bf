#include "SetupFixture.h"

namespace bxvbwiz {
namespace {

using DestinationTest = SetupFixture;

// A path goes to its innermost known folder, but DAO and the application come after their parents.
TEST_F(DestinationTest, DestinationsBecomeSymbols) {
  const Pair cases[] = {{"", "<TARGETDIR>"},
                        {"$(apppath)\\Data", "<TARGETDIR>\\Data\\"},
                        {"$(WinSysPath)Sub", "<WINSYSDIR>\\Sub\\"},
                        {"$(COMMONFILESSYS)\\x", "<COMMONFILES>\\System\\x\\"},
                        {"$(PROGRAMFILES)\\a(b)", "<PROGRAMFILES>\\a(b)\\"},
                        {"$(FOO)", ""},
                        {"$(WINPATH", "$(WINPATH"},
                        {"c:\\WINDOWS\\SYSTEM32\\A.OCX", "<WINSYSDIR>\\A.OCX"},
                        {"C:\\Windows\\", "<WINDIR>\\"},
                        {"C:\\Program Files\\Common Files\\System\\a", "<COMMONFILES>\\System\\a"},
                        {"C:\\Program Files\\Common Files\\Microsoft Shared\\DAO\\d",
                         "<COMMONFILES>\\Microsoft Shared\\DAO\\d"},
                        {"C:\\Program Files (x86)\\x", "C:\\Program Files (x86)\\x"},
                        {"C:\\APP\\out\\Data\\", "<TARGETDIR>\\Data\\"},
                        {"<WINDIR>\\x", "<WINDIR>\\x"}};
  for (const auto& [given, expected] : cases)
    EXPECT_EQ(groups().ConvertDestMacroToBXDestSymbol(given), expected) << given;
}

TEST_F(DestinationTest, SymbolsBecomeFolders) {
  const Pair cases[] = {{"", "C:\\App\\Out\\"},
                        {"<TARGETDIR>\\Data", "C:\\App\\Out\\Data\\"},
                        {"<WINSYSDIR>\\x\\", "C:\\windows\\system32\\x\\"},
                        {"<COMMONFILES>\\System\\X", "C:\\Program Files\\Common Files\\System\\X\\"},
                        {"<DAO>", "C:\\Program Files\\Common Files\\Microsoft Shared\\DAO\\"},
                        {"<UNKNOWN>\\x", ""},
                        {"C:\\Tools\\", "C:\\Tools\\"}};
  for (const auto& [given, expected] : cases)
    EXPECT_EQ(groups().ConvertBXDestSymbolToPath(given), expected) << given;
}

TEST_F(DestinationTest, RegisterMacrosBecomeCodes) {
  const char* const macros[] = {"",          "$(dllselfregister)", "$(EXESelfRegister)", "$(TLBRegister)",
                                "$(Remote)", "DLLSELFREGISTER",    "$(Whatever)"};
  for (std::int16_t code = 0; code <= 6; ++code)
    EXPECT_EQ(groups().ConvertRegisterMacro(macros[code]), code) << macros[code];
}

TEST_F(DestinationTest, AProjectThatCannotBeReadHasItsOwnFolderForOutput) {
  EXPECT_EQ(groups().GetAppPath("C:\\Missing\\a.vbp"), "C:\\Missing\\");
  EXPECT_EQ(findings().All().size(), 1U);
}

}  // namespace
}  // namespace bxvbwiz
