#include "machine/host/Host.h"
#include "machine/MachineFacts.h"
#include "platform/Forwarding.h"
#include "support/basFile.h"
#include "support/basMisc.h"
#include "support/basShell.h"
#include "support/RememberedFiles.h"
#include "TestSession.h"

namespace bxvbwiz {
namespace {

TEST(ParsePath, CutsRootFolderNameAndTitle) {
  const struct {
    const char* path;
    const char* root;
    int position;
    const char* folder;
    const char* fileName;
    const char* title;
  } cases[] = {
      {"C:\\a\\b.c.dll", "C:\\", 4, "C:\\a", "b.c.dll", "b.c"},
      {"C:\\x.dll", "C:\\", 4, "C:\\", "x.dll", "x"},
      {"C:\\a\\b\\", "C:\\", 4, "C:\\a\\b", "", ""},
      {"C:x.dll", "C:", 3, "C:", "x.dll", "x"},
      {"a\\b", "", 0, "a", "b", "b"},
      {"\\x.dll", "", 0, "", "x.dll", "x"},
      {"", "", 0, "", "", ""},
      {"\\\\s\u00E4v\\sh\\d\\x.dll", "\\\\s\u00E4v\\sh", 10, "\\\\s\u00E4v\\sh\\d", "x.dll", "x"},
      {"\\\\srv\\sh", "\\\\srv\\sh", 9, "\\\\srv\\sh", "", ""},
      {"\\\\?\\C:\\x", "\\\\?\\C:\\", 8, "\\\\?\\C:\\", "x", "x"},
      {"\\\\?\\UNC\\srv\\sh\\x", "\\\\?\\UNC\\srv\\sh", 16, "\\\\?\\UNC\\srv\\sh", "x", "x"},
  };
  for (const auto& row : cases) {
    std::int16_t position = -1;
    EXPECT_EQ(SplitPathRoot(row.path, position), row.root) << row.path;
    EXPECT_EQ(position, row.position) << row.path;
    EXPECT_EQ(ParsePath(row.path, PathPart::Root), row.root) << row.path;
    EXPECT_EQ(GetPathFolder(row.path), row.folder) << row.path;
    EXPECT_EQ(GetPathFileName(row.path), row.fileName) << row.path;
    EXPECT_EQ(ParsePath(row.path, PathPart::Title), row.title) << row.path;
  }
  for (const char* path : {"c:a.frm", "\\\\s\\s\\a.frm"}) EXPECT_TRUE(IsAbsolutePath(path)) << path;
  for (const char* path : {"1:\\a.frm", "Ab:\\a.frm", "\\a.frm", "\\\\s\\\\\\a.frm", ""})
    EXPECT_FALSE(IsAbsolutePath(path)) << path;
  EXPECT_EQ(SplitPathComponents("a\\\\b\\"), (std::vector<std::string>{"a", "", "b", ""}));
  EXPECT_EQ(FixPath("") + FixPath("C:\\a") + FixPath("C:\\"), "\\C:\\a\\C:\\");
  EXPECT_EQ(StripTrailingBackslash("C:\\a\\\\"), "C:\\a\\");
  EXPECT_EQ(StripAtNull(std::string("ab\0c", 4)) + StripAtNull("ab"), "abab");
}

// One unit a byte, so that the widths can be counted in the texts.
struct Label : LabelMetrics {
  explicit Label(int w) : width(w) {}
  int Width() const override { return width; }
  int TextWidth(const std::string& text) const override { return static_cast<int>(text.size()); }
  int width;
};

TEST(CompactPathForLabel, KeepsTheRootAndTheTrailingComponentsThatFit) {
  const std::tuple<int, const char*, const char*> cases[] = {
      {21, "C:\\one\\two\\three.vbp", "C:\\one\\two\\three.vbp"},  // 20 units; 95 % of 21 are 19.95
      {20, "C:\\one\\two\\three.vbp", "C:\\...\\three.vbp"},       // it would fit 20, but not 19
      {17, "C:\\one\\two\\three.vbp", "C:\\...\\three.vbp"},
      {16, "C:\\one\\two\\three.vbp", ""},
      {24, "C:\\folder\\one\\two\\three.vbp", "C:\\...\\two\\three.vbp"},
      {17, "\\\\s\\h\\folder\\x.vbp", "\\\\s\\h\\...\\x.vbp"}};
  for (const auto& [width, path, text] : cases)
    EXPECT_EQ(CompactPathForLabel(Label(width), path), text) << width;
}

TEST(LineReader, TakesEveryLineEnd) {
  LineReader reader("a\r\nb\nc\rd\r\n\r\ne");
  std::vector<std::string> lines;
  for (std::string_view line; reader.Next(line);) lines.emplace_back(line);
  EXPECT_EQ(lines, (std::vector<std::string>{"a", "b", "c", "d", "", "e"}));
}

// A file named "hidden" is hidden, which a machine folder does not know. Copies fail with the faults, the
// last one first.
class HiddenAndFaulty : public ForwardingFileSystem {
 public:
  using ForwardingFileSystem::ForwardingFileSystem;
  std::vector<SystemError> faults;
  std::uint32_t lastAttributes = 0;

  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    const SystemError result = ForwardingFileSystem::Find(pattern, found);
    for (FoundFile& file : found)
      if (file.name == "hidden") file.attributes |= kAttributeHidden;
    return result;
  }
  void CopyFiles(const std::string& source, const std::string& target, const std::vector<std::string>& names,
                 const std::function<void(std::size_t, SystemError)>& done) override {
    FileSystem::CopyFiles(source, target, names, done);
  }
  SystemError Copy(const std::string& source, const std::string& target) override {
    if (faults.empty()) return ForwardingFileSystem::Copy(source, target);
    const SystemError fault = faults.back();
    return faults.pop_back(), fault;
  }
  SystemError SetAttributes(const std::string& path, std::uint32_t attributes) override {
    lastAttributes = attributes;
    return ForwardingFileSystem::SetAttributes(path, attributes);
  }
};

// Knows "C:\LONGNA~1" and "SHORT~1.OCX", as a file system with short names does.
class ShortNames : public ForwardingFileSystem {
 public:
  using ForwardingFileSystem::ForwardingFileSystem;
  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    found.clear();
    if (pattern == "C:\\LONGNA~1") found.push_back({"Long Name", kAttributeDirectory});
    if (pattern == "C:\\Long Name\\SHORT~1.OCX") found.push_back({"Shortened.ocx", 0});
    return found.empty() ? SystemError::FileNotFound : SystemError::Success;
  }
};

