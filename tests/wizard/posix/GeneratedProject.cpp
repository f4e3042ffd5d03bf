#include "wizard/posix/GeneratedProject.h"

#include <algorithm>
#include <random>

#include "machine/CodePages.h"
#include "support/basStr.h"
#include "text/Text.h"
#include "tools/PeWriter.h"

namespace bxvbwiz {
namespace {

// The same on every system, which the distributions of <random> are not.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}
  std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(engine_() % limit); }
  bool OneIn(std::size_t count) { return Below(count) == 0; }
  // One of the fields of "a|b|c".
  std::string Of(const std::string& fields) {
    std::size_t skipped = Below(static_cast<std::size_t>(std::count(fields.begin(), fields.end(), '|')) + 1);
    std::size_t start = 0;
    for (; skipped > 0; --skipped) start = fields.find('|', start) + 1;
    return fields.substr(start, fields.find('|', start) - start);
  }
  // One of the pairs of "a>b|c>d".
  std::pair<std::string, std::string> PairOf(const std::string& fields) {
    const std::string field = Of(fields);
    return {field.substr(0, field.find('>')), field.substr(field.find('>') + 1)};
  }
  template <class Element>
  void Shuffle(std::vector<Element>& all, std::size_t first = 0) {
    for (std::size_t end = all.size(); end > first + 1; --end)
      std::swap(all[end - 1], all[first + Below(end - first)]);
  }

 private:
  std::mt19937_64 engine_;
};

// A code page and words in it; the second byte of some of these letters is a backslash.
constexpr const char* kScripts[] = {"1252>Main|Kühl grün|frm O'Brien & Co|a.b",
                                    "874>ไทย|ฟอร์ม",
                                    "932>表示|ソフト能",
                                    "936>中文窗体|誠",
                                    "949>한글|주문 폼",
                                    "950>功許蓋|表單",
                                    "1253>Φόρμα|Έξοδος",
                                    "1256>نموذج|ملف",
                                    "65001>Größe|表示"};
constexpr const char* kFolder = "drive_c/Src/My Projects/";
constexpr const char* kSystem = "drive_c/windows/system32/";
constexpr const char* kSameKey = "Core-1.dll|Core1.dll|CORE1.dll|Imp1.DLL";  // but for the case
constexpr const char* kImports = "IMP1.DLL|Imp-1.dll|imp1.dll|MSVBVM60.DLL|USER32.dll|Core1.dll";

class Maker {
 public:
  explicit Maker(GeneratedProject& project) : p_(project), dice_(project.seed) {}

  void Make() {
    const std::string script = kScripts[dice_.Below(std::size(kScripts))];
    words_ = script.substr(script.find('>') + 1);
    p_.codePage = std::stoi(script);
    const auto yesOr = [&](std::size_t in) { return dice_.OneIn(in) ? Button::No : Button::Yes; };
    // The compiler cannot be run: Retry (2) goes on to 1091.
    p_.answers = {{TextId::UnexpectedError, Button::Retry},
                  {TextId::OtherVersionInstalled, yesOr(2)},
                  {TextId::DataAccessVersionUnsupported, yesOr(2)},
                  {TextId::ContinueWithoutRebuild, yesOr(4)}};
    const std::string title = Word("Prj");
    p_.path = "C:\\Src\\My Projects\\" + title + ".vbp";
    project_ = &Text(kFolder + title + ".vbp", 5);
    MakeOutput(title, MakeType());
    MakeNeeded();
    for (std::size_t count = dice_.Below(dice_.OneIn(20) ? 49 : 7); count > 0; --count) MakeControl();
    for (std::size_t count = dice_.Below(8); count > 0; --count) MakeReference();
    for (std::size_t count = dice_.OneIn(200) ? 780 : dice_.Below(6); count > 0; --count) MakeForm();
    if (p_.isRead && p_.refusal == TextId{} && dice_.OneIn(30)) {
      p_.refusal = TextId::ProjectFileMissing;  // a form that is missing, or one twice
      Line("Form=" + (dice_.OneIn(2) || p_.forms.empty() ? "Gone.frm" : p_.forms.begin()->first));
    }
    for (std::size_t count = dice_.Below(4); count > 0; --count)
      Line(dice_.Of("[MS Transaction Server]|AutoRefresh=1|[Extra]|name=Foo||=|Module=M; ..\\M.bas"));
    dice_.Shuffle(project_->blocks);
  }

