#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/Forwarding.h"
#include "sysinfo/Values.h"
#include "TestMachine.h"
#include "wizard/Application.h"

namespace bxvbwiz {
namespace {

// What the view leaves behind; it outlives the form.
struct Seen {
  std::vector<unsigned> messages;
  std::string lastText;
  std::map<unsigned, Button> answers;  // by string number; Ok without one
  std::function<void(frmMain&)> whileEventsRun;
  std::vector<std::string> incomplete;
  bool unloaded = false;
};

class ScriptedView : public FormView {
 public:
  ScriptedView(frmMain& form, Seen& seen) : form_(form), seen_(seen) {}
  Button ShowMessage(const Message& message, const std::string&) override {
    seen_.messages.push_back(message.number);
    seen_.lastText = message.text;
    const auto answer = seen_.answers.find(message.number);
    if (answer == seen_.answers.end()) return message.number == 2 ? Button::Cancel : Button::Ok;
    const Button button = answer->second;
    if (message.number == 2) seen_.answers.erase(answer);  // Retry once, then Cancel
    return button;
  }
  void Refresh() override {}
  void ProcessEvents() override {
    if (seen_.whileEventsRun) seen_.whileEventsRun(form_);
  }
  void SetPointer(Pointer) override {}
  std::string BrowseForFile(const std::string&, const std::string& pattern) override {
    return "C:\\Src\\App" + pattern.substr(1);
  }
  void OpenHelp(const std::string&) override {}
  int TextWidth(const std::string& text) const override { return static_cast<int>(text.size()); }
  int ExeLabelWidth() const override { return 20; }
  void Unload(const frmMain& form) override {
    seen_.unloaded = true;
    seen_.incomplete = form.Incomplete();
  }

 private:
  frmMain& form_;
  Seen& seen_;
};

class WizardTest : public testing::Test {
 protected:
  WizardTest() {
    machine_.InstallProduct();
    machine_.Write("drive_c/Src/App.vbp",
                   "Type=Exe\r\nForm=Main.frm\r\nName=\"My: App. "
                   "\"\r\nExeName32=\"App.exe\"\r\nMajorVer=2\r\nPath32=\"Release\\Final\"\r\n"
                   "RevisionVer=7\r\nVersionCompanyName=\"Acme Inc.\"\r\n");
    machine_.Write("drive_c/Src/Main.frm", "VERSION 5.00\r\n");
    machine_.Write("drive_c/Src/Release/Final/App.exe", "MZ");
  }

  void Start(StartMode mode = StartMode::Automation, const std::string& commandLine = "") {
    StartOn(machine_.platform(), mode, commandLine);
  }
  void StartOn(Platform& platform, StartMode mode = StartMode::Automation,
               const std::string& commandLine = "") {
    component_ = std::make_unique<Component>(platform, mode, commandLine, [this](frmMain& form) {
      return std::make_unique<ScriptedView>(form, seen_);
    });
    component_->SubMain();
    if (mode == StartMode::Automation) app_ = std::make_unique<Application>(*component_);
  }
  void TearDown() override {
    app_.reset();
    component_.reset();
  }
  frmMain& Form() { return *component_->Form(); }
  void LeaveWelcome(const std::string& project = "C:\\Src\\App.vbp") {
    Form().txtVBPname.text = project;
    Form().txtVBPname_Change();
    Form().cmdNext_Click(kPanelWelcome);
  }

