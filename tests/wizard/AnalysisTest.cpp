#include "analysis/Analysis.h"
#include "platform/Forwarding.h"
#include "RecordingUser.h"
#include "support/basFile.h"
#include "WizardFixture.h"

namespace bxvbwiz {
namespace {

class AnalysisTest : public WizardTest {
 protected:
  // Registers C:\<name> as the library {<name>}.
  void Register(const std::string& name) {
    machine_.Registry("[HKEY_CLASSES_ROOT\\TypeLib\\{" + name + "}\\1.0\\0\\win32]\r\n@=\"C:\\\\" + name +
                      "\"\r\n");
  }
  // What is told of the entry of files into the collection; the files here hold nothing.
  std::vector<std::string> ToldOfKeys() {
    std::vector<std::string> texts;
    for (const Finding& finding : Form().Shown()->Found().All()) {
      for (const FindingId id : {FindingId::FoundFileLeftOut, FindingId::FileMissing, FindingId::FileLeftOut,
                                 FindingId::FileNamedTwice})
        if (finding.id == id)
          texts.push_back(TextOf(machine_.platform().strings, {TextOf(id), finding.values}));
    }
    return texts;
  }
};

TEST_F(AnalysisTest, AMissingProductKeyEndsTheWizardAndIsShownOnce) {
  machine_.Registry("[-HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex Professional\\6.0\\VBWiz]\r\n");
  Start();
  for (int run = 0; run < 2; ++run) {
    LeaveWelcome();
    EXPECT_EQ(app_->ReturnCode(), -1) << "only a cancelled wizard reports 0";
    EXPECT_EQ(host_->Form(), nullptr);
    app_ = std::make_unique<Application>(*host_);
  }
  EXPECT_EQ(seen_.messages, std::vector<TextId>{TextId::RegistryKeyMissing});
}

TEST_F(AnalysisTest, TheFirstFileOfANameStaysAndTheOthersAreNamed) {
  for (const char* file : {"a.ocx", "b.ocx", "windows/system32/both.dll", "Src/Release/Final/both.dll",
                           "Src/Release/Final/late.dll"})
    machine_.Write(std::string("drive_c/") + file, "x");
  for (const auto& [name, both, late] :
       {std::tuple{"a", "WINSYSPATH", "WINPATH"}, {"b", "APPPATH", "APPPATH"}}) {
    const std::string control = std::string(name) + ".ocx";
    Register(control);
    machine_.Write("drive_c/" + std::string(name) + ".dep",
                   "[" + control + "]\r\nUses1=both.dll\r\nUses2=late.dll\r\n[both.dll]\r\nDest=$(" + both +
                       ")\r\n[late.dll]\r\nDest=$(" + late + ")\r\n");
  }
  machine_.Write("drive_c/Src/Main.frm",
                 "Object = {a.ocx}#1.0#0; a.ocx\r\nObject = {b.ocx}#1.0#0; b.ocx\r\n");
  Start();
  LeaveWelcome();
  EXPECT_EQ(ToldOfKeys(), (std::vector<std::string>{
                              "The file C:\\Src\\Release\\Final\\late.dll was found, but left out, because "
                              "C:\\windows\\late.dll, which was not found, has the same key.",
                              "The file late.dll was not found on this computer.",
                              "The file C:\\Src\\Release\\Final\\both.dll was left out, because "
                              "C:\\windows\\system32\\both.dll has the same key."}));
}

TEST_F(AnalysisTest, NamesOfOneFileThatDifferInCaseAreKeptAndNoted) {
  // "AB-C.dll" takes the key of "ABC.dll", but not that of "abc.dll".
  for (const char* file : {"a.ocx", "windows/system32/AB-C.dll", "windows/system32/ABC.dll"})
    machine_.Write(std::string("drive_c/") + file, "x");
  Register("a.ocx");
  machine_.Write("drive_c/a.dep",
                 "[a.ocx]\r\nUses1=AB-C.dll\r\nUses2=ABC.dll\r\nUses3=abc.dll\r\nUses4=Abc.dll\r\n");
  machine_.Write("drive_c/Src/Main.frm", "Object = {a.ocx}#1.0#0; a.ocx\r\n");
  Start();
  LeaveWelcome();
  std::string names;
  for (const CFile& file : Form().Shown()->Files()) names += GetPathFileName(file.FileName) + " ";
  EXPECT_EQ(names, "App.exe a.ocx AB-C.dll abc.dll Abc.dll ");
  EXPECT_EQ(ToldOfKeys(), std::vector<std::string>{
                              "The file C:\\windows\\system32\\Abc.dll is in the setup twice, because it "
                              "is also named abc.dll."});
}

// Makes a library a remote server, which nothing in the registry can do.
class RemoteServerBuilder : public FileGroupBuilder {
 public:
  void GetFileGroupInfo(const std::string&, const std::string&, const std::string&, const FileRecord*,
                        FileRecord& target) override {
    if (target.kind == RecordKind::TypeLibrary) static_cast<CReference&>(target).RemoteServer = true;
  }
};

TEST_F(AnalysisTest, ARemoteServerIsNamedAndTheReadingGoesOn) {
  Register("remote.tlb");
  machine_.Write("drive_c/Src/Release/Final/Remote.exe", "");
  machine_.Write(
      "drive_c/Src/Remote.vbp",
      "Type=Exe\nPath32=Release\\Final\nReference=*\\G{remote.tlb}#1.0#0#remote.tlb#R\nForm=Main.frm");
  Start();
  RemoteServerBuilder builder;
  Executables executables(core_->platform());
  CProject project({core_->platform(), Form(), core_->global(), builder, executables});
  project.SetFileName("C:\\Src\\Remote.vbp");
  EXPECT_EQ(seen_.messages, std::vector<TextId>{TextId::RemoteServerUsed});
  EXPECT_EQ(seen_.told.find("This project uses the remote server component C:\\remote.tlb."), 0U)
      << seen_.told;
  EXPECT_EQ(project.Forms().Count(), 1U);
}

TEST_F(AnalysisTest, ACancelIsShownAndTakenBetweenTwoMembers) {
  machine_.Write("drive_c/Src/App.vbp",
                 "Type=Exe\nForm=Main.frm\nForm=Gone.frm\nPath32=Release\\Final\nExeName32=App.exe\n");
  Start();
  Form().cmdHelp_Click();
  EXPECT_EQ(seen_.topic, "page_welcome.htm");
  Form().cmdBrowse_Click();
  EXPECT_EQ(Form().focus, &Form().cmdNext[kPanelWelcome]);
  int events = 0;
  seen_.whileEventsRun = [&](frmMain& form) {
    // The first time before the first member, the second time after it.
    if (++events != 2) return;
    form.Form_QueryUnload();
    EXPECT_EQ(form.lblStatus.text, "Cancelling...");
  };
  Form().cmdNext_Click(kPanelWelcome);
  EXPECT_EQ(events, 2);
  EXPECT_EQ(app_->ReturnCode(), 0);
  EXPECT_TRUE(seen_.messages.empty()) << "about the form that is missing";
}

class RegistryCalls : public CallHook {
 public:
  int count = 0;
  std::string unneeded;  // values that were listed without need

