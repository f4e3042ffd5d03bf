#include "machine/Machine.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "machine/CommandLine.h"
#include "machine/MachineFacts.h"
#include "TestMachine.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

constexpr auto kLocalMachine = static_cast<RegistryHandle>(0x80000002);

std::string MessageOf(const std::string& folder) {
  try {
    Machine machine(folder);
    return {};
  } catch (const MachineError& error) {
    return error.what();
  }
}

TEST(Machine, AValueThatCannotBeUsedIsNamedWithItsFile) {
  const struct {
    const char* ini;
    const char* named;
  } cases[] = {
      {"[Machine]\nCodePage=437\n", "CodePage=437"},
      {"[Machine]\nLanguage=409\n", "Language=409"},
      {"[Version]\nBuildNumber=4294967296\n", "BuildNumber=4294967296"},
      {"[Version]\nPlatformId=\n", "PlatformId="},
      {"[Folders]\nWindows=WINDOWS\n", "Windows=WINDOWS"},
      {"[Folders]\nSystem=C:\\a|b\n", "System=C:\\a|b"},
      {"[Programs]\nVB6.EXE=vb6.sh\n", "VB6.EXE=vb6.sh"},
      {"[Programs]\nC:\\VB6.EXE=\n", "C:\\VB6.EXE="},
  };
  for (const auto& test : cases) {
    TestMachine machine;
    machine.Write("machine.ini", test.ini);
    const std::string message = MessageOf(machine.Folder());
    EXPECT_NE(message.find("machine.ini"), std::string::npos) << test.ini;
    EXPECT_NE(message.find(test.named), std::string::npos) << message;
  }
}

TEST(Machine, AFolderThatIsNoMachineIsRefusedWithTheReason) {
  TestMachine machine;
  fs::create_directory(machine.Folder() + "/empty");
  EXPECT_NE(MessageOf(machine.Folder() + "/missing").find("does not exist"), std::string::npos);
  EXPECT_NE(MessageOf(machine.Folder() + "/empty").find("not a machine folder"), std::string::npos);
  EXPECT_NE(MessageOf(machine.Folder() + "/machine.ini").find("not a folder"), std::string::npos);
  machine.Write("registry.reg", "nonsense");
  EXPECT_NE(MessageOf(machine.Folder()).find("registry.reg"), std::string::npos);
}

TEST(Machine, TheFactsAreThoseOfMachineIniOrTheDefaults) {
  TestMachine plain;
  plain.Write("machine.ini", "");
  const VersionInfo standard = plain.platform().facts.Version();
  EXPECT_EQ(standard.majorVersion, 5u);
  EXPECT_EQ(standard.csdVersion, "Service Pack 3");
  EXPECT_EQ(plain.platform().facts.UserLanguage(), 0x0409u);
  EXPECT_EQ(plain.platform().facts.SystemDirectory(20), "C:\\WINDOWS\\system32");
  EXPECT_EQ(plain.platform().facts.SystemDirectory(19), "") << "no room for the NUL";

  TestMachine other;
  other.Write("machine.ini",
              "\xEF\xBB\xBF[machine]\ncodepage = 932\n[Version]\nPlatformId=1\nBuildNumber=67766446\n"
              "CSDVersion= A \n[Folders]\nWindows=D:\\WIN\\\n");
  EXPECT_EQ(other.platform().facts.Version().platformId, 1u);
  EXPECT_EQ(other.platform().facts.Version().buildNumber, 67766446u);
  EXPECT_EQ(other.platform().facts.WindowsDirectory(260), "D:\\WIN");
  EXPECT_EQ(other.platform().codePage.Encode("\u8868"), "\x95\x5C");
}

// Where Windows would open a device or a stream of another file, and lose what is written.
TEST(Machine, NamesThatAreNoFilesAreRefused) {
  TestMachine machine;
  FileSystem& files = machine.platform().files;
  for (const std::string& name : {std::string("a:b"), std::string("a\0b", 3), std::string("CON"),
                                  std::string("prn"), std::string("Aux.txt"), std::string("NUL"),
                                  std::string("nul."), std::string("COM1.log"), std::string("lpt9 .x")}) {
    EXPECT_NE(files.Write("C:\\windows\\" + name, "x", WriteMode::Create), SystemError::Success) << name;
    EXPECT_NE(files.MakeDirectory("C:\\windows\\" + name), SystemError::Success) << name;
  }
  for (const char* name : {"CONX", "COM0", "nulls.txt"})
    EXPECT_EQ(files.Write(name, "x", WriteMode::Create), SystemError::Success) << name;
}

