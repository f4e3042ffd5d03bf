#include "platform/machine/Machine.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/machine/CommandLine.h"
#include "platform/machine/MachineFacts.h"
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
      {"[Machine]\nCodePage=abc\n", "CodePage=abc"},
      {"[Machine]\nLanguage=409\n", "Language=409"},
      {"[Machine]\nLanguage=English\n", "Language=English"},
      {"[Version]\nMajorVersion=-1\n", "MajorVersion=-1"},
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

TEST(Machine, NoLinkLeadsOutOfTheFolder) {
  TestMachine machine;
  const std::string outside = machine.Folder() + "-outside";
  fs::create_directory(outside);
  const std::string drive = machine.Folder() + "/drive_c/";
  machine.Write("drive_c/real/file", "inside");
  fs::create_symlink(outside, drive + "folder");
  fs::create_symlink(outside + "/secret", drive + "file");
  fs::create_symlink("../..", drive + "up");
  fs::create_symlink("missing", drive + "dangling");
  fs::create_symlink("real", drive + "within");
  fs::create_symlink(outside, machine.Folder() + "/drive_d");
  FileSystem& files = machine.platform().files;
  ASSERT_EQ(files.Write("C:\\check", "x", WriteMode::Create), SystemError::Success);
  std::string bytes;
  std::vector<FoundFile> found;
  for (const char* path :
       {"C:\\folder\\new", "C:\\file", "C:\\up\\new", "C:\\dangling", "D:\\new", "C:\\folder"}) {
    EXPECT_NE(files.Write(path, "x", WriteMode::Create), SystemError::Success) << path;
    EXPECT_NE(files.Write(path, "x", WriteMode::Append), SystemError::Success) << path;
    EXPECT_NE(files.Copy("C:\\check", path), SystemError::Success) << path;
    EXPECT_NE(files.Rename("C:\\check", path), SystemError::Success) << path;
    EXPECT_NE(files.Read(path, bytes), SystemError::Success) << path;
    EXPECT_NE(files.Find(path, found), SystemError::Success) << path;
    EXPECT_FALSE(machine.platform().profiles.WriteString("s", "k", "v", path)) << path;
  }
  EXPECT_TRUE(fs::is_empty(outside));
  EXPECT_EQ(files.Read("C:\\WITHIN\\file", bytes), SystemError::Success);
  EXPECT_EQ(bytes, "inside");
  EXPECT_EQ(machine.machine().HostPath("C:\\folder\\x"), "");
  fs::remove_all(outside);
}

TEST(Machine, OnlyRegularFilesAreRead) {
  TestMachine machine;
  FileSystem& files = machine.platform().files;
  ASSERT_EQ(mkfifo((machine.Folder() + "/drive_c/pipe").c_str(), 0600), 0);
  std::string bytes;
  std::unique_ptr<FileView> view;
  EXPECT_EQ(files.Read("C:\\pipe", bytes), SystemError::AccessDenied);
  EXPECT_EQ(files.Map("C:\\pipe", view), SystemError::AccessDenied);
  EXPECT_EQ(files.Write("C:\\pipe", "x", WriteMode::Append), SystemError::AccessDenied);
}

TEST(Machine, AFolderWithoutPermissionToWriteStaysAsItIs) {
  TestMachine machine;
  machine.Write("drive_c/kept/file", "x");
  FileSystem& files = machine.platform().files;
  ASSERT_EQ(chmod((machine.Folder() + "/drive_c/kept").c_str(), 0555), 0);
  EXPECT_EQ(files.Write("C:\\kept\\new", "x", WriteMode::Create), SystemError::AccessDenied);
  EXPECT_EQ(files.Delete("C:\\kept\\file"), SystemError::AccessDenied);
  EXPECT_EQ(files.MakeDirectory("C:\\kept\\sub"), SystemError::AccessDenied);
  EXPECT_FALSE(machine.platform().profiles.WriteString("s", "k", "v", "C:\\kept\\new.ini"));
  ASSERT_EQ(chmod((machine.Folder() + "/drive_c/kept").c_str(), 0755), 0);
}

