#include "machine/Machine.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "machine/CommandLine.h"
#include "machine/MachineFacts.h"
#include "machine/NamedGuid.h"
#include "TestMachine.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

TEST(Machine, WhatCannotBeUsedIsNamedWithItsFile) {
  const struct {
    const char* file;
    const char* bytes;
    const char* named;
  } cases[] = {
      {"machine.ini", "[Machine]\nCodePage=437\n", "CodePage=437"},
      {"machine.ini", "[Machine]\nLanguage=409\n", "Language=409"},
      {"machine.ini", "[Version]\nBuildNumber=4294967296\n", "BuildNumber=4294967296"},
      {"machine.ini", "[Folders]\nWindows=WINDOWS\n", "Windows=WINDOWS"},
      {"machine.ini", "[Folders]\nSystem=C:\\a|b\n", "System=C:\\a|b"},
      {"machine.ini", "[Programs]\nVB6.EXE=vb6.sh\n", "VB6.EXE=vb6.sh"},
      {"machine.ini", "[Programs]\nC:\\VB6.EXE=\n", "C:\\VB6.EXE="},
      {"machine.ini", "[Drives]\nPQ=.\n", "PQ=."},
      {"machine.ini", "[Drives]\nP=\n", "P="},
      {"machine.ini", "[Drives]\nP=.\np=.\n", "given twice"},
      {"machine.ini", "[Drives]\nP=none\n", "P=none: no such folder"},
      {"machine.ini", "[Drives]\nC=.\n", "C=.: the machine folder has a drive"},
      {"machine.ini", "[Drives]\nP=drive_c\n", "lies in another drive"},
      {"machine.ini", "[Drives]\nP=.\nQ=.\n", "lies in another drive"},
      {"machine.ini", "[Shares]\n\\\\server=.\n", "server=."},
      {"machine.ini", "[Shares]\n\\\\server\\share\\sub=.\n", "sub=."},
      {"registry.reg", "nonsense", "REGEDIT4"},
  };
  for (const auto& test : cases) {
    TestMachine machine;
    machine.Write(test.file, test.bytes);
    try {
      Machine refused(machine.Folder());
      ADD_FAILURE() << test.named;
    } catch (const MachineError& error) {
      EXPECT_NE(std::string(error.what()).find(test.file), std::string::npos) << error.what();
      EXPECT_NE(std::string(error.what()).find(test.named), std::string::npos) << error.what();
    }
  }
}

TEST(Machine, TheFactsAreThoseOfMachineIni) {
  TestMachine machine;
  machine.Write("machine.ini",
                "\xEF\xBB\xBF[machine]\ncodepage = 932\n[Version]\nPlatformId=1\nBuildNumber=67766446\n"
                "[Folders]\nWindows=D:\\WIN\\\n");
  const VersionInfo version = machine.platform().facts.Version();
  EXPECT_EQ(version.platformId, 1u);
  EXPECT_EQ(version.buildNumber, 67766446u);
  EXPECT_EQ(version.csdVersion, "Service Pack 3") << "the default";
  EXPECT_EQ(machine.platform().facts.WindowsDirectory(260), "D:\\WIN");
  EXPECT_EQ(machine.platform().codePage.Number(), 932);
}

// On Windows these open a device or a stream of another file, and what is written is lost.
TEST(Machine, NamesThatAreNoFilesAreRefused) {
  TestMachine machine;
  FileSystem& files = machine.platform().files;
  for (const std::string& name : {std::string("a:b"), std::string("a\0b", 3), std::string("CON"),
                                  std::string("Aux.txt"), std::string("nul."), std::string("lpt9 .x")})
    EXPECT_NE(files.Write("C:\\windows\\" + name, "x", WriteMode::Create), SystemError::Success) << name;
  for (const char* name : {"CONX", "COM0", "nulls.txt"})
    EXPECT_EQ(files.Write(name, "x", WriteMode::Create), SystemError::Success) << name;
}