TEST(Machine, WhatOthersChangeOnTheDiskIsSeenAtOnce) {
  TestMachine machine;
  FileSystem& files = machine.platform().files;
  std::string bytes;
  for (int round = 0; round < 50; ++round) {
    const std::string name = "File" + std::to_string(round);
    EXPECT_EQ(files.Read("C:\\" + name, bytes), SystemError::FileNotFound);
    machine.Write("drive_c/" + name, name);
    ASSERT_EQ(files.Read("C:\\" + name, bytes), SystemError::Success) << "within one tick of the clock";
    fs::remove(machine.Folder() + "/drive_c/" + name);
    ASSERT_EQ(files.Read("C:\\" + name, bytes), SystemError::FileNotFound);
  }
  machine.Write("drive_c/a/b/file", "1");
  EXPECT_EQ(files.Read("C:\\A\\B\\FILE", bytes), SystemError::Success);
  fs::rename(machine.Folder() + "/drive_c/a", machine.Folder() + "/drive_c/z");
  EXPECT_EQ(files.Read("C:\\A\\B\\FILE", bytes), SystemError::PathNotFound);
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
      {"/etc/passwd", ""},
      {root + "/machine.ini", ""},
      {root + "/drive_c/../registry.reg", ""},
      {root + "/drive_c2/x", ""},
  };
  for (const auto& test : cases) EXPECT_EQ(machine.machine().WindowsPath(test.host), test.path) << test.host;
  EXPECT_EQ(machine.machine().HostPath("d:\\MY APP\\app.vbp"), cases[0].host);
  EXPECT_EQ(machine.machine().HostPath("C:\\new\\File"), root + "/drive_c/new/File");
  for (const char* path : {"Q:\\x", "\\\\server\\share\\x", ""}) {
    EXPECT_EQ(machine.machine().HostPath(path), "") << path;
  }
}

TEST(Machine, OnlyWhatChangedIsStored) {
  TestMachine machine;
  machine.Registry("[HKEY_LOCAL_MACHINE\\Key]\r\n\"Value\"=\"1\"\r\n");
  Platform& platform = machine.platform();
  const std::string registry = machine.Folder() + "/registry.reg";
  const fs::file_time_type old = fs::last_write_time(registry) - std::chrono::hours(1);
  fs::last_write_time(registry, old);
  RegistryHandle key = 0;
  ASSERT_EQ(platform.registry.OpenKey(kLocalMachine, "key", 0xF003F, key), SystemError::Success);
  machine.machine().Save();
  EXPECT_EQ(fs::last_write_time(registry), old) << "a run that changes nothing leaves the file alone";
  ASSERT_EQ(platform.registry.SetValue(key, "Value", {1, std::string("2\0", 2)}), SystemError::Success);
  ASSERT_TRUE(platform.profiles.WriteString("s", "k", "v", "C:\\new.ini"));
  machine.machine().Save();
  EXPECT_EQ(machine.Read("registry.reg"), "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\Key]\r\n\"Value\"=\"2\"\r\n");
  EXPECT_EQ(machine.Read("drive_c/new.ini"), "[s]\r\nk=v\r\n");
  fs::permissions(registry, fs::perms::owner_read);
  ASSERT_EQ(platform.registry.SetValue(key, "Value", {1, std::string("3\0", 2)}), SystemError::Success);
  EXPECT_THROW(machine.machine().Save(), MachineError);
}

TEST(MachineClock, AGivenTimeIsThePresentInUtc) {
  EXPECT_EQ(MachineClock("1073315229").LocalDateTimeText(), "1/5/2004 3:07:09 PM");
  EXPECT_EQ(MachineClock("0").LocalDateTimeText(), "1/1/1970 12:00:00 AM");
  EXPECT_EQ(MachineClock("43200").LocalDateTimeText(), "1/1/1970 12:00:00 PM");
  EXPECT_EQ(MachineClock("1").SystemTime(), FileTime{116444736010000000});
  for (const char* wrong : {"", "now", "1.5", "-1", "99999999999999999999"}) {
    EXPECT_THROW(MachineClock{wrong}, MachineError) << wrong;
  }
}

TEST(CommandLine, ArgumentsAreSplitAsProgramsOfWindowsSeeThem) {
  const struct {
    const char* text;
    std::vector<std::string> arguments;
  } cases[] = {
      {" /make  \"C:\\My App\\a.vbp\"\t/out x ", {"/make", "C:\\My App\\a.vbp", "/out", "x"}},
      {"\"\" a\"b c\"d", {"", "ab cd"}},
      {"a\\\\b \"c\\\\\" d", {"a\\\\b", "c\\", "d"}},
      {"\\\"a \"b\\\"c\" \"d\"\"e\"", {"\"a", "b\"c", "d\"e"}},
      {"\"open", {"open"}},
      {"end\\", {"end\\"}},
      {"", {}},
  };
  for (const auto& test : cases) EXPECT_EQ(SplitArguments(test.text), test.arguments) << test.text;
}

}  // namespace
}  // namespace bxvbwiz
