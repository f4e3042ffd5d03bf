#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>

#include "TestMachine.h"

// What a machine folder meets on a POSIX system only: links, pipes and permissions of folders.
namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

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
  // They are listed all the same: who copies the folder learns that one cannot be had.
  ASSERT_EQ(files.Find("C:\\d*g", found), SystemError::Success);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].name, "dangling");
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

TEST(Machine, CopiesKeepTimeAndPermissionsAndAreMadeOfWhatProgramsSee) {
  TestMachine machine;
  const std::string longName(130, 'x');
  for (const std::string& name : {std::string("script"), std::string("set.ini"), longName + "/" + longName})
    machine.Write("drive_c/from/" + name, "[s]\r\nk=old\r\n");
  for (const char* folder : {"together", "alone"})
    fs::create_directory(machine.Folder() + "/drive_c/" + folder);
  const std::string script = machine.Folder() + "/drive_c/from/script";
  ASSERT_EQ(chmod(script.c_str(), 0754), 0);
  const fs::file_time_type time = fs::last_write_time(script) - std::chrono::hours(9999);
  fs::last_write_time(script, time);
  FileSystem& files = machine.platform().files;
  ASSERT_TRUE(machine.platform().profiles.WriteString("s", "k", "new", "C:\\from\\set.ini"));

  const auto together = [&](const std::string& folder, const std::string& name) {
    SystemError told = SystemError::Success;
    files.CopyFiles(folder, "C:\\together\\", {name}, [&](std::size_t, SystemError error) { told = error; });
    return told;
  };
  for (const char* name : {"script", "set.ini"}) {
    EXPECT_EQ(together("C:\\from\\", name), SystemError::Success);
    EXPECT_EQ(files.Copy("C:\\from\\" + std::string(name), "C:\\alone\\" + std::string(name)),
              SystemError::Success);
  }
  for (const std::string folder : {"drive_c/together/", "drive_c/alone/"}) {
    EXPECT_EQ(machine.Read(folder + "set.ini"), "[s]\r\nk=new\r\n") << folder;
    EXPECT_EQ(fs::last_write_time(machine.Folder() + "/" + folder + "script"), time) << folder;
    EXPECT_EQ(fs::status(machine.Folder() + "/" + folder + "script").permissions(), fs::perms(0754))
        << folder;
  }
  EXPECT_EQ(together("C:\\from\\" + longName + "\\", longName), SystemError::FilenameTooLong);
  ASSERT_EQ(files.Delete("C:\\together\\script"), SystemError::Success);
  ASSERT_NE(files.Open("C:\\from\\script", kGenericRead, 0, kOpenExisting, 0), kInvalidFile);
  EXPECT_EQ(together("C:\\from\\", "script"), SystemError::SharingViolation);
}

}  // namespace
}  // namespace bxvbwiz
