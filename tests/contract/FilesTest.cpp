#include "contract/ContractPlatform.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using E = SystemError;

class ContractFiles : public ContractTest {
 protected:
  std::string Names(const std::string& pattern) {
    std::vector<FoundFile> found;
    const E error = files_.Find(pattern, found);
    if (error != E::Success) return Error(error);
    std::string names;
    for (const FoundFile& file : found) names += (names.empty() ? "" : " ") + file.name;
    return names;
  }
  std::uint32_t Attributes(const std::string& path) {
    std::vector<FoundFile> found;
    files_.Find(path, found);
    return found.size() == 1 ? found[0].attributes : 0;
  }
};

TEST_F(ContractFiles, EverySpellingOfAPathNamesTheSameFile) {
  ASSERT_EQ(files_.MakeDirectory(At("Ordner \u00C4")), E::Success);
  Put("Ordner \u00C4\\Form1.frm", "VERSION 5.00");
  const std::string full = At("Ordner \u00C4\\Form1.frm");
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
  Put("MyFile.Txt");
  Put("MYFILE.TXT", "second");
  EXPECT_EQ(Names(At("*")), ". .. MyFile.Txt");
  ASSERT_EQ(files_.Rename(At("myfile.txt"), At("myFILE.txt")), E::Success);
  EXPECT_EQ(Get(At("MyFile.Txt")), "second");
  // Wine leaves the old name.
  EXPECT_EQ(Names(At("*.*")), contract_->IsWine() ? ". .. MyFile.Txt" : ". .. myFILE.txt");
}

TEST_F(ContractFiles, PatternsFindWhatWindowsFinds) {
  for (const char* name : {"b.txt", "A.TXT", "ab.txt", "none", "a.b.txt", "\u00E4.frm"}) Put(name);
  ASSERT_EQ(files_.MakeDirectory(At("sub")), E::Success);
  const struct {
    const char* pattern;
    const char* found;
  } cases[] = {
      {"*", ". .. a.b.txt A.TXT ab.txt b.txt none sub \u00E4.frm"},
      {"*.*", ". .. a.b.txt A.TXT ab.txt b.txt none sub \u00E4.frm"},
      {"*.txt", "a.b.txt A.TXT ab.txt b.txt"},
      {"?.TXT", "A.TXT b.txt"},
      {"a?.*", "ab.txt"},
      {"*b*.t*", "a.b.txt ab.txt b.txt"},
      {"none.*", "none"},
      {"?.frm", "\u00E4.frm"},
      {"\u00C4.FRM", "\u00E4.frm"},
      {"sub", "sub"},
      {"sub\\*", ". .."},
      {"sub\\", "error 2"},
      {"missing", "error 2"},
      {"missing\\*", "error 3"},
  };
  for (const auto& test : cases) EXPECT_EQ(Names(At(test.pattern)), test.found) << test.pattern;
  const std::string root = At("").substr(0, 3);
  EXPECT_EQ(Names(root), "error 2") << "a drive's root is no entry of any folder";
  EXPECT_NE(Names(root + "*").substr(0, 1), ".") << "a root has no dots";
}

TEST_F(ContractFiles, NamesThatWindowsCannotHaveAreRefused) {
  for (const char* name : {"a<b", "a>b", "a\"b", "a|b", "a?b", "a*b", "a\tb", "...\\x"}) {
    EXPECT_NE(files_.Write(At(name), "x", WriteMode::Create), E::Success) << name;
    EXPECT_NE(files_.MakeDirectory(At(name)), E::Success) << name;
  }
  EXPECT_EQ(Names(At("*")), ". ..");
}

