#include "contract/ContractPlatform.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using E = SystemError;

// Paths are relative: the current directory is the test's folder.
class ContractFiles : public ContractTest {
 protected:
  std::string Call(const std::string& name, const std::string& a, const std::string& b) override {
    if (name == "names") return Names(a);
    if (name == "read") return Get(a);
    if (name == "put") return Answer(files_.Write(a, b, WriteMode::Create));
    if (name == "append") return Answer(files_.Write(a, b, WriteMode::Append));
    if (name == "mkdir") return Answer(files_.MakeDirectory(a));
    if (name == "delete") return Answer(files_.Delete(a));
    if (name == "rename") return Answer(files_.Rename(a, b));
    if (name == "copy") return Answer(files_.Copy(a, b));
    if (name == "enter") return Answer(files_.ChangeDirectory(a));
    if (name == "where") return files_.CurrentDirectory();
    if (name == "search") return files_.Search(a);
    if (name == "attributes")
      return b.empty() ? std::to_string(Attributes(a) & kAttributeReadOnly)
                       : Answer(files_.SetAttributes(a, b == "1" ? kAttributeReadOnly : kAttributeNormal));
    std::string text;
    std::unique_ptr<FileView> view;
    if (name == "full") return Answer(files_.FullPath(a, text), text);
    if (name == "map") {
      const E error = files_.Map(a, view);
      return Answer(error, view == nullptr ? "" : std::string(view->Bytes()));
    }
    return ContractTest::Call(name, a, b);
  }
  std::string Names(const std::string& pattern) {
    std::vector<FoundFile> found;
    const E error = files_.Find(pattern, found);
    std::string names;
    for (const FoundFile& file : found) names += (names.empty() ? "" : " ") + file.name;
    return Answer(error, names);
  }
  std::uint32_t Attributes(const std::string& path) {
    std::vector<FoundFile> found;
    files_.Find(path, found);
    return found.size() == 1 ? found[0].attributes : 0;
  }
};

TEST_F(ContractFiles, EverySpellingOfAPathNamesTheSameFile) {
  const std::string full = At("Ordner \u00C4\\Form1.frm");
  Do({"mkdir Ordner \u00C4", "put Ordner \u00C4\\Form1.frm, VERSION 5.00"});
  for (const std::string& path :
       {full, UpperCase(full), LowerCase(full), At("ORDNER \u00E4\\\\form1.FRM"),
        At(".\\ordner \u00E4\\form1.frm"), At("other\\..\\ordner \u00C4\\form1.frm"),
        At("ordner \u00C4/form1.frm"), "\\\\?\\" + full, full + ".", full + "  .. ",
        std::string("Ordner \u00C4\\form1.frm"), full.substr(2),
        full.substr(0, 2) + "Ordner \u00C4\\Form1.frm"}) {
    EXPECT_EQ(Get(path), "VERSION 5.00") << path;
  }
}

TEST_F(ContractFiles, AFileKeepsTheSpellingThatItWasMadeWith) {
  Do({"put MyFile.Txt, first", "put MYFILE.TXT, second", "names * -> . .. MyFile.Txt",
      "rename myfile.txt, myFILE.txt", "read MyFile.Txt -> second",
      // Wine leaves the old name.
      std::string("names *.* -> . .. ") + (contract_->IsWine() ? "MyFile.Txt" : "myFILE.txt")});
}

TEST_F(ContractFiles, PatternsFindWhatWindowsFinds) {
  for (const char* name : {"b.txt", "A.TXT", "ab.txt", "none", "a.b.txt", "\u00E4.frm"}) Put(name);
  const std::string all = ". .. a.b.txt A.TXT ab.txt b.txt none sub \u00E4.frm";
  const std::string root = At("").substr(0, 3);
  Do({"mkdir sub", "names * -> " + all, "names *.* -> " + all, "names *.txt -> a.b.txt A.TXT ab.txt b.txt",
      "names ?.TXT -> A.TXT b.txt", "names a?.* -> ab.txt", "names *b*.t* -> a.b.txt ab.txt b.txt",
      "names none.* -> none", "names ?.frm -> \u00E4.frm", "names \u00C4.FRM -> \u00E4.frm",
      "names sub -> sub", "names sub\\* -> . ..", "names sub\\ -> 2", "names missing -> 2",
      "names missing\\* -> 3", "names " + root + " -> 2"});
  EXPECT_NE(Names(root + "*").substr(0, 1), ".") << "a root has no dots";
}