  TestMachine machine_;
  Seen seen_;
  std::unique_ptr<Component> component_;
  std::unique_ptr<Application> app_;
};

TEST_F(WizardTest, PagesFollowEachOtherAndBack) {
  Start();
  EXPECT_FALSE(Form().cmdNext[kPanelWelcome].enabled) << "no project yet";
  EXPECT_EQ(Form().defaultButton, &Form().cmdNext[0]);
  LeaveWelcome();
  EXPECT_TRUE(Form().fraPanel2.visible);
  EXPECT_FALSE(Form().fraPanel1.visible);
  EXPECT_EQ(Form().caption, "Visual Basic Project Wizard - Project Information");
  EXPECT_EQ(Form().focus, &Form().txtApplicationName);
  EXPECT_EQ(Form().txtApplicationName.text, "My  App");
  EXPECT_EQ(Form().txtCompanyName.text, "Acme Inc.");
  EXPECT_EQ(Form().txtApplicationVersion.text, "2.7");
  EXPECT_EQ(Form().lblExeName.text, "C:\\...\\App.exe");
  Form().cmdBack_Click(kPanelInformation);
  EXPECT_TRUE(Form().fraPanel1.visible);
  LeaveWelcome();
  Form().cmdNext_Click(kPanelInformation);
  EXPECT_TRUE(Form().fraPanel3.visible);
  Form().ShowPanel(kPanelDataAccess);
  EXPECT_FALSE(Form().pbrProgress.visible);
  Form().cmdNext_Click(kPanelDataAccess);
  EXPECT_TRUE(Form().fraPanel4.visible) << "no step leads on from the data-access page";
  Form().cmdBack_Click(kPanelDataAccess);
  EXPECT_FALSE(Form().fraPanel4.visible);
  Form().cmdNext_Click(kPanelSummary);
  EXPECT_TRUE(Form().fraReport.visible);
  EXPECT_EQ(Form().defaultButton, &Form().cmdOK);
  EXPECT_EQ(app_->ProjectFile(), "C:\\Setups\\My  App\\My  App.bxp");
  Form().cmdOK_Click();
  EXPECT_EQ(app_->ReturnCode(), -1);
  EXPECT_FALSE(app_->StillExecuting());
  EXPECT_EQ(component_->Form(), nullptr);
  EXPECT_TRUE(seen_.messages.empty());
}

TEST_F(WizardTest, TheInformationPageIsSkippedBothWays) {
  Start();
  app_->ShowPage2 = false;
  app_->AppName = "Host's name";
  LeaveWelcome();
  EXPECT_TRUE(Form().fraPanel3.visible);
  Form().cmdBack_Click(kPanelSummary);
  EXPECT_TRUE(Form().fraPanel1.visible);
  LeaveWelcome();
  Form().cmdNext_Click(kPanelSummary);
  EXPECT_EQ(app_->ProjectFile(), "C:\\Setups\\Host s name\\Host s name.bxp");
}

TEST_F(WizardTest, NamesThatCannotBeFoldersAreRefused) {
  Start();
  LeaveWelcome();
  for (const char* name : {"a.b", "a\\b", "a'b", "CON", "con", "Lpt1", "blank ", "tab\tin", "nul"}) {
    seen_.messages.clear();
    Form().txtApplicationName.text = name;
    Form().cmdNext_Click(kPanelInformation);
    EXPECT_EQ(seen_.messages, std::vector<unsigned>{1050}) << name;
    EXPECT_TRUE(Form().fraPanel2.visible) << name;
  }
  seen_.messages.clear();
  Form().txtApplicationName.text = "\u65E5\u672C";  // not in code page 1252
  Form().cmdNext_Click(kPanelInformation);
  EXPECT_EQ(seen_.messages, std::vector<unsigned>{1050});
  seen_.messages.clear();
  Form().txtApplicationName.text = "Console";
  Form().txtCompanyName.text = "Other Inc.";
  Form().cmdNext_Click(kPanelInformation);
  EXPECT_EQ(seen_.messages, std::vector<unsigned>{1051}) << "only the proposal may keep its full stop";
  Form().txtCompanyName.text = "Acme Inc.";
  Form().cmdNext_Click(kPanelInformation);
  EXPECT_TRUE(Form().fraPanel3.visible);
}

TEST_F(WizardTest, AnIllegalKeyIsRefusedAndAnEmptyTextDisablesNext) {
  Start();
  LeaveWelcome();
  char32_t key = U'.';
  Form().txtApplicationName_KeyPress(key);
  EXPECT_EQ(key, 0U);
  key = U'|';
  Form().txtCompanyName_KeyPress(key);
  key = U'\u00E9';
  Form().txtCompanyName_KeyPress(key);
  EXPECT_EQ(key, U'\u00E9');
  EXPECT_EQ(seen_.messages, (std::vector<unsigned>{1050, 1051}));
  Form().txtApplicationVersion.text.clear();
  Form().txtApplicationVersion_Change();
  EXPECT_FALSE(Form().cmdNext[kPanelInformation].enabled);
  Form().txtApplicationVersion.text = "3";
  Form().txtApplicationVersion_Change();
  EXPECT_TRUE(Form().cmdNext[kPanelInformation].enabled);
}

TEST_F(WizardTest, EveryWayToCancelLeavesZeroAndNothingBehind) {
  const std::vector<std::function<void(frmMain&)>> ways = {
      [](frmMain& form) { form.cmdCancel_Click(); }, [](frmMain& form) { form.Form_KeyDown(kKeyEscape); },
      [](frmMain& form) { form.Form_QueryUnload(); }};
  for (const auto& cancel : ways) {
    for (const bool whileScanning : {false, true}) {
      seen_ = Seen();
      Start();
      if (whileScanning) {
        seen_.whileEventsRun = [&](frmMain& form) {
          cancel(form);
          form.cmdNext_Click(kPanelWelcome);  // ignored: the handler of the first one still runs
          EXPECT_FALSE(form.Ended()) << "the step goes on";
        };
        LeaveWelcome();
      } else {
        LeaveWelcome();
        Form().Form_KeyDown(112);  // F1
        ASSERT_NE(component_->Form(), nullptr);
        cancel(Form());
      }
      EXPECT_TRUE(seen_.unloaded);
      EXPECT_EQ(component_->Form(), nullptr);
      EXPECT_EQ(app_->ReturnCode(), 0);
      EXPECT_FALSE(app_->StillExecuting());
      app_.reset();
    }
  }
  EXPECT_FALSE(machine_.Exists("drive_c/Setups/My  App"));
}

TEST_F(WizardTest, AMissingDataFolderIsReportedRetriedAndCancelled) {
  machine_.Registry(
      "[HKEY_CURRENT_USER\\SOFTWARE\\Borvex\\Borvex "
      "Professional\\6.0\\Main]\r\n\"DataFile\"=\"C:\\\\No\"\r\n");
  machine_.Registry(
      "[HKEY_CURRENT_USER\\Software\\VB and VBA Program "
      "Settings\\Bx6vbwiz\\Logging]\r\n\"LogLevel\"=\"1\"\r\n");
  Start();
  seen_.answers[2] = Button::Retry;
  LeaveWelcome();
  Form().cmdNext_Click(kPanelInformation);
  Form().cmdNext_Click(kPanelSummary);
  EXPECT_EQ(seen_.messages, (std::vector<unsigned>{2, 2}));
  EXPECT_EQ(app_->ReturnCode(), 0);
  EXPECT_TRUE(app_->ProjectFile().empty());
  const std::string log = machine_.Read("drive_c/windows/Bx6vbwiz.LOG");
  EXPECT_NE(log.find("Unexpected Error 76"), std::string::npos) << log;
  EXPECT_NE(log.find("cmdNext_Click"), std::string::npos) << log;
}

TEST_F(WizardTest, AMissingProductKeyEndsTheWizardAndIsShownOnce) {
  machine_.Registry("[-HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex Professional\\6.0\\VBWiz]\r\n");
  Start();
  for (int run = 0; run < 2; ++run) {
    LeaveWelcome();
    EXPECT_EQ(app_->ReturnCode(), -1) << "only a cancelled wizard reports 0";
    EXPECT_EQ(component_->Form(), nullptr);
    app_ = std::make_unique<Application>(*component_);
  }
  EXPECT_EQ(seen_.messages, std::vector<unsigned>{1047});
}

TEST_F(WizardTest, ProjectsThatCannotBePackagedKeepTheWelcomePage) {
  const std::pair<const char*, unsigned> kinds[] = {{"Type=Control\r\n", 1026},
                                                    {"Name=\"x\"\r\n", 1015},
                                                    {"Type=OleDll\r\nUserDocument=x\r\n", 1025},
                                                    {"Type=OleExe\r\nClass=a\r\nUserDocument=x\r\n", 1025}};
  int n = 0;
  for (const auto& kind : kinds)
    machine_.Write("drive_c/Src/Kind" + std::to_string(n++) + ".vbp", kind.first);
  Start();
  for (n = 0; n < 4; ++n) {
    seen_.messages.clear();
    LeaveWelcome("C:\\Src\\Kind" + std::to_string(n) + ".vbp");
    EXPECT_EQ(seen_.messages, std::vector<unsigned>{kinds[n].second}) << kinds[n].first;
    EXPECT_TRUE(Form().fraPanel1.visible);
  }
  seen_.messages.clear();
  LeaveWelcome("C:\\Src\\Missing.vbp");
  EXPECT_EQ(seen_.messages, std::vector<unsigned>{1045});
  LeaveWelcome();
  EXPECT_TRUE(Form().fraPanel2.visible) << "another project may be chosen";
}

TEST_F(WizardTest, AStandAloneStartReadsItsOptionsAndLeavesItsResults) {
  for (const bool finished : {true, false}) {
    Start(StartMode::StandAlone, "/IABCD /S0 /PC:\\Src\\App.vbp /A" + std::string(finished ? "One" : "Two"));
    EXPECT_FALSE(component_->gApplication->ShowPage2);
    Form().Form_Activate();
    EXPECT_TRUE(Form().cmdNext[kPanelWelcome].enabled) << "the project is proposed";
    Form().cmdNext_Click(kPanelWelcome);
    if (finished) {
      Form().cmdNext_Click(kPanelSummary);
      Form().cmdOK_Click();
    } else {
      Form().cmdCancel_Click();
    }
    EXPECT_EQ(component_->gApplication, nullptr);
    const auto key = Key::Root(machine_.platform().registry, RegConstants::HKeyCurrentUser)
                         ->OpenSubKeyForReading("SOFTWARE\\Borvex\\Borvex Professional\\6.0\\ABCD");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->Values().Item("ReturnCode")->Text(), finished ? "1" : "0");
    EXPECT_EQ(key->Values().Item("Project")->Text(), finished ? "C:\\Setups\\One\\One.bxp" : "");
  }
}

TEST_F(WizardTest, ABadCommandLineIsReportedAndStopsNothing) {
  seen_.answers[2] = Button::Retry;
  Start(StartMode::StandAlone, "/IABCD /iEFGH");
  EXPECT_EQ(seen_.messages, std::vector<unsigned>{2});
  ASSERT_NE(component_->Form(), nullptr);
  EXPECT_EQ(component_->gApplication->ID, "0000");
  component_.reset();
  seen_.answers.clear();
  Start(StartMode::StandAlone, "/IABCD /iEFGH");  // answered with Cancel
  EXPECT_EQ(component_->Form(), nullptr);
  EXPECT_EQ(component_->gApplication, nullptr);
}

TEST_F(WizardTest, ABuildWithoutALogIsReportedAndMayBeGoneOnFrom) {
  Start();
  seen_.answers = {{2, Button::Retry}, {1091, Button::Yes}};
  Form().chkRebuild.checked = true;
  LeaveWelcome();
  EXPECT_EQ(seen_.messages, (std::vector<unsigned>{2, 1091}));
  EXPECT_TRUE(Form().fraPanel2.visible);
  EXPECT_EQ(Form().Incomplete().size(), 1U) << "the lists were not read";
}

// Fails every write to one file.
class ReadOnlyProfile : public ForwardingProfileStrings {
 public:
  using ForwardingProfileStrings::ForwardingProfileStrings;
  bool WriteString(ProfileText section, ProfileText key, ProfileText value,
                   const std::string& file) override {
    return !EndsWith(file, "value.shl") && ForwardingProfileStrings::WriteString(section, key, value, file);
  }
};

TEST_F(WizardTest, AFailedWriteIsNamedOnceAndTheRunGoesOn) {
  Platform& real = machine_.platform();
  ReadOnlyProfile profiles(real.profiles);
  Platform platform{real.registry, real.facts,    real.files, profiles,      real.processes,
                    real.guids,    real.settings, real.clock, real.codePage, real.strings};
  StartOn(platform);
  app_->ShowPage2 = false;
  LeaveWelcome();
  Form().cmdNext_Click(kPanelSummary);
  ASSERT_TRUE(Form().fraReport.visible);
  ASSERT_EQ(Form().Incomplete().size(), 1U) << testing::PrintToString(Form().Incomplete());
  EXPECT_NE(Form().Incomplete()[0].find("value.shl"), std::string::npos);
  app_.reset();
  component_.reset();
}

TEST_F(WizardTest, ANameInAnotherFolderIsLeftOutAloud) {
  machine_.Registry(
      "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\1.0\\0\\win32]\r\n@=\"C:\\\\One\\\\same.ocx\"\r\n"
      "[HKEY_CLASSES_ROOT\\TypeLib\\{B}\\1.0\\0\\win32]\r\n@=\"C:\\\\Two\\\\same.ocx\"\r\n");
  machine_.Write("drive_c/One/same.ocx", "1");
  machine_.Write("drive_c/Two/same.ocx", "2");
  machine_.Write("drive_c/Src/Main.frm",
                 "Object = \"{A}#1.0#0\"; \"same.ocx\"\r\nObject = \"{B}#1.0#0\"; \"same.ocx\"\r\n");
  Start();
  LeaveWelcome();
  EXPECT_EQ(Form().Files().Count(), 2U);
  ASSERT_EQ(Form().Incomplete().size(), 1U);
  EXPECT_NE(Form().Incomplete()[0].find("C:\\Two\\same.ocx was left out"), std::string::npos)
      << Form().Incomplete()[0];
  ASSERT_EQ(Form().tvwFiles.Nodes().size(), 1U);
  EXPECT_EQ(Form().tvwFiles.Nodes()[0]->text, "My: App.  File Groups");
}

TEST_F(WizardTest, ANeededFileOfOneNameIsTakenWhereItIsFoundAndTheOtherIsNamed) {
  machine_.Registry(
      "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\1.0\\0\\win32]\r\n@=\"C:\\\\One\\\\a.ocx\"\r\n"
      "[HKEY_CLASSES_ROOT\\TypeLib\\{B}\\1.0\\0\\win32]\r\n@=\"C:\\\\Two\\\\b.ocx\"\r\n");
  for (const char* file : {"One/a.ocx", "Two/b.ocx", "windows/system32/both.dll",
                           "Src/Release/Final/both.dll", "Src/Release/Final/late.dll"}) {
    machine_.Write(std::string("drive_c/") + file, "x");
  }
  machine_.Write(
      "drive_c/One/a.dep",
      "[a.ocx]\r\nUses1=both.dll\r\nUses2=late.dll\r\n[both.dll]\r\nDest=$(WINSYSPATH)\r\n[late.dll]\r\n"
      "Dest=$(WINPATH)\r\n");
  machine_.Write(
      "drive_c/Two/b.dep",
      "[b.ocx]\r\nUses1=both.dll\r\nUses2=late.dll\r\n[both.dll]\r\nDest=$(APPPATH)\r\n[late.dll]\r\n"
      "Dest=$(APPPATH)\r\n");
  machine_.Write("drive_c/Src/Main.frm",
                 "Object = \"{A}#1.0#0\"; \"a.ocx\"\r\nObject = \"{B}#1.0#0\"; \"b.ocx\"\r\n");
  Start();
  LeaveWelcome();
  EXPECT_EQ(Form().Incomplete(),
            std::vector<std::string>{"The file C:\\Src\\Release\\Final\\both.dll was left out, because "
                                     "C:\\windows\\system32\\both.dll has the same key."});
  EXPECT_EQ(Form().Files().FindItem("Klatedll")->FileLinkPath, "C:\\Src\\Release\\Final\\");
}

// Knows a library as a remote server; nothing in the registry tells.
class RemoteServerBuilder : public FileGroupBuilder {
 public:
  void GetFileGroupInfo(const std::string&, const std::string&, const std::string&, const FileRecord*,
                        FileRecord& target) override {
    if (target.kind == RecordKind::TypeLibrary) static_cast<CReference&>(target).RemoteServer = true;
  }
};

TEST_F(WizardTest, ARemoteServerIsNamedAndTheReadingGoesOn) {
  machine_.Registry("[HKEY_CLASSES_ROOT\\TypeLib\\{R}\\1.0\\0\\win32]\r\n@=\"C:\\\\One\\\\remote.tlb\"\r\n");
  machine_.Write("drive_c/Src/Remote.vbp",
                 "Type=Exe\r\nExeName32=\"App.exe\"\r\nPath32=\"Release\\Final\"\r\n"
                 "Reference=*\\G{R}#1.0#0#remote.tlb#Remote\r\nForm=Main.frm\r\n");
  Start();
  RemoteServerBuilder builder;
  CProject project({component_->platform(), Form(), component_->global(), builder});
  project.SetFileName("C:\\Src\\Remote.vbp");
  EXPECT_EQ(seen_.messages, std::vector<unsigned>{1041});
  EXPECT_EQ(seen_.lastText.find("This project uses the remote server component C:\\One\\remote.tlb."), 0U)
      << seen_.lastText;
  EXPECT_EQ(project.Forms().Count(), 1U);
}

}  // namespace
}  // namespace bxvbwiz