 private:
  struct Control {
    std::string line;
    std::string inForm;
    std::string name;
  };

  // A name that no other has.
  std::string Word(const std::string& ending) {
    return dice_.Of(words_) + ending + std::to_string(++number_);
  }
  std::string Guid() { return "{" + std::to_string(10000000 + ++number_) + "-0000-0010-8000-00AA006D2EA4}"; }
  void Line(const std::string& line) { project_->blocks.push_back({line}); }

  GeneratedText& Text(const std::string& path, std::size_t kindsOfEnds) {
    const std::vector<std::string> ends[] = {{"\n"}, {"\r\n"}, {"\n", "\r\n"}, {"\r"}, {"\r", "\r\n"}};
    GeneratedText& text = p_.texts[path];
    text.lineEnds = ends[dice_.Below(kindsOfEnds)];
    return text;
  }

  // The extension of its output.
  std::string MakeType() {
    project_->head = dice_.Of("Type=Exe|Type=Exe|Type=Exe|Type=OleExe|Type=OleDll");
    const bool isServer = project_->head != "Type=Exe";
    const bool isDll = project_->head == "Type=OleDll";
    if (dice_.OneIn(10)) {
      p_.refusal = isServer         ? TextId::ActiveXDocumentProject
                   : dice_.OneIn(2) ? TextId::UserControlProject
                                    : TextId::NoVisualBasicProject;
      if (isServer) Line("UserDocument=D.dob");
      if (!isServer) project_->head = p_.refusal == TextId::UserControlProject ? "Type=Control" : "";
    } else if (isServer && dice_.OneIn(2)) {
      Line("Class=C; C.cls");
      return isDll ? ".DLL" : ".EXE";
    }
    return ".EXE";
  }

  void MakeOutput(const std::string& title, const std::string& extension) {
    const auto [path, folder] = dice_.PairOf(
        R"(>Src/My Projects/|>Src/My Projects/|..\bin>Src/bin/|a\..\Out put\>Src/My Projects/Out put/|)"
        R"(C:\Rel>Rel/|\\server\share\>|Q:\build>)");
    if (!path.empty() || dice_.OneIn(2)) Line("Path32=\"" + path + "\"");
    std::string name = title + extension;
    if (dice_.OneIn(2)) Line("ExeName32=\"" + (name = Word("Out") + ".exe") + "\"");
    p_.isRead = !folder.empty();
    if (p_.isRead) p_.binaries["drive_c/" + folder + name] = MakePe({"MSVBVM60.DLL"}, {});
    if (!p_.isRead && p_.refusal == TextId{} && p_.answers[TextId::ContinueWithoutRebuild] == Button::No)
      p_.refusal = TextId::ContinueWithoutRebuild;
    p_.named.push_back(name);
    if (!dice_.OneIn(5)) Line("Name=\"" + Word(dice_.Of("| : v*1. ")) + "\"");
    if (dice_.OneIn(2)) Line("MajorVer=" + std::to_string(dice_.Below(30)));
    if (dice_.OneIn(2)) Line("VersionCompanyName=\"Acme Inc." + Word("") + "\"");
  }

  // Files that components need: some there, some missing.
  void MakeNeeded() {
    needed_ = "KERNEL32.DLL|" + std::string(kImports);
    for (std::size_t count = dice_.Below(7); count > 0; --count) {
      const std::string name = dice_.OneIn(3) ? dice_.Of(kSameKey) : Word("Need") + ".dll";
      needed_ += "|" + name;
      if (!dice_.OneIn(4)) Executable(kSystem + name);
    }
    for (std::size_t count = dice_.Below(4); count > 0; --count) Executable(kSystem + dice_.Of(kImports));
  }
  void Executable(const std::string& path) {
    const auto import = [this] { return dice_.Of(kImports); };
    p_.binaries[path] = dice_.OneIn(6) ? "MZ" : MakePe({import(), import()}, {"DllRegisterServer"});
  }

