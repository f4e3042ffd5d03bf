#include "ProjectFixture.h"

namespace bxvbwiz {
namespace {

TEST(GlobalTest, VisualBasicIsFoundByItsBuildCommand) {
  const std::string old = "C:\\VB 9\\|5|C:\\VB 9\\setupkit\\kitfil32\\sys32\\";
  const struct {
    std::string command;
    const char* program;
    std::string found;  // FindVB|GetVBVer|FindVBRedistFolder
  } cases[] = {
      {"", "vb6.exe", "|5|"},
      {"%1", "vb6.exe", "|5|"},
      {"\"C:\\VB 9\\VB6.EXE\" /make \"%1\"", "Vb6.exe", "C:\\VB 9\\|6|C:\\VB 9\\Wizards\\PDWizard\\Redist"},
      {"C:\\VB 9\\VB6.EXE /make \"%1\"", "VB5.EXE", old},
      {"C:\\VB 9\\VB6.EXE /make %1 %2", "both", old},
      {"C:\\VB 9\\VB6.EXE /make", "vb7.exe", "C:\\VB 9\\||"}};
  for (const auto& each : cases) {
    TestMachine disk;
    const std::string data = *ReplaceAll(*ReplaceAll(each.command, "\\", "\\\\"), "\"", "\\\"");
    disk.Registry(
        "[HKEY_CLASSES_ROOT\\.vbp]\r\n@=\"VB.Project\"\r\n[HKEY_CLASSES_ROOT\\VB."
        "Project\\shell\\Make\\command]\r\n@=\"" +
        data + "\"\r\n");
    const bool both = each.program == std::string("both");
    if (both) disk.Write("drive_c/VB 9/vb5.exe", "");
    disk.Write(std::string("drive_c/VB 9/") + (both ? "vb6.exe" : each.program), "");
    basGlobal global(disk.platform());
    EXPECT_EQ(global.FindVB() + "|" + global.GetVBVer() + "|" + global.FindVBRedistFolder(), each.found)
        << each.command;
  }
}

TEST(GlobalTest, TheProgressBeginsAgainAfterItsLimit) {
  TestMachine disk;
  basGlobal global(disk.platform());
  global.ResetProgress(2);
  for (const int value : {1, 2, 1}) EXPECT_EQ(global.NextProgressValue(), value);
}

using SystemFiles = ProjectFixture;

TEST_F(SystemFiles, AreListedUpToAGapAndReadOnce) {
  Put("C:\\Borvex\\VBWizDep.ini",
      "[System]\r\n1File=A-b.dll\r\n2File=Ab.dll\r\n3File=A-b.dll\r\n4File=C:\\x.ocx\r\n6File=late.dll\r\n");
  EXPECT_FALSE(global().IsSystemFile("ab.dll"));
  global().LoadSystemFiles();
  // "A-b.dll" and "Ab.dll" have the same key; both are system files anyway.
  EXPECT_EQ(global().gSystemFiles()->Count(), 2U);
  for (const char* name : {"a-B.DLL", "ab.dll", "c:\\X.ocx"})
    EXPECT_TRUE(global().IsSystemFile(name)) << name;
  for (const char* name : {"x.ocx", "late.dll", ""}) EXPECT_FALSE(global().IsSystemFile(name)) << name;
  platform().profiles.WriteString("System", "5File", "new.dll", global().gDepFilePath());
  global().LoadSystemFiles();
  EXPECT_FALSE(global().IsSystemFile("new.dll"));
}

TEST_F(SystemFiles, WithoutAListAreNoted) {
  Put("C:\\Borvex\\VBWizDep.ini", "");
  global().LoadSystemFiles();
  EXPECT_EQ(findings().All().size(), 1U);
}

TEST_F(SystemFiles, NeedTheFolderOfTheirListAsText) {
  disk.Registry(
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex Professional\\6.0\\VBWiz]\r\n\"DepFile\"=dword:1\r\n");
  EXPECT_THROW(global().LoadSystemFiles(), RuntimeError);
}

TEST(HexVersion, IsConvertedPartByPart) {
  const std::tuple<const char*, bool, const char*> cases[] = {
      {"1.a", true, "1.10"}, {"2D.00fF", true, "45.255"},    {"1.", true, "1"},
      {"", true, ""},        {"FFFFFFF", true, "268435455"}, {"12345678.0", false, ""},
      {"1..2", false, "1"},  {"1.0x2", false, "1"},          {"\u0661", false, ""}};
  for (const auto& [hexadecimal, converted, decimal] : cases) {
    std::string result = "left over";
    EXPECT_EQ(ConvertHexVersion(hexadecimal, result), converted) << hexadecimal;
    EXPECT_EQ(result, decimal) << hexadecimal;
  }
}

}  // namespace
}  // namespace bxvbwiz