TEST(Machine, WhatOthersChangeOnTheDiskIsSeenWithinOneTickOfTheClock) {
  TestMachine machine;
  FileSystem& files = machine.platform().files;
  std::string bytes;
  for (int round = 0; round < 50; ++round) {
    EXPECT_EQ(files.Read("C:\\A\\FILE", bytes),
              round == 0 ? SystemError::PathNotFound : SystemError::FileNotFound);
    machine.Write("drive_c/a/file", "1");
    ASSERT_EQ(files.Read("C:\\A\\FILE", bytes), SystemError::Success);
    fs::remove(machine.Folder() + "/drive_c/a/file");
  }
  fs::rename(machine.Folder() + "/drive_c/a", machine.Folder() + "/drive_c/z");
  EXPECT_EQ(files.Read("C:\\A\\FILE", bytes), SystemError::PathNotFound);
}

TEST(Machine, PathsOfTheDrivesAreTranslatedBothWays) {
  TestMachine machine;
  machine.Write("drive_d/My App/App.vbp", "");
  const std::string root = machine.Folder();
  const struct {
    std::string host, path;  // no path: not of a drive
  } cases[] = {
      {root + "/drive_d/My App/App.vbp", "D:\\My App\\App.vbp"},
      {root + "/drive_c/x/../new", "C:\\new"},
      {root + "/drive_c", "C:\\"},
      {root + "/machine.ini", ""},
      {root + "/drive_c/../registry.reg", ""},
      {root + "/drive_c2/x", ""},
  };
  for (const auto& test : cases) EXPECT_EQ(machine.machine().WindowsPath(test.host), test.path) << test.host;
  EXPECT_EQ(machine.machine().HostPath("d:\\MY APP\\app.vbp"), cases[0].host);
  EXPECT_EQ(machine.machine().HostPath("C:\\new\\File"), root + "/drive_c/new/File");
  EXPECT_EQ(machine.machine().HostPath("Q:\\x"), "");
}

TEST(Machine, FoldersOfThisComputerAreDrivesAndShares) {
  TestMachine machine;
  const std::string root = machine.Folder();
  machine.Write("machine.ini",
                "[Drives]\nP=mapped\n[Shares]\n\\\\Server\\share=mapped/shared\n\\\\server\\all=.\n");
  machine.Write("mapped/shared/A/file", "1");
  Machine& opened = machine.machine();
  EXPECT_EQ(opened.WindowsPath(root + "/mapped/x"), "P:\\x");
  EXPECT_EQ(opened.WindowsPath(root + "/mapped/shared/A/new"), "\\\\Server\\share\\A\\new")
      << "the longest folder";
  EXPECT_EQ(opened.WindowsPath(root + "/drive_c/x"), "C:\\x");
  EXPECT_EQ(opened.WindowsPath(root + "/other"), "\\\\server\\all\\other");
  EXPECT_EQ(opened.HostPath("\\\\SERVER\\SHARE\\a\\new"), root + "/mapped/shared/A/new");
  FileSystem& files = machine.platform().files;
  std::string bytes;
  for (const char* path : {"p:\\SHARED\\a\\FILE", "\\\\server\\SHARE\\a\\..\\..\\..\\A\\file",
                           "//server/share/a/file", "\\\\?\\UNC\\server\\share\\a\\file"})
    EXPECT_EQ(files.Read(path, bytes), SystemError::Success) << path;
  for (const char* path :
       {"\\\\server\\none\\a\\file", "\\\\server\\share", "\\\\server", "\\\\", "\\\\.\\a\\file",
        "\\\\server\\\\a\\file", "\\\\server\\share:\\a\\file", "Q:\\file"})
    EXPECT_NE(files.Read(path, bytes), SystemError::Success) << path;
  ASSERT_EQ(files.ChangeDirectory("\\\\server\\share\\A"), SystemError::Success);
  std::string full;
  for (const auto& [path, expected] :
       std::map<std::string, std::string>{{"file", "\\\\server\\share\\A\\file"},
                                          {"..\\..\\x", "\\\\server\\share\\x"},
                                          {"\\x", "\\\\server\\share\\x"},
                                          {"P:x", "P:\\x"}}) {
    EXPECT_EQ(files.FullPath(path, full), SystemError::Success);
    EXPECT_EQ(full, expected);
  }
  EXPECT_EQ(files.Read("file", bytes), SystemError::Success);
  EXPECT_EQ(files.Write("\\new", "2", WriteMode::Create), SystemError::Success);
  EXPECT_EQ(machine.Read("mapped/shared/new"), "2");
  EXPECT_EQ(files.ChangeDirectory("\\\\server\\share"), SystemError::Success) << "a root";
  EXPECT_EQ(files.CurrentDirectory(), "\\\\server\\share\\");
}

