#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "TestMachine.h"

// What only a POSIX system has in a machine folder: links, pipes and permissions.
namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

TEST(Machine, NoLinkLeadsOutOfTheFolderAndOnlyRegularFilesAreOpened) {
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
  ASSERT_EQ(mkfifo((drive + "pipe").c_str(), 0600), 0);
  FileSystem& files = machine.platform().files;
  ASSERT_EQ(files.Write("C:\\check", "x", WriteMode::Create), SystemError::Success);
  std::string bytes;
  std::unique_ptr<FileView> view;
  for (const char* path :
       {"C:\\folder\\new", "C:\\file", "C:\\up\\new", "C:\\dangling", "D:\\new", "C:\\folder", "C:\\pipe"}) {
    EXPECT_NE(files.Write(path, "x", WriteMode::Create), SystemError::Success) << path;
    EXPECT_NE(files.Write(path, "x", WriteMode::Append), SystemError::Success) << path;
    EXPECT_NE(files.Copy("C:\\check", path), SystemError::Success) << path;
    EXPECT_NE(files.Rename("C:\\check", path), SystemError::Success) << path;
    EXPECT_NE(files.Read(path, bytes), SystemError::Success) << path;
    EXPECT_NE(files.Map(path, view), SystemError::Success) << path;
    EXPECT_FALSE(machine.platform().profiles.WriteString("s", "k", "v", path)) << path;
  }
  // Such links are listed anyway, so that a copy of the folder reports the one that cannot be read.
  std::vector<FoundFile> found;
  EXPECT_EQ(files.Find("C:\\d*g", found), SystemError::Success);
  EXPECT_EQ(found.size(), 1U);
  EXPECT_TRUE(fs::is_empty(outside));
  EXPECT_EQ(files.Read("C:\\WITHIN\\file", bytes), SystemError::Success);
  EXPECT_EQ(bytes, "inside");
  EXPECT_EQ(machine.machine().HostPath("C:\\folder\\x"), "");
  fs::remove_all(outside);
}

TEST(Machine, AFolderWithoutPermissionToReadIsNotTakenForEmpty) {
  TestMachine machine;
  machine.Write("drive_c/closed/file", "x");
  FileSystem& files = machine.platform().files;
  ASSERT_EQ(chmod((machine.Folder() + "/drive_c/closed").c_str(), 0), 0);
  const bool isRoot = geteuid() == 0;  // who may read everything
  ASSERT_TRUE(!isRoot || seteuid(65534) == 0);
  std::vector<FoundFile> found;
  std::string bytes;
  for (const char* path : {"C:\\closed\\file", "C:\\closed\\other", "C:\\closed\\*.*"})
    EXPECT_EQ(files.Find(path, found), SystemError::AccessDenied) << path;
  EXPECT_EQ(files.Read("C:\\closed\\file", bytes), SystemError::AccessDenied);
  EXPECT_EQ(files.Find("C:\\open", found), SystemError::FileNotFound);
  ASSERT_TRUE(!isRoot || seteuid(0) == 0);
  ASSERT_EQ(chmod((machine.Folder() + "/drive_c/closed").c_str(), 0755), 0);
}

TEST(Machine, ALinkStaysInTheFolderThatStandsForItsDrive) {
  TestMachine machine;
  machine.Write("machine.ini", "[Drives]\nP=p\nQ=q\n");
  machine.Write("p/inner/file", "inside");
  machine.Write("q/file", "other");
  machine.Write("drive_c/file", "other");
  const std::string drive = machine.Folder() + "/p/";
  fs::create_symlink("inner", drive + "within");
  fs::create_symlink("../q", drive + "other");
  fs::create_symlink("..", drive + "up");
  fs::create_symlink("../drive_c/file", drive + "file");
  fs::create_symlink("../p/inner", machine.Folder() + "/drive_c/p");
  FileSystem& files = machine.platform().files;
  std::string bytes;
  EXPECT_EQ(files.Read("P:\\within\\file", bytes), SystemError::Success);
  EXPECT_EQ(files.Read("C:\\p\\file", bytes), SystemError::Success) << "within the machine folder";
  for (const char* path : {"P:\\other\\file", "P:\\up\\machine.ini", "P:\\file"})
    EXPECT_NE(files.Read(path, bytes), SystemError::Success) << path;
  EXPECT_EQ(machine.machine().WindowsPath(drive + "other/file"), "Q:\\file") << "where it really lies";
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

TEST(Machine, CopiesKeepTimeAndPermissionsAndAreMadeOfWhatProgramsSee) {
  TestMachine machine;
  machine.Write("drive_c/a.ini", "[s]\r\nk=old\r\n");
  machine.Write("drive_c/to/x", "");
  const std::string source = machine.Folder() + "/drive_c/a.ini";
  ASSERT_EQ(chmod(source.c_str(), 0754), 0);
  FileSystem& files = machine.platform().files;
  ASSERT_TRUE(machine.platform().profiles.WriteString("s", "k", "new", "C:\\a.ini"));
  SystemError together = SystemError::NotReady;
  const auto note = [&](std::size_t, SystemError error) { together = error; };
  files.CopyFiles("C:\\", "C:\\to\\", {"a.ini"}, note);
  EXPECT_EQ(together, SystemError::Success);
  EXPECT_EQ(files.Copy("C:\\a.ini", "C:\\alone"), SystemError::Success);
  for (const char* copy : {"drive_c/to/a.ini", "drive_c/alone"}) {
    EXPECT_EQ(machine.Read(copy), "[s]\r\nk=new\r\n") << copy;
    const std::string path = machine.Folder() + "/" + copy;
    EXPECT_EQ(fs::last_write_time(path), fs::last_write_time(source)) << copy;
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0754)) << copy;
  }
  ASSERT_NE(files.Open("C:\\a.ini", kGenericRead, 0, kOpenExisting, 0), kInvalidFile);
  files.CopyFiles("C:\\", "C:\\to\\", {"a.ini"}, note);
  EXPECT_EQ(together, SystemError::SharingViolation);
}

}  // namespace
}  // namespace bxvbwiz
