#include <gtest/gtest.h>

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "TestMachine.h"
#include "tools/WizardDriver.h"
#include "ui/frmMain.h"
#include "ui/win32/ControlIds.h"

// The wizard as its user meets it: a second process works the real controls of a wizard on a machine folder.
// What whole runs do in the windows is compared by the golden cases.
namespace bxvbwiz {
namespace {

constexpr const char* kProject = "C:\\Src\\App.vbp";
// Exit codes of showwizard.
constexpr DWORD kFinished = 0;
constexpr DWORD kCancelled = 1;

class WizardWindows : public testing::Test {
 protected:
  WizardWindows() {
    machine_.InstallProduct();
    machine_.Write("drive_c/Src/App.vbp",
                   "Type=Exe\r\nForm=Main.frm\r\nReference=*\\G{00000000-0000-0000-0000-00000000AAAA}#1.0#0#"
                   "C:\\Gone\\Gone.tlb#Gone\r\nName=\"My App\"\r\nExeName32=\"App.exe\"\r\nMajorVer=2\r\n"
                   "RevisionVer=7\r\nVersionCompanyName=\"Acme Inc.\"\r\n");
    machine_.Write("drive_c/Src/Main.frm", "VERSION 5.00\r\n");
    machine_.Write("drive_c/Src/App.exe", "MZ");
  }

  WizardDriver& Start() {
    machine_.Store();
    driver_ = std::make_unique<WizardDriver>("\"" + program_ + "\" generate --machine \"" +
                                             machine_.Folder() + "\" " + kProject);
    return *driver_;
  }
  WizardDriver& StartAndGoTo(int panel) {
    Start();
    if (panel >= kPanelInformation) Analyse();
    if (panel >= kPanelSummary) driver_->Press("n");
    if (panel >= kPanelReport) driver_->Press("n");
    driver_->WaitForPanel(panel);
    return *driver_;
  }
  // The project's library is missing.
  void Analyse() {
    driver_->Press("n");
    ExpectMessage("Gone.tlb", IDOK);
    driver_->WaitForPanel(kPanelInformation);
  }
  void ExpectMessage(const std::string& part, int answer) {
    const std::string message = driver_->WaitForMessage();
    EXPECT_NE(message.find(part), std::string::npos) << message;
    driver_->Answer(answer);
  }
  void WaitForText(int id, const std::string& text) {
    driver_->WaitUntil(text, [&] { return driver_->Text(id) == text; });
  }