TEST_F(ContractFiles, NamesThatWindowsCannotHaveAreRefused) {
  for (const char* name : {"a<b", "a>b", "a\"b", "a|b", "a?b", "a*b", "a\tb", "...\\x"}) {
    EXPECT_NE(files_.Write(At(name), "x", WriteMode::Create), E::Success) << name;
    EXPECT_NE(files_.MakeDirectory(At(name)), E::Success) << name;
  }
  Do({"names * -> . .."});
}

TEST_F(ContractFiles, LengthIsLimitedAsOnWindows) {
  if (contract_->IsWine()) GTEST_SKIP() << "Wine has no such limit";
  const std::string longest = At(std::string(259 - At("").size(), 'a'));
  const std::string folder = At(std::string(247 - At("").size(), 'd'));
  Do({"put " + longest, "put " + longest + "a -> 206", "mkdir " + folder + "d -> 206", "mkdir " + folder});
}

TEST_F(ContractFiles, EachFaultGivesTheCodeOfWindows) {
  Do({"put file",
      "mkdir folder",
      "read missing -> 2",
      "read missing\\x -> 3",
      "read file\\x -> 3",
      "read folder -> 5",
      "map folder -> 5",
      "map missing -> 2",
      "put folder -> 5",
      "append missing\\x -> 3",
      "delete folder -> 5",
      "delete missing -> 2",
      "mkdir FOLDER -> 183",
      "mkdir missing\\x -> 3",
      "rename file, folder -> 183",
      "rename missing, x -> 2",
      "copy missing, x -> 2",
      "copy file, folder -> 5",
      "enter file -> 267",
      "enter missing -> 2",
      "attributes missing, 0 -> 2",
      "names * -> . .. file folder"});
  EXPECT_NE(Get("Q:\\x"), "");
}

TEST_F(ContractFiles, AReadOnlyFileIsNotChangedAndItsCopyIsReadOnly) {
  if (contract_->IsWine()) GTEST_SKIP() << "under Wine the superuser may write read-only files";
  Do({"put file, bytes", "attributes file, 1", "put file -> 5", "delete file -> 5", "copy file, copy",
      "copy copy, file -> 5", "attributes copy -> 1", "attributes copy, 0", "attributes copy -> 0",
      "append copy, +", "read copy -> bytes+", "read file -> bytes"});
  EXPECT_EQ(files_.Open("file", kGenericRead | kGenericWrite, kShareRead, kOpenExisting, 0), kInvalidFile);
}

TEST_F(ContractFiles, FilesAreCopiedTogetherAsOneByOne) {
  const std::vector<std::string> names = {"small",    "empty",  "large", "protected",
                                          "missing",  "folder", "OLD",   "small",
                                          "..\\file", "nul",    "bad*",  std::string(250, 'x')};
  Do({"mkdir from", "mkdir from\\folder", "mkdir together", "mkdir alone", "put from\\small, some bytes",
      "put from\\empty", "put from\\large, " + std::string(9999, 'x'), "put from\\protected, p",
      "attributes from\\protected, 1", "put from\\old, new", "put file, beside", "put together\\old, before",
      "put alone\\old, before"});
  std::vector<std::pair<std::size_t, E>> told;
  files_.CopyFiles(At("from\\"), At("together\\"), names,
                   [&](std::size_t i, E error) { told.emplace_back(i, error); });
  ASSERT_EQ(told.size(), names.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(told[i].first, i);
    EXPECT_EQ(told[i].second, files_.Copy(At("from\\" + names[i]), At("alone\\" + names[i]))) << names[i];
    EXPECT_EQ(Get(At("together\\" + names[i])), Get(At("alone\\" + names[i]))) << names[i];
    EXPECT_EQ(Attributes(At("together\\" + names[i])), Attributes(At("alone\\" + names[i]))) << names[i];
  }
  EXPECT_EQ(Names(At("together\\*")), Names(At("alone\\*")));
}

