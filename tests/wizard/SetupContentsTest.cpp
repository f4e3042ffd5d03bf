#include "analysis/SetupContents.h"

#include "support/basStr.h"
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

  const SetupContents read = ReadSetup(machine_.platform(), "C:\\S");
  std::string groups;
  for (const SetupGroup& group : read.groups)
    groups += group.name + (group.isEntered ? " (entered): " : ": ") + Joined(group.files) + "; ";
  EXPECT_EQ(groups, "Lost (entered): ; Program Files (entered): C:\\a.exe, C:\\b.dll; Extra: ; ");
  std::string components;
  for (const SetupComponent& component : read.components)
    components += component.name + ": " + Joined(component.groups) + " with " + Joined(component.members) +
                  " and " + Joined(component.required) + "; ";
  EXPECT_EQ(components, "Main: Program Files with Main\\Run and Other, Main\\Run; Main\\Run:  with  and ; ");
  EXPECT_EQ(read.components[0].settings, (ProfileSection{{"VISIBLE", "No"}}));
  EXPECT_EQ(read.projectFile, "A.bxp");
  EXPECT_EQ(read.data, (ProfileSection{{"Version", "1"}}));
  EXPECT_EQ(read.folders, std::vector<std::string>{"<DAO>"});
  EXPECT_EQ(read.substitutions, (ProfileSection{{"<DAO>", "x"}}));
  EXPECT_EQ(read.targets, (ProfileSection{{"Icon0", "<TARGETDIR>\\a.exe"}}));
  // Keys are found whatever their case.
  EXPECT_EQ(ValueOf(read.groups[1].settings, "TARGET"), "<TARGETDIR>");
  EXPECT_EQ(read.setupTypes.count("typical"), 1U);
  EXPECT_TRUE(ReadSetup(machine_.platform(), "C:\\Nowhere\\").groups.empty());
}

}  // namespace
}  // namespace bxvbwiz