  TestMachine machine_;
  std::string program_ = BXVBWIZ_SHOWWIZARD;
  std::unique_ptr<WizardDriver> driver_;
};

TEST_F(WizardWindows, AreWorkedFromWelcomeToReportAndBackOnce) {
  WizardDriver& driver = Start();
  EXPECT_EQ(driver.Caption(), "Visual Basic Project Wizard - Welcome");
  driver.SetText(kIdProjectFile, "");
  EXPECT_FALSE(driver.Enabled(kIdNext));
  driver.Click(kIdBrowse);
  driver.AnswerFileDialog(kProject);
  WaitForText(kIdProjectFile, kProject);
  EXPECT_TRUE(driver.Enabled(kIdNext));
  Analyse();

  EXPECT_EQ(driver.Text(kIdApplicationName), "My App");
  EXPECT_EQ(driver.Text(kIdCompanyName), "Acme Inc.");
  EXPECT_EQ(driver.Text(kIdApplicationType), "Database Application");
  EXPECT_EQ(driver.Text(kIdApplicationVersion), "2.7");
  EXPECT_EQ(driver.Text(kIdExeName), "C:\\Src\\App.exe");
  driver.Ask(kIdApplicationType, CB_SETCURSEL, 2);
  SendMessageW(GetParent(driver.Find(kIdApplicationType)), WM_COMMAND,
               MAKEWPARAM(kIdApplicationType, CBN_SELCHANGE), 0);
  driver.SetText(kIdApplicationName, "Desk");
  driver.Press("n");
  driver.WaitForPanel(kPanelSummary);

  EXPECT_EQ(driver.Ask(kIdDependencies, TVM_GETCOUNT), 5);
  EXPECT_TRUE(driver.Checked(kIdProjectView));
  driver.Click(kIdFileView);
  driver.WaitUntil("the file view", [&] { return driver.Visible(kIdFiles); });
  EXPECT_FALSE(driver.Visible(kIdDependencies));
  EXPECT_EQ(driver.Ask(kIdFiles, TVM_GETCOUNT), 3);
  driver.Click(kIdBack + kPanelSummary);
  driver.WaitForPanel(kPanelInformation);
  driver.Press("nn");
  driver.WaitForPanel(kPanelReport);

  EXPECT_NE(driver.Text(kIdReport).find("IMPORTANT - PLEASE READ!\r\n"), std::string::npos);
  driver.Key(VK_RETURN);
  EXPECT_EQ(driver.WaitForEnd(), kFinished);
  EXPECT_NE(machine_.Read("drive_c/Setups/Desk/Desk.bxp").find("Finance Application"), std::string::npos);
}

TEST_F(WizardWindows, RefuseIllegalCharactersThatAreTypedOrPasted) {
  WizardDriver& driver = StartAndGoTo(kPanelInformation);
  driver.WaitForFocus(kIdApplicationName);
  EXPECT_EQ(driver.Ask(kIdApplicationName, EM_GETSEL), MAKELONG(0, 6)) << "all of it is selected";
  driver.Type(kIdApplicationName, "X.");
  ExpectMessage("The application name contains illegal characters.", IDOK);
  driver.Type(kIdApplicationName, "Y\xC3\xA4");
  WaitForText(kIdApplicationName, "XY\xC3\xA4");

  driver.SetText(kIdCompanyName, "A/B");
  driver.Click(kIdNext + kPanelInformation);
  ExpectMessage("The company name contains illegal characters.", IDOK);
  driver.WaitForFocus(kIdCompanyName);
  driver.SetText(kIdApplicationVersion, "");
  EXPECT_FALSE(driver.Enabled(kIdNext + kPanelInformation));
  driver.SetText(kIdApplicationVersion, "3");
  EXPECT_TRUE(driver.Enabled(kIdNext + kPanelInformation));
}

TEST_F(WizardWindows, AreCancelledOnEveryPageByButtonKeyAndMenu) {
  for (const int panel : {kPanelWelcome, kPanelInformation, kPanelSummary, kPanelReport}) {
    for (const char* way : {"button", "key", "menu"}) {
      SCOPED_TRACE(testing::Message() << way << " on panel " << panel);
      WizardDriver& driver = StartAndGoTo(panel);
      if (*way == 'b') driver.Click(kIdCancel);
      if (*way == 'k') driver.Key(VK_ESCAPE);
      if (*way == 'm') PostMessageW(driver.Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
      EXPECT_EQ(driver.WaitForEnd(), kCancelled);
    }
  }
}

// The compiler waits until the test lets it go.
TEST_F(WizardWindows, FollowTheUserWhileTheProjectIsRebuilt) {
  ASSERT_TRUE(CopyFileA(BXVBWIZ_COMPILER, (machine_.Folder() + "/vb6.exe").c_str(), TRUE));
  machine_.Write("vb6.txt",
                 "wait go\nprogram drive_c/Src/App.exe\nlog Build of 'App.exe'\n"
                 "log Build of 'App.exe' succeeded.\n");
  machine_.Write("machine.ini",
                 "[Folders]\r\nWindows=C:\\windows\r\nSystem=C:\\windows\\system32\r\n"
                 "[Programs]\r\nC:\\VB98\\VB6.EXE=vb6.exe\r\n");
  WizardDriver& driver = Start();
  driver.Click(kIdRebuild);
  driver.Click(kIdNext);
  WaitForText(kIdStatus, "Rebuilding your project. This may take a minute or two...");
  driver.Click(kIdNext);  // is ignored
  driver.Key(VK_ESCAPE);
  SendMessageW(driver.Window(), WM_NULL, 0, 0);  // returns when the key was taken
  EXPECT_FALSE(driver.Ended());
  machine_.Write("go", "");
  EXPECT_EQ(driver.WaitForEnd(), kCancelled);
}

TEST_F(WizardWindows, RetryAnUnexpectedErrorAndEndOnCancel) {
  machine_.Registry(
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex Professional\\6.0\\VBWiz]\r\n\"TemplateSource\"=-\r\n");
  WizardDriver& driver = StartAndGoTo(kPanelSummary);
  driver.Click(kIdNext + kPanelSummary);
  ExpectMessage("An unexpected error", IDRETRY);
  driver.WaitForMessage();
  EXPECT_EQ(driver.Text(kIdProgressText), "Creating Installation...");
  EXPECT_TRUE(driver.Visible(kIdProgress));
  EXPECT_EQ(driver.Ask(kIdProgress, PBM_GETPOS), 1);
  driver.Answer(IDCANCEL);
  EXPECT_EQ(driver.WaitForEnd(), kCancelled);
}

TEST_F(WizardWindows, FollowTheKeyboard) {
  WizardDriver& driver = Start();
  driver.WaitForFocus(kIdProjectFile);
  driver.SetText(kIdProjectFile, "");
  driver.Key(VK_RETURN);  // presses nothing
  driver.Key(VK_TAB);
  driver.WaitForFocus(kIdBrowse);
  driver.SetText(kIdProjectFile, kProject);
  for (const int next : {int{kIdRebuild}, kIdNext + 0, int{kIdCancel}, int{kIdHelp}, int{kIdProjectFile}}) {
    driver.Key(VK_TAB);
    driver.WaitForFocus(next);
  }
  for (const bool checked : {true, false}) {
    driver.AccessKey('r');
    driver.WaitUntil("the check", [&] { return driver.Checked(kIdRebuild) == checked; });
  }
  driver.Key(VK_RETURN);
  ExpectMessage("Gone.tlb", IDOK);
  driver.WaitForPanel(kPanelInformation);
  driver.WaitUntil("the default button", [&] {
    return (driver.Ask(kIdNext + kPanelInformation, WM_GETDLGCODE) & DLGC_DEFPUSHBUTTON) != 0;
  });
  driver.AccessKey('v');
  driver.WaitForFocus(kIdApplicationVersion);
  driver.AccessKey('b');
  driver.WaitForPanel(kPanelWelcome);
  driver.WaitForFocus(kIdProjectFile);
}

// A program without its help file beside it says what is missing.
TEST_F(WizardWindows, OpenTheHelpBesideTheProgram) {
  program_ = machine_.Folder() + "/showwizard.exe";
  ASSERT_TRUE(CopyFileA(BXVBWIZ_SHOWWIZARD, program_.c_str(), TRUE));
  const std::string folder = machine_.Folder().substr(machine_.Folder().rfind('/') + 1);
  WizardDriver& driver = Start();
  driver.Key(VK_F1);
  ExpectMessage("\\" + folder + "\\bxvbwiz.chm", IDOK);
  driver.Click(kIdHelp);
  ExpectMessage("bxvbwiz.chm", IDOK);
}

}  // namespace
}  // namespace bxvbwiz