TEST_F(ContractFiles, LengthIsLimitedAsOnWindows) {
  if (contract_->IsWine()) GTEST_SKIP() << "Wine has no such limit";
  const std::string longest = At(std::string(259 - At("").size(), 'a'));
  EXPECT_EQ(files_.Write(longest, "x", WriteMode::Create), E::Success);
  EXPECT_EQ(files_.Write(longest + "a", "x", WriteMode::Create), E::FilenameTooLong);
  EXPECT_EQ(files_.MakeDirectory(At(std::string(248 - At("").size(), 'd'))), E::FilenameTooLong);
  EXPECT_EQ(files_.MakeDirectory(At(std::string(247 - At("").size(), 'd'))), E::Success);
}

TEST_F(ContractFiles, EachFaultGivesTheCodeOfWindows) {
  Put("file");
  ASSERT_EQ(files_.MakeDirectory(At("folder")), E::Success);
  std::string text;
  std::unique_ptr<FileView> view;
  EXPECT_EQ(files_.Read(At("missing"), text), E::FileNotFound);
  EXPECT_EQ(files_.Read(At("missing\\x"), text), E::PathNotFound);
  EXPECT_EQ(files_.Read(At("file\\x"), text), E::PathNotFound);
  EXPECT_NE(files_.Read("Q:\\x", text), E::Success);
  EXPECT_EQ(files_.Read(At("folder"), text), E::AccessDenied);
  EXPECT_EQ(files_.Map(At("folder"), view), E::AccessDenied);
  EXPECT_EQ(files_.Map(At("missing"), view), E::FileNotFound);
  EXPECT_EQ(files_.Write(At("folder"), "x", WriteMode::Create), E::AccessDenied);
  EXPECT_EQ(files_.Write(At("missing\\x"), "x", WriteMode::Append), E::PathNotFound);
  EXPECT_EQ(files_.Delete(At("folder")), E::AccessDenied);
  EXPECT_EQ(files_.Delete(At("missing")), E::FileNotFound);
  EXPECT_EQ(files_.MakeDirectory(At("FOLDER")), E::AlreadyExists);
  EXPECT_EQ(files_.MakeDirectory(At("missing\\x")), E::PathNotFound);
  EXPECT_EQ(files_.Rename(At("file"), At("folder")), E::AlreadyExists);
  EXPECT_EQ(files_.Rename(At("missing"), At("x")), E::FileNotFound);
  EXPECT_EQ(files_.Copy(At("missing"), At("x")), E::FileNotFound);
  EXPECT_EQ(files_.Copy(At("file"), At("folder")), E::AccessDenied);
  EXPECT_EQ(files_.ChangeDirectory(At("file")), E::InvalidDirectory);
  EXPECT_EQ(files_.SetAttributes(At("missing"), kAttributeNormal), E::FileNotFound);
  EXPECT_EQ(Names(At("*")), ". .. file folder");
}

TEST_F(ContractFiles, AReadOnlyFileIsNotChangedAndItsCopyIsReadOnly) {
  if (contract_->IsWine()) GTEST_SKIP() << "under Wine the superuser may write read-only files";
  Put("file", "bytes");
  ASSERT_EQ(files_.SetAttributes(At("file"), kAttributeReadOnly), E::Success);
  EXPECT_EQ(files_.Write(At("file"), "x", WriteMode::Create), E::AccessDenied);
  EXPECT_EQ(files_.Delete(At("file")), E::AccessDenied);
  EXPECT_EQ(files_.Open(At("file"), kGenericRead | kGenericWrite, kShareRead, kOpenExisting, 0),
            kInvalidFile);
  ASSERT_EQ(files_.Copy(At("file"), At("copy")), E::Success);
  EXPECT_EQ(files_.Copy(At("copy"), At("file")), E::AccessDenied);
  EXPECT_EQ(Attributes(At("copy")) & kAttributeReadOnly, kAttributeReadOnly);
  ASSERT_EQ(files_.SetAttributes(At("copy"), kAttributeNormal), E::Success);
  EXPECT_EQ(Attributes(At("copy")) & kAttributeReadOnly, 0u);
  EXPECT_EQ(files_.Write(At("copy"), "+", WriteMode::Append), E::Success);
  EXPECT_EQ(Get(At("copy")), "bytes+");
  EXPECT_EQ(Get(At("file")), "bytes");
}