TEST(Machine, AFullDiskLeavesTheOldFile) {
  TestMachine machine;
  FileSystem& files = machine.platform().files;
  const std::string large(100'000, 'x');
  ASSERT_EQ(files.Write("C:\\old", "old", WriteMode::Create), SystemError::Success);
  ASSERT_EQ(files.Write("C:\\windows\\large", large, WriteMode::Create), SystemError::Success);
  ASSERT_EQ(machine.platform().profiles.WriteString("s", "k", "v", "C:\\old.ini"), true);
  machine.platform().profiles.Flush();
  // A limit on the size of files stands for the disk; it is met in the middle of a write.
  struct rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = signal(SIGXFSZ, SIG_IGN);
  const struct rlimit limit = {50'000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &limit);
  EXPECT_EQ(files.Write("C:\\old", large, WriteMode::Create), SystemError::DiskFull);
  EXPECT_EQ(files.Write("C:\\new", large, WriteMode::Create), SystemError::DiskFull);
  EXPECT_EQ(files.Copy("C:\\windows\\large", "C:\\old"), SystemError::DiskFull);
  machine.platform().profiles.WriteString("s", "k", large, "C:\\old.ini");
  EXPECT_EQ(machine.platform().profiles.Flush().size(), 1u);
  setrlimit(RLIMIT_FSIZE, &before);
  signal(SIGXFSZ, handler);
  EXPECT_EQ(machine.Read("drive_c/old"), "old");
  EXPECT_EQ(machine.Read("drive_c/old.ini"), "[s]\r\nk=v\r\n");
  std::size_t names = 0;
  for (const auto& entry : fs::directory_iterator(machine.Folder() + "/drive_c"))
    names += entry.exists() ? 1 : 0;
  EXPECT_EQ(names, 3u) << "windows, old and old.ini, and nothing left of the attempts";
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
  const std::string host = machine.Folder() + "/drive_d/My App/App.vbp";
  EXPECT_EQ(machine.machine().WindowsPath(host), "D:\\My App\\App.vbp");
  EXPECT_EQ(machine.machine().WindowsPath(machine.Folder() + "/drive_c/x/../new"), "C:\\new");
  EXPECT_EQ(machine.machine().WindowsPath(machine.Folder() + "/drive_c"), "C:\\");
  EXPECT_EQ(machine.machine().HostPath("d:\\MY APP\\app.vbp"), host);
  EXPECT_EQ(machine.machine().HostPath("C:\\new\\File"), machine.Folder() + "/drive_c/new/File");
  for (const std::string path :
       {"/etc/passwd", "/machine.ini", "/drive_c/../registry.reg", "/drive_c2/x", ""}) {
    EXPECT_EQ(machine.machine().WindowsPath(path == "/etc/passwd" ? path : machine.Folder() + path), "")
        << path;
  }
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
  ASSERT_EQ(chmod(registry.c_str(), 0444), 0);
  ASSERT_EQ(platform.registry.SetValue(key, "Value", {1, std::string("3\0", 2)}), SystemError::Success);
  EXPECT_THROW(machine.machine().Save(), MachineError);
}

TEST(MachineClock, AGivenTimeIsThePresentInUtc) {
  const struct {
    const char* seconds;
    const char* text;
  } cases[] = {{"1073315229", "1/5/2004 3:07:09 PM"},
               {"0", "1/1/1970 12:00:00 AM"},
               {"43200", "1/1/1970 12:00:00 PM"}};
  for (const auto& test : cases) EXPECT_EQ(MachineClock(test.seconds).LocalDateTimeText(), test.text);
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

class MachinePrograms : public testing::Test {
 protected:
  MachinePrograms() {
    machine_.Write("machine.ini",
                   "[Folders]\nSystem=C:\\sys\n[Programs]\nC:\\Program Files\\VB98\\VB6.EXE=tools/vb6\n"
                   "C:\\sys\\cmd.exe=tools/vb6\nC:\\slow.exe=tools/slow\nC:\\missing.exe=tools/none\n");
    Script("vb6",
           "for a; do echo \"[$a]\"; done >\"$BXVBWIZ_MACHINE/drive_c/log\"\npwd "
           ">>\"$BXVBWIZ_MACHINE/drive_c/log\"\n"
           "cat \"$BXVBWIZ_MACHINE/drive_c/before.ini\" 2>/dev/null >>\"$BXVBWIZ_MACHINE/drive_c/log\"\nread "
           "x && echo typed");
    Script("slow", "while [ ! -e \"$BXVBWIZ_MACHINE/stop\" ]; do sleep 0.01; done");
  }
  void Script(const std::string& name, const std::string& text) {
    machine_.Write("tools/" + name, "#!/bin/sh\n" + text + "\n");
    fs::permissions(machine_.Folder() + "/tools/" + name, fs::perms::owner_all);
  }
  // What the program saw, or why it did not run.
  std::string Run(const std::string& commandLine) {
    fs::remove(machine_.Folder() + "/drive_c/log");
    const std::unique_ptr<Process> process = machine_.platform().processes.Start(commandLine);
    if (!process) return "not started";
    if (process->Wait(60'000) != WaitResult::Ended) return "did not end";
    std::string log;
    machine_.platform().files.Read("C:\\LOG", log);
    return log;
  }

  TestMachine machine_;
};

TEST_F(MachinePrograms, AProgramIsFoundAsWindowsFindsItAndGetsItsArguments) {
  fs::create_directory(machine_.Folder() + "/drive_c/My App");
  ASSERT_EQ(machine_.platform().files.ChangeDirectory("C:\\My App"), SystemError::Success);
  const std::string folder = machine_.Folder() + "/drive_c/My App\n";
  for (const char* program : {"\"C:\\Program Files\\VB98\\vb6.exe\"", "C:\\Program Files\\VB98\\VB6.EXE",
                              "C:\\Program Files\\VB98\\VB6", "cmd", "CMD.EXE", "..\\sys\\cmd"}) {
    EXPECT_EQ(Run(std::string(program) + " /make \"a b\""), "[/make]\n[a b]\n" + folder) << program;
  }
  for (const char* program :
       {"C:\\Program Files\\none.exe", "none", "C:\\missing.exe", "", "\"", "C:\\sys\\cmd.com"}) {
    EXPECT_EQ(Run(program), "not started") << program;
  }
}

TEST_F(MachinePrograms, AProgramSeesWhatWasWrittenBeforeAndItsChangesAreSeenAfterwards) {
  ASSERT_TRUE(machine_.platform().profiles.WriteString("s", "k", "v", "C:\\before.ini"));
  const std::string log = Run("cmd");
  EXPECT_NE(log.find("[s]\r\nk=v\r\n"), std::string::npos) << log;
}

TEST_F(MachinePrograms, WaitingEndsWithItsTime) {
  const std::unique_ptr<Process> process = machine_.platform().processes.Start("C:\\slow.exe");
  ASSERT_TRUE(process);
  EXPECT_EQ(process->Wait(0), WaitResult::TimedOut);
  EXPECT_EQ(process->Wait(30), WaitResult::TimedOut);
  machine_.Write("stop", "");
  EXPECT_EQ(process->Wait(60'000), WaitResult::Ended);
  EXPECT_EQ(process->Wait(0), WaitResult::Ended);
}

}  // namespace
}  // namespace bxvbwiz