// A machine with the folders C:\S and C:\T.
class Files : public TestSession {
 protected:
  Files() {
    for (const char* folder : {"C:\\S", "C:\\T"}) files.MakeDirectory(folder);
  }
  // Writes files of C:\S, each with its name as content.
  void Fill(const std::vector<std::string>& names) {
    for (const std::string& name : names) Put("C:\\S\\" + name, name);
  }
  void Copy(std::string from, std::string to) { CopyFileTree(files, user, from, to); }

  HiddenAndFaulty files{platform().files};
};

TEST_F(Files, CopyingLeavesOutDottedNamesAndClearsReadOnly) {
  Fill({"hidden", "b.txt", ".git/x", ".rc", "Sub/c.txt"});
  for (const char* name : {"C:\\S\\hidden", "C:\\S\\b.txt"}) files.SetAttributes(name, kAttributeReadOnly);
  Copy("C:\\S", "C:\\T");
  EXPECT_EQ(files.lastAttributes, kAttributeHidden | kAttributeArchive);
  EXPECT_EQ(files.Write("C:\\T\\b.txt", "B", WriteMode::Append), SystemError::Success);
  EXPECT_EQ(Stored("C:/T/b.txt") + Stored("C:/T/Sub/c.txt"), "b.txtBSub/c.txt");
  EXPECT_FALSE(disk.Exists("drive_c/T/.git") || disk.Exists("drive_c/T/.rc"));
  EXPECT_EQ(user.pointers.front(), Pointer::Hourglass);
  EXPECT_EQ(user.pointers.back(), Pointer::Default);
}

TEST_F(Files, CopyingAdvancesOnceForEachFolderWithFiveFiles) {
  for (int number = 1; number <= 10; ++number) Fill({"Ten/" + std::to_string(number)});
  Fill({"Four/1", "Four/2", "Four/3", "Four/4"});
  Copy("C:\\S", "C:\\T");
  EXPECT_EQ(user.advances, 1);
}

TEST_F(Files, CopyingIntoAFolderOfTheSourceEnds) {
  Copy("C:\\S", "C:\\T");
  EXPECT_TRUE(user.pointers.empty()) << "nothing to copy takes no time";
  Fill({"a.txt"});
  files.MakeDirectory("C:\\S\\New");
  Copy("C:\\S", "C:\\S\\New");
  EXPECT_EQ(Stored("C:/S/New/a.txt"), "a.txt");
  EXPECT_FALSE(disk.Exists("drive_c/S/New/New/New"));
}

