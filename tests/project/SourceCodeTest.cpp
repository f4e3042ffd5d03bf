#include "project/SourceCode.h"

#include <gtest/gtest.h>

#include <string>

namespace bxvbwiz {
namespace {

// "3:a.dll 5=A.Object": the line, then what is asked for there.
std::string Uses(const std::string& text) {
  std::string uses;
  for (const CodeUse& use : FindCodeUses(text)) {
    uses += (uses.empty() ? "" : " ") + std::to_string(use.line) +
            (use.kind == CodeUse::Kind::Dll ? ":" : "=") + std::string(use.name);
  }
  return uses;
}

TEST(SourceCode, ADeclareStatementAsksForItsDll) {
  const std::pair<const char*, const char*> cases[] = {
      {"Declare Sub A Lib \"a.dll\" ()", "1:a.dll"},
      {"\n\r\n private DECLARE function A lib\"a\" Alias \"b.dll\" ()", "3:a"},
      {"Public Declare Sub A _\r\n  Lib _\r\n  \" a.dll \" ()\nDeclare Sub B Lib \"b\"", "3:a.dll 4:b"},
      {"' Declare Sub A Lib \"a\"\nRem Declare Sub A Lib \"a\"\n'x _\nDeclare Sub A Lib \"a\"", ""},
      {"x = \"Declare Sub A Lib \"\"a\"\"\"\nDeclared Sub A Lib \"a\"\nDeclare Sub ALib \"a\"", ""},
      {"Declare Sub A Lib \"\"\nDeclare Sub A Lib \"a\nDeclare Sub B Lib \"b\"", "3:b"},
      {"\"", ""},
  };
  for (const auto& [text, uses] : cases) EXPECT_EQ(Uses(text), uses) << text;
}

TEST(SourceCode, ACallWithAWholeNameAsksForItsObject) {
  const std::pair<const char*, const char*> cases[] = {
      {"Set x = CreateObject(\"A.B\")", "1=A.B"},
      {"x = createobject ( _\n\"A.B\" , \"server\")", "2=A.B"},
      {"x = Server.CreateObject(\"A.B\"): y = GetObject(, \"C.D\")", "1=A.B 1=C.D"},
      {"x = GetObject(\"\", \"A.B\")\nx = GetObject(\"winmgmts:\")\nx = GetObject(f, \"A.B\")", "1=A.B"},
      {"x = CreateObject(\"A.\" & b)\nx = MyCreateObject(\"A.B\")\nx = (\"A.B\")", ""},
      {"x = \"CreateObject(\"\"A.B\"\")\" ' CreateObject(\"A.B\")", ""},
  };
  for (const auto& [text, uses] : cases) EXPECT_EQ(Uses(text), uses) << text;
}

TEST(SourceCode, WhatIsCertainlyNotCompiledAsksForNothing) {
  const auto branches = [](const std::string& condition) {
    return Uses("#If " + condition +
                " Then\nDeclare Sub A Lib \"a\"\n#Else\nDeclare Sub B Lib \"b\"\n#End If\n");
  };
  for (const char* holds : {"Win32", "Not Win16 ' comment", "win32 = True", "Win16 = 0", "VBA6", "1"})
    EXPECT_EQ(branches(holds), "2:a") << holds;
  for (const char* fails : {"Win16", "Not Win32", "VBA7", "Mac", "False", "Win32 = 0"})
    EXPECT_EQ(branches(fails), "4:b") << fails;
  for (const char* open : {"Testing", "Testing And Win16", "Win32 = Testing", ""})
    EXPECT_EQ(branches(open), "2:a 4:b") << open;
  EXPECT_EQ(
      Uses("#If Win16 Then\n#If Win32 Then\nDeclare Sub A Lib \"a\"\n#End If\nDeclare Sub B Lib \"b\"\n"
           "#ElseIf Testing Then\nDeclare Sub C Lib \"c\"\n#ElseIf Win32 Then\nDeclare Sub D Lib \"d\"\n"
           "#Else\nDeclare Sub E Lib \"e\"\n#End If\n#End If\nDeclare Sub F Lib \"f\"\n"),
      "7:c 9:d 14:f");
}

}  // namespace
}  // namespace bxvbwiz