  // A .dep file that describes a file and, perhaps, what that needs; itself, it may be.
  void Describe(const std::string& folder, const std::string& name) {
    GeneratedText& dep =
        Text(folder + name.substr(0, name.rfind('.')) + ".dep", 3);  // no lone carriage return
    std::string file = name;
    for (std::size_t sections = dice_.Below(5); sections > 0; --sections, file = dice_.Of(needed_)) {
      // Sections are found without regard to case: the first of two would count.
      const auto isOfFile = [&](const auto& block) {
        return StartsWith(UpperCase(block[0]), "[" + UpperCase(file));
      };
      if (std::any_of(dep.blocks.begin(), dep.blocks.end(), isOfFile)) continue;
      std::vector<std::string> section = {"[" + file + dice_.Of("| <0009>| <0411>| <zzzz>") + "]"};
      section.push_back("Dest=" + dice_.Of(R"($(WinSysPath)|$(AppPath)|$(CommonFiles)\Acme|$(Font)||)"
                                           R"($(WinSysPathSysFile)|C:\Program Files (x86)\Acme)"));
      section.push_back("Register=" +
                        dice_.Of("$(DLLSelfRegister)|$(DLLSelfRegisterEx)|$(TLBRegister)||x.reg"));
      for (std::size_t number = 1, last = dice_.Below(5); number <= last; number += dice_.OneIn(8) ? 2 : 1)
        section.push_back("Uses" + std::to_string(number) + "=" + dice_.Of(needed_ + "||" + file));
      dep.blocks.push_back(section);
    }
  }

  void Key(const std::string& path, const std::string& value) {
    p_.texts["registry.reg"].blocks.push_back(
        {"[HKEY_CLASSES_ROOT\\TypeLib\\" + path + "]", "@=\"" + *ReplaceAll(value, "\\", "\\\\") + "\""});
  }
  // Registers a library somehow and gives the version that the project asks for.
  std::string Register(const std::string& guid, const std::string& name) {
    const auto [registered, asked] = dice_.PairOf(
        "1.0>1.0|1.0>1.0|1.0>1.0|1.0>1.0|e.0>e.0|2d.0>45.0|1a.0>1a.0|9.0>1.0|1.0>3.0|x.y>1.0|1.0>|>1.0");
    const std::string place = dice_.Of(
        R"(C:\windows\system32\|C:\windows\system32\|C:\Program Files\Acme Tools\|\\server\share\|C:\PROGRA~1\|)"
        R"(\\?\C:\Lib\|C:\|)");
    const std::string version = guid + "\\" + registered;
    if (!registered.empty() && dice_.OneIn(8))
      Key(version, "A library");
    else if (!registered.empty())
      Key(version + "\\0\\win32", place + name + dice_.Of("||||||\\3"));
    if (dice_.OneIn(9)) Key(guid + "\\0.9\\0\\win32", "C:\\windows\\old\\" + name);
    const bool isHere = StartsWith(place, "C:\\");
    const std::string folder = isHere ? "drive_c/" + *ReplaceAll(place.substr(3), "\\", "/") : kSystem;
    if (!dice_.OneIn(6)) Executable(folder + name);
    if (dice_.OneIn(2)) Describe(dice_.OneIn(2) ? folder : kSystem, name);
    return asked;
  }

  void MakeControl() {
    Control control;
    if (dice_.OneIn(15)) {
      control.name = Word("Lib") + ".vbp";
      control.line = control.inForm = "*\\A..\\Lib dir\\" + control.name;
    } else {
      const std::string guid = Guid();
      control.name = dice_.OneIn(20) ? dice_.Of(kSameKey) : Word("Ctl") + dice_.Of(".ocx|.ocx|.dll");
      const std::string version = Register(guid, control.name);
      control.line = guid + "#" + version + "#0; " + control.name;
      const std::string inForm = dice_.OneIn(20) ? "1.1" : version;
      control.inForm = "\"" + guid + "#" + inForm + "#0\"; \"" + control.name + "\"";
      if (dice_.OneIn(10))
        Line("Reference=*\\G" + guid + "#" + version + "#0#..\\" + control.name + "#A control");
    }
    controls_.push_back(control);
    if (dice_.OneIn(8)) return;  // forms may use what the project file lacks
    Line("Object=" + control.line);
    p_.named.push_back(control.name);
    ++p_.controls;
  }