TEST_F(Files, CopyingRepeatsTheFailedFileAfterRetryAndStopsAfterCancel) {
  Fill({"a", "b"});
  files.faults = {SystemError::SharingViolation};
  user.answers = {Button::Retry};
  Copy("C:\\S", "C:\\T");
  EXPECT_EQ(user.messages, std::vector<std::string>{
                               ErrorMessage("70 : Permission denied: C:\\S\\a to C:\\T\\a : Bx6vbwiz")});
  EXPECT_EQ(Stored("C:/T/a") + Stored("C:/T/b"), "ab");

  files.Delete("C:\\T\\b");
  files.faults = {SystemError::DiskFull};
  EXPECT_THROW(Copy("C:\\S", "C:\\T"), WizardEnded);
  EXPECT_FALSE(disk.Exists("drive_c/T/b"));
  EXPECT_EQ(user.pointers.back(), Pointer::Default);
}

TEST_F(Files, SettingTheTimesClosesTheFile) {
  Fill({"a.txt"});
  MachineClock clock("86400");
  SetFileTimesToNow(files, clock, "C:\\S\\a.txt");
  EXPECT_EQ(host::StatusOf(disk.Folder() + "/drive_c/S/a.txt").modifiedNanoseconds, 86'400'000'000'000);
  EXPECT_EQ(files.Delete("C:\\S\\a.txt"), SystemError::Success);
}

TEST_F(Files, APathHasOneNormalSpelling) {
  ShortNames shortNames(files);
  const std::pair<const char*, const char*> cases[] = {
      {"C:\\a\\b.ocx", "C:\\a\\b.ocx"},
      {"C:/a\\.\\x\\..\\\\b.ocx", "C:\\a\\b.ocx"},
      {"\\\\?\\C:\\a\\b.ocx", "C:\\a\\b.ocx"},
      {"\\\\?\\unc\\server\\share\\b.ocx", "\\\\server\\share\\b.ocx"},
      {"C:\\LONGNA~1\\SHORT~1.OCX", "C:\\Long Name\\Shortened.ocx"},
      {"C:\\OTHER~1\\SHORT~1.OCX\\", "C:\\OTHER~1\\SHORT~1.OCX\\"},
      {"\\\\server\\share\\a~1", "\\\\server\\share\\a~1"},
      {"b.ocx", "b.ocx"},
      {"..\\b.ocx", "..\\b.ocx"},
      {"", ""},
  };
  for (const auto& [path, normal] : cases) EXPECT_EQ(NormalPath(shortNames, path), normal) << path;
}

TEST_F(Files, DirSeesNormalFilesAndFoldersOnRequest) {
  Fill({"Fold/.x", "hidden", "X.dll"});
  EXPECT_EQ(Dir(files, "C:\\S\\"), "X.dll");
  EXPECT_EQ(Dir(files, "C:\\S\\hidden", true), "");
  EXPECT_EQ(Dir(files, "C:\\S\\fold"), "");
  EXPECT_EQ(Dir(files, "C:\\S\\fold", true), "Fold");
  EXPECT_TRUE(FolderHoldsFile(files, "C:\\S\\", "x.dll"));
  EXPECT_FALSE(FolderHoldsFile(files, "C:\\S\\", "*.*"));
}

TEST_F(Files, WhatIsMissingIsAskedForAgainAfterAMessage) {
  RememberedFiles remembered(files, user);
  remembered.Remember(true);
  const auto isThere = [&] { return FolderHoldsFile(remembered, "C:\\S\\", "Grid.ocx"); };
  EXPECT_FALSE(isThere());
  files.Write("C:\\S\\Grid.ocx", "", WriteMode::Create);
  EXPECT_FALSE(isThere()) << "nobody had the time to put it there";
  user.ShowMessage({});
  EXPECT_TRUE(isThere());
  files.Delete("C:\\S\\Grid.ocx");
  EXPECT_TRUE(isThere());
  remembered.Remember(false);
  EXPECT_FALSE(isThere());
}

// A program that is still running at the first three looks.
struct Programs : Processes {
  struct Running : Process {
    WaitResult Wait(std::uint32_t) override { return left-- > 0 ? WaitResult::TimedOut : WaitResult::Failed; }
    int left = 3;
  };
  std::unique_ptr<Process> Start(const std::string&) override { return std::make_unique<Running>(); }
};

TEST_F(Files, ShellAndWaitLetsEventsRunUntilTheProcessEnds) {
  Programs programs;
  ShellAndWait(programs, user, "vb6 /make");
  EXPECT_EQ(user.events, 3);
}

}  // namespace
}  // namespace bxvbwiz