TEST_F(ContractFiles, BytesAreWrittenAndReadAsTheyAre) {
  const std::string bytes("\0\r\n\x1A\xFF\n", 6);
  Put("file", bytes);
  EXPECT_EQ(Get(At("file")), bytes);
  EXPECT_EQ(Call("map", "file", ""), bytes);
  Do({"append new, a", "append new, b", "read new -> ab", "put new", "map new -> ", "read new -> "});
}

TEST_F(ContractFiles, AnOpenFileCannotBeMovedOrDeleted) {
  Put("file");
  const FileHandle file = files_.Open(At("FILE"), kGenericRead | kGenericWrite, kShareRead, kOpenExisting, 0);
  ASSERT_NE(file, kInvalidFile);
  Do({"delete file -> 32", "rename file, other -> 32", "put file, y -> 32"});
  EXPECT_TRUE(files_.SetTimes(file, 127188000000000000));
  EXPECT_TRUE(files_.Close(file));
  EXPECT_FALSE(files_.Close(file));
  std::vector<FoundFile> found;
  files_.Find(At("file"), found);
  EXPECT_EQ(found.at(0).written, 127188000000000000);
  Do({"rename file, other", "delete other"});
}

TEST_F(ContractFiles, AFolderTakesItsFilesAlongWhenItIsRenamed) {
  Do({"mkdir one", "put one\\file, 1", "rename one, two", "read one\\file -> 3", "mkdir one",
      "put one\\file, 2", "read one\\file -> 2", "read two\\file -> 1"});
}

TEST_F(ContractFiles, FullPathsAreThoseOfWindows) {
  const std::string drive = contract_->Folder().substr(0, 2);
  Do({"full a -> " + At("a"), "full ..\\a -> " + drive + "\\a", "full ..\\..\\.. -> " + drive + "\\",
      "full \\a\\.\\b\\..\\c -> " + drive + "\\a\\c", "full " + drive + "x -> " + At("x"),
      "full q:\\a\\\\b\\ -> q:\\a\\b\\", "full Q:\\a\\b\\.. -> Q:\\a", "full Q:\\a. \\b. . -> Q:\\a. \\b",
      "full Q:/a/b -> Q:\\a\\b", "full \\\\server\\share\\a\\..\\..\\b -> \\\\server\\share\\b",
      "full \\\\?\\Q:\\a\\..\\b -> \\\\?\\Q:\\b"});
  EXPECT_NE(Call("full", "", ""), "");
}

TEST_F(ContractFiles, SearchLooksInTheCurrentDirectoryAndTheSystemsFolders) {
  const std::string windows = platform_.facts.WindowsDirectory(260);
  EXPECT_EQ(platform_.facts.WindowsDirectory(windows.size() + 1), windows);
  EXPECT_EQ(platform_.facts.WindowsDirectory(windows.size()), "") << "no room for the NUL";
  EXPECT_EQ(platform_.facts.SystemDirectory(260), windows + "\\system32");
  const std::string system = windows + "\\system32\\bxvbwiz_contract.dll";
  Do({"put here.dll", "put " + system, "search here.dll -> " + At("here.dll"),
      "search bxvbwiz_missing.dll -> "});
  EXPECT_TRUE(EqualsIgnoreCase(files_.Search("BXVBWIZ_contract.dll"), system));
  files_.Delete(system);
}

TEST_F(ContractFiles, TheCurrentDirectoryFollowsTheLastChange) {
  Do({"mkdir sub", "enter sub\\", "where -> " + At("sub"), "enter missing -> 2", "put file, x",
      "names " + At("sub\\*") + " -> . .. file", "enter \\", "where -> " + contract_->Folder().substr(0, 3)});
}

TEST_F(ContractFiles, GuidsAreRandom) {
  const GuidBytes guid = platform_.guids.Create("a place").value();
  EXPECT_NE(guid, platform_.guids.Create("a place"));
  EXPECT_EQ(guid[7] >> 4, 4) << "a random GUID has version 4";
  EXPECT_EQ(guid[8] >> 6, 2);
}

}  // namespace
}  // namespace bxvbwiz