TEST(Machine, OnlyWhatChangedIsStored) {
  TestMachine machine;
  machine.Registry("[HKEY_LOCAL_MACHINE\\Key]\r\n\"Value\"=\"1\"\r\n");
  Platform& platform = machine.platform();
  const std::string registry = machine.Folder() + "/registry.reg";
  const fs::file_time_type old = fs::last_write_time(registry) - std::chrono::hours(1);
  fs::last_write_time(registry, old);
  RegistryHandle key = 0;
  platform.registry.OpenKey(kHKeyLocalMachine, "key", kKeyAllAccess, key);
  machine.machine().Save();
  EXPECT_EQ(fs::last_write_time(registry), old) << "a run that changes nothing leaves the file alone";
  ASSERT_EQ(platform.registry.SetValue(key, "Value", {1, std::string("2\0", 2)}), SystemError::Success);
  machine.machine().Save();
  EXPECT_EQ(machine.Read("registry.reg"), "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\Key]\r\n\"Value\"=\"2\"\r\n");
  fs::permissions(registry, fs::perms::owner_read);
  ASSERT_EQ(platform.registry.SetValue(key, "Value", {1, std::string("3\0", 2)}), SystemError::Success);
  EXPECT_THROW(machine.machine().Save(), MachineError);
}

TEST(MachineClock, AGivenTimeIsThePresentInUtc) {
  EXPECT_EQ(MachineClock("1073315229").LocalDateTimeText(), "1/5/2004 3:07:09 PM");
  EXPECT_EQ(MachineClock("0").LocalDateTimeText(), "1/1/1970 12:00:00 AM");
  EXPECT_EQ(MachineClock("1").SystemTime(), FileTime{116444736010000000});
  for (const char* wrong : {"", "1.5", "-1", "99999999999999999999"})
    EXPECT_THROW(MachineClock{wrong}, MachineError) << wrong;
}

TEST(CommandLine, ArgumentsAreSplitAsProgramsOfWindowsSeeThem) {
  EXPECT_EQ(SplitArguments(" a\"b c\"d\t\"d\"\"e\" \"c\\\\\" \"open "),
            (std::vector<std::string>{"ab cd", "d\"e", "c\\", "open "}));
}

// The standard's own example, and a name that needs a second block.
TEST(Machine, ANameGivesTheGuidOfTheStandard) {
  const GuidBytes dns = {0x6B, 0xA7, 0xB8, 0x10, 0x9D, 0xAD, 0x11, 0xD1,
                         0x80, 0xB4, 0x00, 0xC0, 0x4F, 0xD4, 0x30, 0xC8};
  EXPECT_EQ(NamedGuid(dns, "www.example.com"), (GuidBytes{0x7D, 0x65, 0xD6, 0x2E, 0x27, 0xE9, 0x8B, 0x56,
                                                          0x95, 0xE1, 0x26, 0x65, 0xA8, 0xAE, 0xA6, 0xA2}));
  EXPECT_EQ(NamedGuid(dns, std::string(40, 'x')),
            (GuidBytes{0x7A, 0xD5, 0x6F, 0xE5, 0x33, 0x76, 0x1D, 0x5E, 0x8F, 0x80, 0x70, 0xE0, 0x5A, 0xC4,
                       0x13, 0xE5}));
}

}  // namespace
}  // namespace bxvbwiz
