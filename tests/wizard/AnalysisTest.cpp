#include "platform/Forwarding.h"
#include "WizardFixture.h"

namespace bxvbwiz {
namespace {

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

TEST_F(WizardTest, ABuildWithoutALogIsReportedAndMayBeGoneOnFrom) {
  Start();
  seen_.answers = {{2, Button::Retry}, {1091, Button::Yes}};
  Form().chkRebuild.checked = true;
  LeaveWelcome();
  EXPECT_EQ(seen_.messages, (std::vector<unsigned>{2, 1091}));
  EXPECT_TRUE(Form().fraPanel2.visible);
  EXPECT_EQ(Form().Incomplete().size(), 1U) << "the lists were not read";
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
