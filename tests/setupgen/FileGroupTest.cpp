#include "SetupFixture.h"
#include "setupgen/CComponents.h"
#include "setupgen/VBRuntimeObject.h"
#include "tools/PeWriter.h"

namespace bxvbwiz {
namespace {

constexpr const char* kComponents = "C:\\Setup\\Component Definitions\\Default.cdf";

CFile File(const std::string& path, const std::string& group = "Program Files",
           const std::string& destination = "$(APPPATH)") {
  CFile file;
  file.FileName = path;
  file.FileLinkPath = "C:\\Src";
  file.FileGroup = group;
  file.Destination = destination;
  return file;
}

using FileGroupTest = SetupFixture;

TEST_F(FileGroupTest, FactsComeFromDestinationDepFileAndSearch) {
  Put("C:\\VB98\\Wizards\\PDWizard\\Redist\\Moved.dll", MakePe({"KERNEL32.dll"}, {"DllRegisterServer"}));
  for (const char* path : {"C:\\App\\Mine.dll", "C:\\App\\Moved.dll"})
    Put(path, MakePe({"KERNEL32.dll"}, {"Other"}));
  Put("C:\\App\\x.dep", "[Mine.dll]\r\nRegister=$(Bad)\r\n[Lang.dll <0009>]\r\nDest=$(WINPATH)\r\n");
  // "destination|link path|resolves|shared|register|group"
  const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
      {"$(FOO)", "C:\\App\\Mine.dll", "", "$(APPPATH)|C:\\App\\|1|0|0|Program Files"},
      {"", "C:\\Gone\\Mine.dll", "C:\\App\\x.dep", "$(APPPATH)|C:\\Gone|0|0|6|Program Files"},
      {"", "C:\\App\\Lang.dll", "C:\\App\\x.dep", "$(WINPATH)|C:\\App|0|0|0|Windows Files"},
      // The redistributables' copy is shipped; it is examined where the source folder has none.
      {"$(WINSYSPATH)", "Moved.dll", "",
       "$(WINSYSPATH)|C:\\VB98\\Wizards\\PDWizard\\Redist\\|1|0|1|Windows System Self-reg Files"},
      {"$(APPPATH)", "C:\\App\\Moved.dll", "",
       "$(APPPATH)|C:\\VB98\\Wizards\\PDWizard\\Redist\\|1|0|0|Program Files"},
      {"", "none.dll", "", "|C:\\App\\Out\\|0|0|0|Program Files"},
  };
  for (const auto& [destination, path, depFile, facts] : cases) {
    FileRecord record;
    FileRecord copy;
    groups().GetFileGroupInfo(destination, path, depFile, nullptr, record);
    groups().GetFileGroupInfo("D:\\other", "y.dll", "", &record, copy);
    for (const FileRecord& file : {record, copy})
      EXPECT_EQ(file.Destination + "|" + file.FileLinkPath + "|" + std::to_string(file.LinkResolves) + "|" +
                    std::to_string(file.SharedFile) + "|" + std::to_string(file.SelfRegister) + "|" +
                    file.FileGroup,
                facts)
          << path;
  }
}

TEST_F(FileGroupTest, GroupsAreNamedByDestinationRegistrationAndSharing) {
  // Destination, link path, register code, shared; the group's name, and what CreateComponentName makes.
  const std::tuple<const char*, const char*, int, bool, const char*, const char*> cases[] = {
      {"$(apppath)", "", 2, false, "Program Files", "Program Files"},
      {"$(WINSYSPATH)", "", 1, true, "Windows System Self-reg Shared Files", "Windows System Files"},
      {"$(WINPATH)\\", "C:\\q", 3, false, "Windows Self-reg Files", "Q Files"},
      {"$(COMMONFILESSYS)", "", 0, true, "Commonfiles System Shared Files", "Commonfiles System Files"},
      {"$(MSDAOPATH)", "", 0, true, "DAO Shared Files", "DAO Files"},
      {"$(APPPATH)\\x", "C:\\SRC\\MY dATA-sEt\\", 0, false, "My Data-set Files", "My Data-set Files"},
      {"$(APPPATH)\\x", "C:\\A\xC3\x84", 0, false, "A\xC3\xA4 Files", "A\xC3\xA4 Files"},
      {"$(APPPATH)\\x", "C:\\", 1, true, "Program Files", " Files"},
  };
  CComponents components(platform(), groups(), lists());
  for (const auto& [destination, linkPath, registration, shared, group, component] : cases) {
    CFile file = File("x", "", destination);
    file.FileLinkPath = linkPath;
    file.SelfRegister = registration;
    file.SharedFile = shared;
    EXPECT_EQ(groups().CreateFileGroupName("ignored", file), group) << destination;
    EXPECT_EQ(components.CreateComponentName("ignored", file), component) << destination;
  }
}

TEST_F(FileGroupTest, ADestinationWithoutSymbolGetsAScriptDefinedVariable) {
  const std::string folders = "[USERDEFINED]\r\nSubDir0=USERDEFINED\\<VBWizVar-0>\r\nSubDir1=USERDEFINED\\";
  Put("C:\\Setup\\Component Definitions\\Default.fgl",
      folders + "<vbwizvar-7>\r\n[USERDEFINED\\<VBWizVar-1>]\r\nStale=1\r\n");
  Put("C:\\Setup\\Text Substitutions\\Setup.tsb", "[Data]\r\n[<VBWizVar-1>]\r\nStale=1\r\n");
  CComponents components(platform(), groups(), lists());
  for (const auto& [component, destination] :
       {Pair{"A", "D:\\Tools"}, {"C", "$(MsDaoPath)"}, {"E", "$(APPPATH)"}})
    EXPECT_TRUE(components.CreateComponent(kSetup, component, File("x", "", destination))) << component;

  EXPECT_EQ(Words("C:\\Setup\\Component Definitions\\Default.fgl"),
            "[USERDEFINED] SubDir0=USERDEFINED\\<VBWizVar-0> SubDir1=USERDEFINED\\<vbwizvar-7> "
            "SubDir2=USERDEFINED\\<VBWizVar-1> SubDir3=USERDEFINED\\<DAO> "
            "[USERDEFINED\\<VBWizVar-1>] DISPLAYTEXT= TYPE=TEXTSUB fulldirectory= "
            "[USERDEFINED\\<DAO>] DISPLAYTEXT= TYPE=TEXTSUB fulldirectory=");
  EXPECT_EQ(Words("C:\\Setup\\Text Substitutions\\Setup.tsb"),
            "[Data] Key0=<VBWizVar-1> Key1=<DAO> [<VBWizVar-1>] KeyType=3 Value= [<DAO>] KeyType=3 Value=");
  const std::string definitions = Words(kComponents);
  EXPECT_NE(definitions.find("TARGET=<DAO> TARGETHIDDEN=Script-defined Folders\\<DAO> [E] "),
            std::string::npos);
  EXPECT_EQ(definitions.find("TARGET=", definitions.find("[E]")), std::string::npos);
  std::int16_t count = 99;
  FindScriptDefinedVariables(platform(), kSetup, count);
  EXPECT_EQ(count, 3);
}

TEST_F(FileGroupTest, AnEntryIsFoundByItsExactValueBeforeTheFirstGap) {
  const std::string longValue(254, 'x');
  Put("C:\\x.ini",
      "[S]\r\n0component=A\r\n1component=B\r\n2component=" + longValue + "\r\n4component=D\r\n0n=NONE\r\n");
  const std::tuple<const char*, std::string, bool, int> cases[] = {
      {"component", "B", true, 2},  {"component", "b", false, 3}, {"component", longValue.substr(1), true, 3},
      {"component", "D", false, 3}, {"n", "NONE", false, 0},      {"absent", "", false, 0}};
  for (const auto& [suffix, wanted, found, number] : cases) {
    std::int16_t index = -1;
    EXPECT_EQ(FindIniFileEntry(platform().profiles, "C:\\x.ini", "S", suffix, wanted, index), found);
    EXPECT_EQ(index, number) << suffix << " " << wanted;
  }
}

struct NoGuids : Guids {
  std::optional<GuidBytes> Create(std::string_view) override { return std::nullopt; }
};

TEST_F(FileGroupTest, TheRuntimeComponentIsAddedOnceAndNeverWithoutAnIdentifier) {
  NoGuids guids;
  Platform withoutGuids = WithParts(platform(), guids);
  basGlobal helpless(withoutGuids);
  basGlobal global(platform());
  EXPECT_FALSE(AddVBRuntimeObject(helpless, kSetup));
  EXPECT_FALSE(AddVBRuntimeObject(global, kSetup));
  EXPECT_TRUE(AddVBRuntimeObject(global, kSetup));
}

}  // namespace
}  // namespace bxvbwiz