  void MakeReference() {
    std::string name = Word("Ref") + dice_.Of(".dll|.tlb|.olb|.exe|.DLL|.vbp");
    std::string guid = Guid();
    if (EndsWith(name, ".vbp")) {
      Line("Reference=*\\A..\\" + name);
      return p_.named.push_back(name);
    }
    // Neither a system file nor a data-access library is installed; each stands once in a project.
    if (++references_ == 3) name = "User32.dll";
    if (references_ == 4)
      guid = dice_.Of("{00000300-0000-0010-8000-00AA006D2EA4}|{00025E04-0000-0000-C000-000000000046}");
    if (references_ < 3 || references_ > 4) p_.named.push_back(name);
    const std::string version = Register(guid, name);
    const std::string folder = dice_.Of(
        R"(..\..\..\WINDOWS\system32\|C:\Program Files\Common Files\||\\?\C:\Lib\|\\srv\c$\|C:\PROGRA~1\COMMON~1\)");
    Line("Reference=*\\G" + guid + "#" + version + "#0#" + folder + name + dice_.Of("|||\\3") + "#" +
         Word("Library"));
  }

  void MakeForm() {
    const auto [place, folder] = dice_.PairOf(
        R"(>Src/My Projects/|..\Shared forms\>Src/Shared forms/|sub\>Src/My Projects/sub/|C:\Other\>Other/)");
    const std::string name = Word("F") + dice_.Of(".frm|.frm|.dsr");
    GeneratedText& form = Text("drive_c/" + folder + name, 5);
    form.head = "VERSION 5.00";
    for (const Control& control : controls_) {
      if (!dice_.OneIn(3)) continue;
      form.blocks.push_back({"Object = " + control.inForm});
      p_.named.push_back(control.name);
      ++p_.forms[place + name];
    }
    for (std::size_t lines = dice_.OneIn(300) ? 10000 : dice_.Below(20); lines > 0; --lines)
      form.blocks.push_back({dice_.Of("  Object = Nothing ' |Object=|Begin VB.Form ") + dice_.Of(words_)});
    Line("Form=" + place + name);
    p_.forms[place + name];
  }

  GeneratedProject& p_;
  Dice dice_;
  std::string words_;
  std::size_t number_ = 0;
  std::size_t references_ = 0;
  GeneratedText* project_ = nullptr;  // of a map, whose elements stay where they are
  std::string needed_;
  std::vector<Control> controls_;
};

}  // namespace

GeneratedProject::GeneratedProject(std::uint64_t projectSeed) : seed(projectSeed) {
  Maker(*this).Make();
}

void GeneratedProject::LayOn(TestMachine& machine, Lines lines) const {
  Dice dice(seed);
  const auto encoding = MakeCodePage(codePage);
  machine.InstallProduct();
  machine.Write("machine.ini", "[Machine]\nCodePage=" + std::to_string(codePage) +
                                   "\n[Folders]\nWindows=C:\\windows\nSystem=C:\\windows\\system32\n");
  for (const auto& [file, bytes] : binaries) machine.Write(file, bytes);
  for (const auto& [file, text] : texts) {
    auto blocks = text.blocks;
    if (lines == Lines::OtherOrder) {
      dice.Shuffle(blocks);
      for (auto& block : blocks) dice.Shuffle(block, 1);
    }
    blocks.insert(blocks.begin(), {text.head});
    std::string all;
    for (const auto& block : blocks)
      for (const std::string& line : block)
        all += line + (lines == Lines::OtherEnds ? "\r\n" : text.lineEnds[dice.Below(text.lineEnds.size())]);
    all = encoding->Encode(all);
    if (file == "registry.reg")
      machine.Registry(all);
    else
      machine.Write(file, all);
  }
}

}  // namespace bxvbwiz
