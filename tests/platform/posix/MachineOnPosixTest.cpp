#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>

#include "TestMachine.h"

// What a machine folder meets on a POSIX system only: links, pipes, permissions of folders, and a limit on
// the size of files.
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

}  // namespace
}  // namespace bxvbwiz