 private:
  void After(const SeamCall& call, SystemError) override {
    if (call.subject.substr(0, 5) != "HKEY_") return;
    ++count;
    if (call.name == "EnumValue" && EndsWith(call.subject, "CurrentVersion")) unneeded += call.detail;
  }
};

TEST_F(AnalysisTest, AsksTheRegistryFewTimesForAReferenceHoweverMuchItHolds) {
  constexpr int kReferences = 20;
  const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
  std::string values = "[" + key + "]\r\n";
  for (int index = 0; index < 2000; ++index) values += "\"v" + std::to_string(index) + "\"=\"x\"\r\n";
  for (int index = 0; index < 150; ++index)
    values += "[" + key + "\\k" + std::to_string(index) + "]\r\n\"v\"=\"x\"\r\n";
  machine_.Registry(values);
  std::string project = "Type=Exe\nExeName32=App.exe\n";
  for (int index = 0; index < kReferences; ++index) {
    const std::string name = std::to_string(index);
    Register(name + ".tlb");
    machine_.Write("drive_c/" + name + ".tlb", "x");
    machine_.Write("drive_c/" + name + ".dep",
                   "[" + name + ".tlb]\r\nUses1=C:\\Program Files\\Common Files\\" + name + ".dll\r\n");
    machine_.Write("drive_c/Program Files/Common Files/" + name + ".dll", "MZ");
    project += "Reference=*\\G{" + name + ".tlb}#1.0#0#" + name + ".tlb#R\n";
  }
  machine_.Write("drive_c/Src/Many.vbp", project);
  machine_.Write("drive_c/Src/App.exe", "MZ");
  RegistryCalls calls;
  ForwardingPlatform watched(machine_.platform(), calls);
  WizardCore core(watched.platform(), StartMode::Automation);
  RecordingUser user;
  core.SetUser(&user);
  Analysis analysis(core.platform(), user, core.global());
  EXPECT_EQ(analysis.LoadTrees("C:\\Src\\Many.vbp", false, {}), Analysis::Result::Done);
  EXPECT_EQ(analysis.Files().Count(), 2 * kReferences + 1U);
  EXPECT_LE(calls.count, 30 * kReferences);
  EXPECT_EQ(calls.unneeded, "");
}

}  // namespace
}  // namespace bxvbwiz
