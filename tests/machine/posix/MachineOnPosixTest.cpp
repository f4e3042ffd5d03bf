#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>

#include "TestMachine.h"

// What a machine folder meets on a POSIX system only: links, pipes and permissions.
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
  // Such links are listed all the same: a copy of the folder then reports that one cannot be read.
  std::vector<FoundFile> found;
  EXPECT_EQ(files.Find("C:\\d*g", found), SystemError::Success);
  EXPECT_EQ(found.size(), 1U);
  EXPECT_TRUE(fs::is_empty(outside));
  EXPECT_EQ(files.Read("C:\\WITHIN\\file", bytes), SystemError::Success);
  EXPECT_EQ(bytes, "inside");
  EXPECT_EQ(machine.machine().HostPath("C:\\folder\\x"), "");
  fs::remove_all(outside);
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
  for (const char* name : {"from/script", "from/set.ini", "together/x", "alone/x"})
    machine.Write(std::string("drive_c/") + name, "[s]\r\nk=old\r\n");
  const std::string script = machine.Folder() + "/drive_c/from/script";
  ASSERT_EQ(chmod(script.c_str(), 0754), 0);
  const fs::file_time_type time = fs::last_write_time(script) - std::chrono::hours(9999);
  fs::last_write_time(script, time);
  FileSystem& files = machine.platform().files;
  ASSERT_TRUE(machine.platform().profiles.WriteString("s", "k", "new", "C:\\from\\set.ini"));
  std::vector<SystemError> errors;
  const auto note = [&](std::size_t, SystemError error) { errors.push_back(error); };
  files.CopyFiles("C:\\from\\", "C:\\together\\", {"script", "set.ini"}, note);
  for (const std::string name : {"script", "set.ini"}) files.Copy("C:\\from\\" + name, "C:\\alone\\" + name);
  for (const std::string folder : {"drive_c/together/", "drive_c/alone/"}) {
    EXPECT_EQ(machine.Read(folder + "set.ini"), "[s]\r\nk=new\r\n") << folder;
    const std::string copy = machine.Folder() + "/" + folder + "script";
    EXPECT_EQ(fs::last_write_time(copy), time) << folder;
    EXPECT_EQ(fs::status(copy).permissions(), fs::perms(0754)) << folder;
  }
  ASSERT_NE(files.Open("C:\\from\\script", kGenericRead, 0, kOpenExisting, 0), kInvalidFile);
  files.CopyFiles("C:\\from\\", "C:\\together\\", {"script"}, note);
  EXPECT_EQ(errors, (std::vector<SystemError>{SystemError::Success, SystemError::Success,
                                              SystemError::SharingViolation}));
}

}  // namespace
}  // namespace bxvbwiz