TEST_F(ContractFiles, FilesAreCopiedTogetherAsOneByOne) {
  const std::vector<std::string> names = {"small",    "empty",  "large", "protected",
                                          "missing",  "folder", "OLD",   "small",
                                          "..\\file", "nul",    "bad*",  std::string(250, 'x')};
  for (const char* folder : {"from", "from\\folder", "together", "alone"})
    ASSERT_EQ(files_.MakeDirectory(At(folder)), E::Success);
  Put("from\\small", "some bytes");
  Put("from\\empty", "");
  Put("from\\large", std::string(100'000, 'x'));
  Put("from\\protected", "p");
  Put("from\\old", "new");
  Put("file", "beside");
  ASSERT_EQ(files_.SetAttributes(At("from\\protected"), kAttributeReadOnly), E::Success);
  for (const char* folder : {"together\\old", "alone\\old"}) Put(folder, "what was there before");
  std::vector<E> told;
  files_.CopyFiles(At("from\\"), At("together\\"), names, [&](std::size_t i, E error) {
    EXPECT_EQ(i, told.size());
    told.push_back(error);
  });
  ASSERT_EQ(told.size(), names.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(told[i], files_.Copy(At("from\\" + names[i]), At("alone\\" + names[i]))) << names[i];
    if (told[i] != E::Success) continue;
    EXPECT_EQ(Get(At("together\\" + names[i])), Get(At("from\\" + names[i]))) << names[i];
    EXPECT_EQ(Attributes(At("together\\" + names[i])), Attributes(At("alone\\" + names[i]))) << names[i];
  }
  EXPECT_EQ(Names(At("together\\*")), Names(At("alone\\*")));
}

TEST_F(ContractFiles, BytesAreWrittenAndReadAsTheyAre) {
  const std::string bytes("\0\r\n\x1A\xFF\n", 6);
  Put("file", bytes);
  EXPECT_EQ(Get(At("file")), bytes);
  std::unique_ptr<FileView> view;
  ASSERT_EQ(files_.Map(At("file"), view), E::Success);
  EXPECT_EQ(view->Bytes(), bytes);
  ASSERT_EQ(files_.Write(At("new"), "a", WriteMode::Append), E::Success);
  ASSERT_EQ(files_.Write(At("new"), "b", WriteMode::Append), E::Success);
  EXPECT_EQ(Get(At("new")), "ab");
  Put("new", "");
  ASSERT_EQ(files_.Map(At("new"), view), E::Success);
  EXPECT_EQ(Get(At("new")) + std::string(view->Bytes()), "");
}

TEST_F(ContractFiles, AnOpenFileCannotBeMovedOrDeleted) {
  Put("file");
  const FileHandle file = files_.Open(At("FILE"), kGenericRead | kGenericWrite, kShareRead, kOpenExisting, 0);
  ASSERT_NE(file, kInvalidFile);
  EXPECT_EQ(files_.Delete(At("file")), E::SharingViolation);
  EXPECT_EQ(files_.Rename(At("file"), At("other")), E::SharingViolation);
  EXPECT_EQ(files_.Write(At("file"), "y", WriteMode::Create), E::SharingViolation);
  EXPECT_TRUE(files_.SetTimes(file, 127188000000000000));
  EXPECT_TRUE(files_.Close(file));
  EXPECT_FALSE(files_.Close(file));
  EXPECT_EQ(files_.Rename(At("file"), At("other")), E::Success);
  EXPECT_EQ(files_.Delete(At("other")), E::Success);
}

TEST_F(ContractFiles, AFolderTakesItsFilesAlongWhenItIsRenamed) {
  ASSERT_EQ(files_.MakeDirectory(At("one")), E::Success);
  Put("one\\file", "1");
  ASSERT_EQ(files_.Rename(At("one"), At("two")), E::Success);
  EXPECT_EQ(Get(At("one\\file")), "error 3");
  ASSERT_EQ(files_.MakeDirectory(At("one")), E::Success);
  Put("one\\file", "2");
  EXPECT_EQ(Get(At("one\\file")) + Get(At("two\\file")), "21");
}

TEST_F(ContractFiles, FullPathsAreThoseOfWindows) {
  const std::string drive = contract_->Folder().substr(0, 2);
  const struct {
    std::string path, full;
  } cases[] = {
      {"a", At("a")},
      {"..\\a", drive + "\\a"},
      {"..\\..\\..", drive + "\\"},
      {"\\a\\.\\b\\..\\c", drive + "\\a\\c"},
      {drive + "x", At("x")},
      {"q:\\a\\\\b\\", "q:\\a\\b\\"},
      {"Q:\\a\\b\\..", "Q:\\a"},
      {"Q:\\a. \\b. .", "Q:\\a. \\b"},
      {"Q:/a/b", "Q:\\a\\b"},
      {"\\\\server\\share\\a\\..\\..\\b", "\\\\server\\share\\b"},
      {"\\\\?\\Q:\\a\\..\\b", "\\\\?\\Q:\\b"},
  };
  for (const auto& test : cases) {
    std::string full;
    EXPECT_EQ(files_.FullPath(test.path, full), E::Success) << test.path;
    EXPECT_EQ(full, test.full) << test.path;
  }
  std::string full;
  EXPECT_NE(files_.FullPath("", full), E::Success);
}

TEST_F(ContractFiles, SearchLooksInTheCurrentDirectoryAndTheSystemsFolders) {
  Put("here.dll");
  const std::string system = platform_.facts.SystemDirectory(260) + "\\bxvbwiz_contract.dll";
  ASSERT_EQ(files_.Write(system, "x", WriteMode::Create), E::Success);
  EXPECT_EQ(files_.Search("here.dll"), At("here.dll"));
  EXPECT_TRUE(EqualsIgnoreCase(files_.Search("BXVBWIZ_contract.dll"), system));
  EXPECT_EQ(files_.Search("bxvbwiz_missing.dll"), "");
  files_.Delete(system);
}

TEST_F(ContractFiles, TheCurrentDirectoryFollowsTheLastChange) {
  ASSERT_EQ(files_.MakeDirectory(At("sub")), E::Success);
  ASSERT_EQ(files_.ChangeDirectory("sub\\"), E::Success);
  EXPECT_EQ(files_.CurrentDirectory(), At("sub"));
  EXPECT_EQ(files_.ChangeDirectory("missing"), E::FileNotFound);
  ASSERT_EQ(files_.Write("file", "x", WriteMode::Create), E::Success);
  EXPECT_EQ(Names(At("sub\\*")), ". .. file");
  ASSERT_EQ(files_.ChangeDirectory("\\"), E::Success);
  EXPECT_EQ(files_.CurrentDirectory(), contract_->Folder().substr(0, 3));
}

TEST_F(ContractFiles, GuidsAreRandom) {
  const std::optional<GuidBytes> guid = platform_.guids.Create();
  ASSERT_TRUE(guid);
  EXPECT_NE(guid, platform_.guids.Create());
  EXPECT_EQ((*guid)[7] >> 4, 4) << "a random GUID has version 4";
  EXPECT_EQ((*guid)[8] >> 6, 2);
}

TEST_F(ContractFiles, TheSystemsFoldersFitTheirBuffersOrAreNotGiven) {
  const std::string windows = platform_.facts.WindowsDirectory(260);
  EXPECT_EQ(platform_.facts.WindowsDirectory(windows.size() + 1), windows);
  EXPECT_EQ(platform_.facts.WindowsDirectory(windows.size()), "");
  EXPECT_EQ(platform_.facts.SystemDirectory(260), windows + "\\system32");
}

}  // namespace
}  // namespace bxvbwiz
