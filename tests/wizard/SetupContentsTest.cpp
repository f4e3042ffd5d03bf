#include "analysis/SetupContents.h"

#include "WizardFixture.h"

namespace bxvbwiz {
namespace {

class SetupContentsTest : public testing::Test {
 protected:
  void Put(const std::string& path, const std::string& text) { machine_.Write("drive_c/S/" + path, text); }
  TestMachine machine_;
};

TEST_F(SetupContentsTest, GroupsAndComponentsAreReadWhereverTheyAreNamed) {
  Put("File Groups/Default.fdf",
      "[FileGroups]\ngroup0=Lost\ngroup1=Program Files\n[program files]\nTarget=<TARGETDIR>\n");
  Put("File Groups/Program Files.fgl", "[TopDir]\nfile0=C:\\a.exe\nfile1=C:\\b.dll\nfile3=C:\\c.dll\n");
  Put("File Groups/Extra.fgl", "[General]\nType=FILELIST\n");
  Put("Component Definitions/Default.cdf",
      "[Components]\ncomponent0=Main\n0component=Main\\Run\n[Main]\nfilegroup0=Program Files\n"
      "0MEMBER=Main\\Run\nrequired0=Other\n0required=Main\\Run\nVISIBLE=No\n[Main\\Run]\nMONIKER=@m\n"
      "[SETUPTYPEITEM-Typical]\nITEM0=Main\n");
  Put("Component Definitions/Default.fgl", "[USERDEFINED]\nSubDir0=USERDEFINED\\<DAO>\n");
  Put("Text Substitutions/Setup.tsb", "[Data]\nKey0=<DAO>\n[<DAO>]\nValue=x\n");
  Put("Shell Objects/Default.shl", "[Icon0]\nTarget=<TARGETDIR>\\a.exe\n");
  Put("A.bxp", "[Data]\nVersion=1\n");

  SetupContents expected;
  expected.projectFile = "A.bxp";
  expected.data = {{"Version", "1"}};
  expected.groups = {{"Lost", false, true, {}, {}},
                     {"Program Files", true, true, {"C:\\a.exe", "C:\\b.dll"}, {{"Target", "<TARGETDIR>"}}},
                     {"Extra", true, false, {}, {}}};
  expected.components = {
      {"Main", {"Program Files"}, {"Main\\Run"}, {"Other", "Main\\Run"}, {{"VISIBLE", "No"}}},
      {"Main\\Run", {}, {}, {}, {{"MONIKER", "@m"}}}};
  expected.setupTypes = {{"Typical", {"Main"}}};
  expected.folders = {"<DAO>"};
  expected.substitutions = {{"<DAO>", "x"}};
  expected.targets = {{"Icon0", "<TARGETDIR>\\a.exe"}};
  const SetupContents read = ReadSetup(machine_.platform(), "C:\\S");
  EXPECT_TRUE(read == expected);
  // Keys are found whatever their case.
  EXPECT_EQ(ValueOf(read.groups[1].settings, "TARGET"), "<TARGETDIR>");
  EXPECT_EQ(read.setupTypes.count("typical"), 1U);
  EXPECT_EQ(ReadSetup(machine_.platform(), "C:\\Nowhere\\"), SetupContents());
}

}  // namespace
}  // namespace bxvbwiz
