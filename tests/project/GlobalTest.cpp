#include <gtest/gtest.h>

#include "project/basGlobal.h"
#include "support/FakePlatform.h"
#include "TestMachine.h"

namespace bxvbwiz {
namespace {

constexpr const char* kMake = "[HKEY_CLASSES_ROOT\\VB.Project\\shell\\Make\\command]\r\n@=";

TEST(GlobalTest, VisualBasicIsFoundByItsBuildCommand) {
  const struct {
    const char* rule;
    std::string registry;
    std::vector<const char*> programs;
    const char* folder;
    const char* version;
    const char* redistributables;
  } cases[] = {
      {"no registration", "", {}, "", "5", ""},
      {"no command", "[HKEY_CLASSES_ROOT\\.vbp]\r\n@=\"VB.Project\"\r\n", {}, "", "5", ""},
      {"quoted",
       "\"\\\"C:\\\\VB 98\\\\VB6.EXE\\\" /make \\\"%1\\\"\"",
       {"Vb6.exe"},
       "C:\\VB 98\\",
       "6",
       "C:\\VB 98\\Wizards\\PDWizard\\Redist"},
      {"not quoted",
       "\"C:\\\\VB 98\\\\vb5.exe /make %1\"",
       {"VB5.EXE"},
       "C:\\VB 98\\",
       "5",
       "C:\\VB 98\\setupkit\\kitfil32\\sys32\\"},
      {"both versions",
       "\"C:\\\\VB 98\\\\vb6.exe %1\"",
       {"vb6.exe", "vb5.exe"},
       "C:\\VB 98\\",
       "5",
       "C:\\VB 98\\setupkit\\kitfil32\\sys32\\"},
      {"neither version", "\"C:\\\\VB 98\\\\vb6.exe %1\"", {"vb7.exe"}, "C:\\VB 98\\", "", ""},
      {"no placeholder", "\"C:\\\\VB 98\\\\vb6.exe /make\"", {}, "C:\\VB 98\\", "", ""},
      {"placeholder only", "\"%1\"", {}, "", "5", ""},
      {"no folder", "\"vb6.exe %1\"", {}, "", "5", ""},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.rule);
    TestMachine disk;
    const bool isCommand = !each.registry.empty() && each.registry.front() == '"';
    if (isCommand) disk.Registry("[HKEY_CLASSES_ROOT\\.vbp]\r\n@=\"VB.Project\"\r\n");
    disk.Registry(isCommand ? kMake + each.registry + "\r\n" : each.registry);
    for (const char* program : each.programs) disk.Write(std::string("drive_c/VB 98/") + program, "");
    basGlobal global(disk.platform());
    EXPECT_EQ(global.FindVB(), each.folder);
    EXPECT_EQ(global.GetVBVer(), each.version);
    EXPECT_EQ(global.FindVBRedistFolder(), each.redistributables);
  }
}

TEST(GlobalTest, SystemFilesAreListedUpToAGapAndReadOnce) {
  TestMachine disk;
  disk.InstallProduct();
  const std::string list =
      "[System]\r\n1File=A-b.dll\r\n2File=Ab.dll\r\n3File=A-b.dll\r\n4File=C:\\x.ocx\r\n6File=late.dll\r\n";
  disk.Write("drive_c/Borvex/VBWizDep.ini", list);
  basGlobal global(disk.platform());
  EXPECT_FALSE(global.IsSystemFile("ab.dll"));
  global.LoadSystemFiles();
  EXPECT_EQ(global.gDepFilePath(), "C:\\Borvex\\VBWizDep.ini");
  // "A-b.dll" and "Ab.dll" have the same key; both are system files all the same.
  EXPECT_EQ(global.gSystemFiles()->Count(), 2U);
  for (const char* name : {"a-B.DLL", "ab.dll", "c:\\X.ocx"}) EXPECT_TRUE(global.IsSystemFile(name)) << name;
  for (const char* name : {"x.ocx", "late.dll", ""}) EXPECT_FALSE(global.IsSystemFile(name)) << name;

  disk.platform().profiles.WriteString("System", "5File", "new.dll", global.gDepFilePath());
  global.LoadSystemFiles();
  EXPECT_FALSE(global.IsSystemFile("new.dll"));
}

TEST(GlobalTest, AMissingProductKeyIsToldOnceAndAlwaysEndsTheWizard) {
  TestMachine disk;
  RecordingUser user;
  basGlobal global(disk.platform());
  global.user = &user;
  for (int time = 0; time < 2; ++time) {
    EXPECT_THROW(global.LoadSystemFiles(), WizardEnded);
    EXPECT_TRUE(user.ended);
    user.ended = false;
  }
  EXPECT_EQ(user.messages, (std::vector<std::string>{
                               "The key HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex "
                               "Professional\\6.0\\VBWiz cannot be found in the "
                               "Registry. Borvex may not be properly installed. The Wizard will abort."}));
  EXPECT_EQ(user.returnCode, -1);
  EXPECT_FALSE(global.gSystemFilesLoaded());
}

TEST(GlobalTest, AnIniEntryIsFoundByItsExactValueBeforeTheFirstGap) {
  TestMachine disk;
  const std::string longValue(254, 'x');
  disk.Write("drive_c/x.ini", "[S]\r\n0component=A\r\n1component=B\r\n2component=" + longValue +
                                  "\r\n4component=D\r\n0e=\r\n0n=NONE\r\n");
  basGlobal global(disk.platform());
  const struct {
    const char* suffix;
    std::string wanted;
    bool found;
    int index;
  } cases[] = {{"component", "A", true, 1},
               {"component", "B", true, 2},
               {"component", "b", false, 3},
               {"component", "D", false, 3},
               {"component", longValue.substr(0, 253), true, 3},
               {"component", longValue, false, 3},
               {"e", "A", false, 0},
               {"n", "NONE", false, 0},
               {"absent", "", false, 0}};
  for (const auto& each : cases) {
    std::int16_t index = -1;
    EXPECT_EQ(global.FindIniFileEntry("C:\\x.ini", "S", each.suffix, each.wanted, index), each.found);
    EXPECT_EQ(index, each.index) << each.suffix << " " << each.wanted;
  }
}

class NoGuids : public Guids {
 public:
  std::optional<GuidBytes> Create() override { return std::nullopt; }
};

TEST(GlobalTest, TheRuntimeComponentIsAddedOnce) {
  TestMachine disk;
  disk.InstallProduct();
  const std::string definitions = "drive_c/New/Component Definitions/Default.cdf";
  disk.Write(definitions,
             "[Components]\r\n0component=Program Files\r\n[Program Files\\VB Runtime Object]\r\nOLD=1\r\n");
  Platform& platform = disk.platform();
  basGlobal global(platform);
  NoGuids noGuids;
  Platform withoutGuids{platform.registry,  platform.facts,  platform.files,    platform.profiles,
                        platform.processes, noGuids,         platform.settings, platform.clock,
                        platform.codePage,  platform.strings};
  EXPECT_FALSE(basGlobal(withoutGuids).AddVBRuntimeObject("C:\\New"));
  EXPECT_FALSE(global.AddVBRuntimeObject("C:\\New"));
  EXPECT_TRUE(global.AddVBRuntimeObject("C:\\New\\"));
  platform.profiles.Flush();

  std::string written = disk.Read(definitions);
  const std::size_t guid = written.find("GUID=") + 5;
  EXPECT_EQ(written.find("\r\n", guid), guid + 36);
  written.erase(guid, 36);
  EXPECT_EQ(written,
            "[Components]\r\n0component=Program Files\r\n1component=Program Files\\VB Runtime Object\r\n"
            "[Program Files\\VB Runtime Object]\r\nMONIKER=@bxmk:4F6A11A0-1D1C-11D3-8B09-00105A9846E9\r\n"
            "GUID=\r\nVISIBLE=No\r\nOBJECT=Yes\r\n"
            "[Program Files]\r\n0MEMBER=Program Files\\VB Runtime Object\r\n"
            "0required=Program Files\\VB Runtime Object\r\n");
}

TEST(GlobalTest, AHexadecimalVersionIsConvertedPartByPart) {
  const struct {
    const char* hexadecimal;
    bool converted;
    const char* decimal;
  } cases[] = {{"1.a", true, "1.10"},
               {"2.0", true, "2.0"},
               {"2D.00fF", true, "45.255"},
               {"1.", true, "1"},
               {"", true, ""},
               {"FFFFFFF", true, "268435455"},
               {"1.2.3", true, "1.2.3"},
               {"12345678.0", false, ""},
               {"1.g", false, "1"},
               {".1", false, ""},
               {"1..2", false, "1"},
               {"1.-2", false, "1"},
               {"1.0x2", false, "1"},
               {"\u0661", false, ""}};
  for (const auto& each : cases) {
    std::string decimal = "left over";
    EXPECT_EQ(ConvertHexVersion(each.hexadecimal, decimal), each.converted) << each.hexadecimal;
    EXPECT_EQ(decimal, each.decimal) << each.hexadecimal;
  }
}

TEST(GlobalTest, TheProgressBeginsAgainBehindItsLimit) {
  TestMachine disk;
  basGlobal global(disk.platform());
  global.ResetProgress(3);
  for (const int value : {1, 2, 3, 1, 2}) EXPECT_EQ(global.NextProgressValue(), value);
  global.ResetProgress(3);
  EXPECT_EQ(global.NextProgressValue(), 1);
}

}  // namespace
}  // namespace bxvbwiz
