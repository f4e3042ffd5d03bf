#include "ProjectFixture.h"

namespace bxvbwiz {
namespace {

class ProjectTest : public ProjectFixture {
 protected:
  // Reads `text` as C:\Prj\Demo.vbp.
  void Read(const std::string& text) {
    Put("C:\\Prj\\Demo.vbp", text);
    project = std::make_unique<CProject>(context());
    project->SetFileName("C:\\Prj\\Demo.vbp");
  }
  std::unique_ptr<CProject> project;
};

TEST_F(ProjectTest, KeysAreExactPrefixesOfALine) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"Type=Exe\nExeName32=\"a b.exe\"\nPath32=\"..\\out\"\nName=\"Demo\"", "1|a b.exe|..\\out|Demo|..|"},
      {"Type=Exe\rMajorVer=1\rMinorVer=02\rRevisionVer=\"3\"", "1|Demo.EXE|||1.02.\"3\"|"},
      {"Type=Exe\r\nname=Foo\r\n Name=Foo\r\n", "1|Demo.EXE|||..|"},
      {"Type=Exe\n[MS Transaction Server]\nVersionCompanyName=\"Acme Inc.\"\n", "1|Demo.EXE|||..|Acme Inc."},
      {"Type=Exe\nName=One\nName=Two\nClass=A; A.cls\n", "1|Demo.EXE||Two|..|"},
      {"Type=Control\nExeName32=\"\"\n", "4|Demo.OCX|||..|"},
      {"Class=A\nType=OleDll\n", "1|Demo.EXE|||..|"},
      {"Type=OleDll\nClass=A; A.cls\nUserDocument=B\n", "6|Demo.DLL|||..|"},
      {"Type=OleDll\nUserDocument=B\nClass=A; A.cls\n", "3|Demo.DLL|||..|"},
      {"Type=OleExe\nUserDocument=B\n", "5|Demo.EXE|||..|"},
      {"Type=OleDll\nClass=A; A.cls\nType=OleExe\n", "1|Demo.EXE|||..|"},
  };
  for (const auto& [text, facts] : cases) {
    Read(text);
    const CProject& p = *project;
    EXPECT_EQ(std::to_string(p.ProjectType) + "|" + p.ExeName + "|" + p.ExePath + "|" + p.Name + "|" +
                  p.MajorVer + "." + p.MinorVer + "." + p.RevisionVer + "|" + p.VersionCompanyName,
              facts);
  }
}

TEST_F(ProjectTest, AProjectWithoutItsOutputNeedsARebuild) {
  for (const char* path : {"C:\\Prj\\Demo.exe", "C:\\Out\\Demo.exe", "C:\\Prj\\bin\\Demo.exe"}) Put(path, "");
  const std::vector<std::tuple<const char*, const char*, bool>> cases = {
      {"", "C:\\Prj\\Demo.EXE", false},           {"..\\Out", "C:\\Out\\Demo.EXE", false},
      {"bin\\", "C:\\Prj\\bin\\Demo.EXE", false}, {"C:\\Out", "C:\\Out\\Demo.EXE", false},
      {"\\Out", "C:\\Out\\Demo.EXE", false},      {"..\\None", "C:\\None\\Demo.EXE", true},
      {"X:\\Out", "X:\\Out\\Demo.EXE", true},     {"\\\\srv\\share\\", "\\\\srv\\share\\Demo.EXE", true},
  };
  for (const auto& [path, output, needsRebuild] : cases) {
    Read(std::string("Type=Exe\nPath32=\"") + path + "\"\n");
    EXPECT_EQ(project->OutputPath(), output);
    EXPECT_EQ(project->NeedsRebuild, needsRebuild) << path;
  }
}

TEST_F(ProjectTest, MembersAreReadOnlyWithoutARebuild) {
  Read("Type=Exe\nReference=*\\G{2}#1.0#0#..\\two.dll#Two\n");
  Put("C:\\Prj\\Demo.exe", "");
  for (const bool needsRebuild : {true, false}) {
    project->NeedsRebuild = needsRebuild;  // never cleared by the reader
    project->SetFileName("C:\\Prj\\Demo.vbp");
    EXPECT_EQ(project->References().Count(), needsRebuild ? 0U : 1U);
  }
  EXPECT_EQ(project->References().Item(1)->Name, "C:\\Prj\\two.dll");
}

TEST_F(ProjectTest, AFormThatStandsTwiceSpoilsTheReading) {
  for (const char* name : {"Demo.exe", "a.frm"}) Put("C:\\Prj\\" + std::string(name), "");
  EXPECT_THROW(Read("Type=Exe\nForm=a.frm\nForm=a.frm\n"), RuntimeError);
  EXPECT_TRUE(session().callStack.Names().empty());
}

}  // namespace
}  // namespace bxvbwiz
