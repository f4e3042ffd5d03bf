#include "project/TypeLibrary.h"
#include "ProjectFixture.h"

namespace bxvbwiz {
namespace {

using ControlTest = ProjectFixture;

TEST_F(ControlTest, LinesAreCutAsProjectAndFormFilesWriteThem) {
  const std::vector<std::tuple<decltype(&ReadControlLine), const char*, const char*>> cases = {
      {ReadControlLine, "{A}#2.0#0; a;b.ocx", "{A}|2.0|a;b.ocx|"},
      {ReadControlLine, "\"{A}#2.0#0\"; \"X.OCX\"", "{A}|2.0|X.OCX|"},
      {ReadControlLine, "\"*\\A..\\Lib\\Lib.vbp\"", "*\\A..\\Lib\\Lib.vbp||Lib.vbp|"},
      {ReadControlLine, "{A}#2.0#0; \"", "{A}|2.0|{A}#2.0#0; \"|"},
      {ReadReferenceLine, "*\\G{A}#2.0#0#..\\..\\x y\\stdole2.tlb#OLE", "{A}|2.0|stdole2.tlb|OLE"},
      {ReadReferenceLine, "*\\G{A}#5.3#0#C:\\x\\vbscript.dll\\3#VBScript", "{A}|5.3|vbscript.dll|VBScript"},
      {ReadReferenceLine, "*\\A..\\Lib\\Lib.vbp", "..\\Lib\\Lib.vbp||Lib.vbp|"},
      {ReadReferenceLine, "*\\", "||*\\|"},
  };
  for (const auto& [read, text, parts] : cases) {
    const LibraryLine line = read(text);
    EXPECT_EQ(line.identifier + "|" + line.version + "|" + line.fileName + "|" + line.description, parts);
  }
}

TEST_F(ControlTest, TheRegisteredVersionDecidesTheFile) {
  Register("{A}", "2.0", "C:\\Reg\\a2.ocx");
  Register("{A}", "a.0", "C:\\Reg\\a10.ocx");
  Register("{B}", "1.2", "C:\\Reg\\b12.ocx");
  Register("{B}", "1.A", "C:\\Reg\\b110.ocx");
  Register("{C}", "1.0", "");
  Register("{D}", "1.0", "C:\\Reg\\d.dll\\2");
  Register("{E}", "junk", "C:\\Reg\\e2.ocx");
  Register("{F}", "2d.0", "C:\\Reg\\f.ocx");
  Put("C:\\windows\\system32\\Sys.ocx", "");
  const Button yes = Button::Yes;
  const Button no = Button::No;
  const std::vector<std::tuple<const char*, Button, const char*, bool, const char*>> cases = {
      {"{A}#1.1#0; x.ocx", yes, "C:\\Reg\\a10.ocx", true, "1095 "},
      {"{A}#1.1#0; x.ocx", no, "x.ocx", false, "1095 "},
      {"{A}#A.0#0; x.ocx", no, "C:\\Reg\\a10.ocx", true, ""},
      {"{A}#10.0#0; x.ocx", no, "C:\\Reg\\a10.ocx", true, ""},
      {"{A}#9.f#0; x.ocx", yes, "C:\\Reg\\a10.ocx", true, "1095 "},
      // 1.10 is 1.1, and less than 1.2.
      {"{B}#1.0#0; x.ocx", yes, "C:\\Reg\\b12.ocx", true, "1095 "},
      // Nothing higher, nothing to ask: the version of the line has no key.
      {"{A}#11.0#0; x.ocx", yes, "C:\\windows\\system32\\x.ocx", false, "1046 "},
      {"{A}##0; Sys.ocx", yes, "C:\\windows\\system32\\Sys.ocx", true, ""},
      {"{C}#1.0#0; sys.OCX", yes, "C:\\windows\\system32\\sys.OCX", true, ""},
      {"{D}#1.0#0; x.ocx", yes, "C:\\Reg\\d.dll", true, ""},
      {"{E}#1.1#0; x.ocx", yes, "x.ocx", false, ""},
      {"{F}#45.0#0; x.ocx", no, "C:\\Reg\\f.ocx", true, ""},
      {"*\\A..\\Lib\\Lib.vbp", yes, "Lib.vbp", false, "1046 "},
      {"#1.0#0; x.ocx", yes, "x.ocx", false, "1046 "},
  };
  for (const auto& [line, answer, name, include, messages] : cases) {
    CObject control(context());
    user.otherwise = answer;
    user.numbers.clear();
    ForgetFindings();
    builder.calls.clear();
    control.SetRawName(line);
    EXPECT_EQ(control.Name, name) << line;
    EXPECT_EQ(control.Include, include) << line;
    EXPECT_EQ(user.numbers, messages) << line;
    // Only what is left out is noted, and only what was resolved gets facts.
    EXPECT_EQ(findings().All().size(), include ? 0U : 1U) << line;
    EXPECT_EQ(builder.calls.size(), include ? 1U : 0U) << line;
  }
}

TEST_F(ControlTest, OnlyAControlInTheRootIsNotInstalledWhereItLies) {
  Register("r", "1.0", "\\r.ocx");
  Register("c", "1.0", "C:\\Reg\\c.ocx");
  for (const char* name : {"c", "r"}) CObject(context()).SetRawName(name + std::string("#1.0#0; x"));
  EXPECT_EQ(Join(builder.calls), "C:\\Reg\\|C:\\Reg\\c.ocx|, |\\r.ocx|") << "without a .dep file";
}

TEST_F(ControlTest, AControlOfSeveralFilesIsResolvedOnce) {
  CObjects all(context(), nullptr);
  CObjects project(context(), &all);
  CObjects form(context(), &all);
  const auto first = project.Add("{X}#1.0#0; x.ocx");
  EXPECT_EQ(form.Add("\"{X}#1.0#0\"; \"x.ocx\""), first);
  EXPECT_EQ(user.messages.size(), 1U);
  EXPECT_THROW(form.Add("{X}#1.0#0; x.ocx"), RuntimeError);
}

TEST_F(ControlTest, AReferenceToASystemFileOrToDataAccessIsNotIncluded) {
  for (const auto& [guid, path] : {std::pair{"{A}", "C:\\Ado\\MSADO15.dll"},
                                   {"{S}", "C:\\s\\user32.dll"},
                                   {"{X}", "C:\\x\\x.tlb"},
                                   {"{Y}", ""}})
    Register(guid, "1.0", path);
  Put("C:\\windows\\system32\\here.tlb", "");
  const std::pair<const char*, const char*> cases[] = {
      {"{A}#1.0#0#x.dll#", "C:\\Ado\\MSADO15.dll|no|ADO|"},
      {"{X}#1.0#0#x.tlb#", "C:\\x\\x.tlb|yes||"},
      {"{S}#1.0#0#..\\user32.DLL#", "C:\\s\\user32.dll|no||"},
      {"{None}#1.0#0#x.tlb#The X", "x.tlb|no||1046 "},
      {"{Y}#1.0#0#here.tlb#X", "C:\\windows\\system32\\here.tlb|yes||"},
      {"{Y}#1.0#0#x.tlb#The X", "C:\\windows\\system32\\x.tlb|no||1046 "}};
  for (const auto& [line, outcome] : cases) {
    CReference reference(context());
    user.numbers.clear();
    reference.SetRawName(std::string("*\\G") + line);
    EXPECT_EQ(reference.Name + (reference.Include ? "|yes|" : "|no|") + (reference.ADO ? "ADO|" : "|") +
                  user.numbers,
              outcome);
  }
  EXPECT_EQ(findings().Count(Severity::Error), 2U) << "what is missing";
  EXPECT_EQ(findings().Count(Severity::Note), 2U) << "what needs no file";
}

}  // namespace
}  // namespace bxvbwiz
