#include <gtest/gtest.h>

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <algorithm>

#include "platform/CompiledStringTable.h"
#include "setupgen/TreeNode.h"
#include "TestMachine.h"
#include "ui/frmMain.h"
#include "ui/win32/ControlIds.h"
#include "ui/WizardDriver.h"

// The wizard as its user meets it: a second process works the real controls of a wizard on a machine folder.
namespace bxvbwiz {
namespace {

constexpr const char* kProject = "C:\\Src\\App.vbp";

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

  // With the rest of the command line.
  WizardDriver& Start(const std::string& options = kProject) {
    machine_.Store();
    driver_ = std::make_unique<WizardDriver>("\"" + program_ + "\" --machine \"" + machine_.Folder() + "\" " +
                                             options);
    return *driver_;
  }
  // Answers what the analysis of the project says (its library is missing), up to a panel.
  WizardDriver& StartAndGoTo(int panel, const std::string& options = kProject) {
    WizardDriver& driver = Start(options);
    if (panel == kPanelWelcome) return driver;
    Analyse(driver);
    driver.WaitForPanel(kPanelInformation);
    if (panel == kPanelInformation) return driver;
    driver.Click(kIdNext + kPanelInformation);
    driver.WaitForPanel(kPanelSummary);
    if (panel == kPanelSummary) return driver;
    driver.Click(kIdNext + kPanelSummary);
    driver.WaitForPanel(kPanelReport);
    return driver;
  }
  static void Analyse(WizardDriver& driver) {
    driver.Click(kIdNext + kPanelWelcome);
    EXPECT_NE(driver.WaitForMessage().find("Gone.tlb"), std::string::npos);
    driver.Answer(IDOK);
  }
  static void WaitForText(WizardDriver& driver, int id, const std::string& text) {
    driver.WaitUntil(text.c_str(), [&] { return driver.Text(id) == text; });
  }

  TestMachine machine_;
  std::string program_ = BXVBWIZ_SHOWWIZARD;
  std::unique_ptr<WizardDriver> driver_;
};

std::string Node(int level, const char* text, NodeImage image) {
  return std::string(static_cast<std::size_t>(level) * 2, ' ') + text + " #" +
         std::to_string(static_cast<int>(image));
}

TEST_F(WizardWindows, AreWorkedFromWelcomeToReport) {
  WizardDriver& driver = Start("");
  EXPECT_EQ(driver.Caption(), "Visual Basic Project Wizard - Welcome");
  EXPECT_FALSE(driver.Enabled(kIdNext));
  driver.Click(kIdBrowse);
  driver.AnswerFileDialog(kProject);
  WaitForText(driver, kIdProjectFile, kProject);
  EXPECT_TRUE(driver.Enabled(kIdNext));
  Analyse(driver);

  driver.WaitForPanel(kPanelInformation);
  EXPECT_EQ(driver.Text(kIdApplicationName), "My App");
  EXPECT_EQ(driver.Text(kIdCompanyName), "Acme Inc.");
  EXPECT_EQ(driver.Text(kIdApplicationType), "Database Application");
  EXPECT_EQ(driver.Text(kIdApplicationVersion), "2.7");
  EXPECT_EQ(driver.Text(kIdExeName), "C:\\Src\\App.exe");
  driver.Choose(kIdApplicationType, 2);
  driver.SetText(kIdApplicationName, "Desk");
  driver.Click(kIdNext + kPanelInformation);

  driver.WaitForPanel(kPanelSummary);
  const std::vector<std::string> project = {
      Node(0, "My App", NodeImage::Project), Node(1, "Forms", NodeImage::Heading),
      Node(2, "Main.frm", NodeImage::Form), Node(1, "Objects", NodeImage::Heading),
      Node(1, "References", NodeImage::Heading)};
  EXPECT_EQ(driver.Tree(kIdDependencies), project);
  EXPECT_TRUE(driver.Checked(kIdProjectView));
  driver.Click(kIdFileView);
  driver.WaitUntil("the file view", [&] { return driver.Visible(kIdFiles); });
  EXPECT_FALSE(driver.Visible(kIdDependencies));
  EXPECT_EQ(driver.Tree(kIdFiles).at(2), Node(2, "App.exe", NodeImage::File));
  driver.Click(kIdNext + kPanelSummary);

  driver.WaitForPanel(kPanelReport);
  EXPECT_NE(driver.Text(kIdReport).find("IMPORTANT - PLEASE READ!\r\n"), std::string::npos);
  driver.Click(kIdOk);
  auto results = driver.WaitForEnd();
  EXPECT_EQ(results["StillExecuting"], "0");
  EXPECT_EQ(results["ReturnCode"], "-1");
  EXPECT_EQ(results["ProjectFile"], "C:\\Setups\\Desk\\Desk.bxp");
  EXPECT_NE(machine_.Read("drive_c/Setups/Desk/Desk.bxp").find("Finance Application"), std::string::npos);
}

TEST_F(WizardWindows, StayOnTheWelcomePageWhenTheFileIsWrong) {
  WizardDriver& driver = Start("C:\\Src\\Other.vbp");
  driver.Click(kIdNext);
  EXPECT_EQ(driver.WaitForMessage(),
            "The file C:\\Src\\Other.vbp does not exist. Please choose another file.");
  driver.Answer(IDOK);
  driver.WaitForPanel(kPanelWelcome);
  driver.SetText(kIdProjectFile, "");
  EXPECT_FALSE(driver.Enabled(kIdNext));
  driver.Key(VK_RETURN);  // presses nothing
  driver.SetText(kIdProjectFile, kProject);
  Analyse(driver);
  driver.WaitForPanel(kPanelInformation);
}

TEST_F(WizardWindows, RefuseIllegalCharactersThatAreTypedOrPasted) {
  WizardDriver& driver = StartAndGoTo(kPanelInformation);
  driver.WaitUntil("the focus", [&] { return driver.Focus() == kIdApplicationName; });
  EXPECT_EQ(driver.Selection(kIdApplicationName), std::make_pair(DWORD{0}, DWORD{6}));
  driver.Type(kIdApplicationName, "X.");
  EXPECT_EQ(driver.WaitForMessage(), "The application name contains illegal characters.");
  driver.Answer(IDOK);
  driver.Type(kIdApplicationName, "Y\xC3\xA4");
  WaitForText(driver, kIdApplicationName, "XY\xC3\xA4");

  driver.Paste(kIdCompanyName, "A/B");
  driver.Click(kIdNext + kPanelInformation);
  EXPECT_EQ(driver.WaitForMessage(), "The company name contains illegal characters.");
  driver.Answer(IDOK);
  driver.WaitUntil("the focus", [&] { return driver.Focus() == kIdCompanyName; });
  driver.SetText(kIdApplicationVersion, "");
  EXPECT_FALSE(driver.Enabled(kIdNext + kPanelInformation));
  driver.SetText(kIdApplicationVersion, "3");
  EXPECT_TRUE(driver.Enabled(kIdNext + kPanelInformation));
}

TEST_F(WizardWindows, GoBackAndForth) {
  WizardDriver& driver = StartAndGoTo(kPanelSummary);
  driver.Click(kIdBack + kPanelSummary);
  driver.WaitForPanel(kPanelInformation);
  driver.WaitUntil("the button", [&] { return driver.IsDefaultButton(kIdNext + kPanelInformation); });
  driver.SetText(kIdApplicationName, "Kept");
  driver.Click(kIdNext + kPanelInformation);
  driver.WaitForPanel(kPanelSummary);
  driver.Click(kIdBack + kPanelSummary);
  driver.WaitForPanel(kPanelInformation);
  EXPECT_EQ(driver.Text(kIdApplicationName), "Kept");
  driver.Click(kIdBack + kPanelInformation);
  driver.WaitForPanel(kPanelWelcome);
  EXPECT_EQ(driver.Caption(), "Visual Basic Project Wizard - Welcome");
  driver.WaitUntil("the focus", [&] { return driver.Focus() == kIdProjectFile; });
}

TEST_F(WizardWindows, SkipTheInformationPage) {
  WizardDriver& driver = Start(std::string("--skip-info --app-name Given ") + kProject);
  Analyse(driver);
  driver.WaitForPanel(kPanelSummary);
  driver.Click(kIdBack + kPanelSummary);
  driver.WaitForPanel(kPanelWelcome);
  Analyse(driver);
  driver.WaitForPanel(kPanelSummary);
  driver.Click(kIdNext + kPanelSummary);
  driver.WaitForPanel(kPanelReport);
  driver.Key(VK_RETURN);
  EXPECT_EQ(driver.WaitForEnd()["ProjectFile"], "C:\\Setups\\Given\\Given.bxp");
}

struct Leaving {
  const char* name;
  void (*leave)(WizardDriver&);
};
class EveryPage : public WizardWindows, public testing::WithParamInterface<std::tuple<int, Leaving>> {};

TEST_P(EveryPage, IsCancelledByButtonKeyAndMenu) {
  const auto& [panel, leaving] = GetParam();
  WizardDriver& driver = StartAndGoTo(panel);
  leaving.leave(driver);
  EXPECT_EQ(driver.WaitForEnd()["ReturnCode"], "0");
}

INSTANTIATE_TEST_SUITE_P(
    WizardWindows, EveryPage,
    testing::Combine(testing::Values(kPanelWelcome, kPanelInformation, kPanelSummary, kPanelReport),
                     testing::Values(Leaving{"Button", [](WizardDriver& d) { d.Click(kIdCancel); }},
                                     Leaving{"Escape", [](WizardDriver& d) { d.Key(VK_ESCAPE); }},
                                     Leaving{"Menu", [](WizardDriver& d) { d.CloseFromMenu(); }})),
    [](const auto& tested) {
      return "Panel" + std::to_string(std::get<0>(tested.param)) + std::get<1>(tested.param).name;
    });

TEST_F(WizardWindows, AskWhetherToGoOnWhenTheRebuildFails) {
  WizardDriver& driver = Start();
  driver.Click(kIdRebuild);
  driver.WaitUntil("the check", [&] { return driver.Checked(kIdRebuild); });
  driver.Click(kIdNext);
  // The compiler is none, so it left no log.
  EXPECT_NE(driver.WaitForMessage().find("An unexpected error"), std::string::npos);
  driver.Answer(IDRETRY);
  EXPECT_NE(driver.WaitForMessage().find("could not rebuild your project"), std::string::npos);
  driver.Answer(IDYES);
  driver.WaitForPanel(kPanelInformation);
  EXPECT_EQ(driver.Text(kIdStatus), "");
}

// A compiler that waits until the test lets it go.
class WizardWindowsWhileCompiling : public WizardWindows {
 protected:
  void StartRebuild() {
    machine_.Write("machine.ini",
                   std::string("[Folders]\r\nWindows=C:\\windows\r\nSystem=C:\\windows\\system32\r\n"
                               "[Programs]\r\nC:\\VB98\\VB6.EXE=") +
                       BXVBWIZ_COMPILER + "\r\n");
    WizardDriver& driver = Start();
    driver.Click(kIdRebuild);
    driver.WaitUntil("the check", [&] { return driver.Checked(kIdRebuild); });
    driver.Click(kIdNext);
    WaitForText(driver, kIdStatus, "Rebuilding your project. This may take a minute or two...");
  }
};

TEST_F(WizardWindowsWhileCompiling, FollowTheUserAndGoOnWhenItIsDone) {
  StartRebuild();
  driver_->Click(kIdNext);  // is ignored
  machine_.Write("go", "");
  EXPECT_NE(driver_->WaitForMessage().find("Gone.tlb"), std::string::npos);
  driver_->Answer(IDOK);
  driver_->WaitForPanel(kPanelInformation);
  EXPECT_EQ(driver_->Text(kIdStatus), "");
}

TEST_F(WizardWindowsWhileCompiling, CancelWhenItIsDone) {
  StartRebuild();
  driver_->Key(VK_ESCAPE);
  SendMessageW(driver_->Window(), WM_NULL, 0, 0);  // returns when the key was taken
  EXPECT_FALSE(driver_->Ended());
  machine_.Write("go", "");
  EXPECT_EQ(driver_->WaitForEnd()["ReturnCode"], "0");
}

TEST_F(WizardWindows, RetryAnUnexpectedErrorAndEndOnCancel) {
  machine_.Registry(
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex Professional\\6.0\\VBWiz]\r\n\"TemplateSource\"=-\r\n");
  WizardDriver& driver = StartAndGoTo(kPanelSummary);
  driver.Click(kIdNext + kPanelSummary);
  for (const int answer : {IDRETRY, IDRETRY, IDCANCEL}) {
    EXPECT_NE(driver.WaitForMessage().find("An unexpected error"), std::string::npos);
    EXPECT_EQ(driver.Text(kIdProgressText), "Creating Installation...");
    EXPECT_TRUE(driver.Visible(kIdProgress));
    EXPECT_EQ(SendMessageW(driver.Find(kIdProgress), PBM_GETPOS, 0, 0), 1);
    driver.Answer(answer);
  }
  EXPECT_EQ(driver.WaitForEnd()["ReturnCode"], "0");
}

TEST_F(WizardWindows, FollowTheKeyboard) {
  WizardDriver& driver = Start();
  driver.WaitUntil("the focus", [&] { return driver.Focus() == kIdProjectFile; });
  driver.WaitUntil("the button", [&] { return driver.IsDefaultButton(kIdNext); });
  for (const int next : std::vector<int>{kIdBrowse, kIdRebuild, kIdNext + 0, int{kIdCancel}, int{kIdHelp},
                                         int{kIdProjectFile}}) {
    driver.Key(VK_TAB);
    driver.WaitUntil("the next control", [&] { return driver.Focus() == next; });
  }
  driver.AccessKey('r');
  driver.WaitUntil("the check", [&] { return driver.Checked(kIdRebuild); });
  driver.AccessKey('r');
  driver.WaitUntil("no check", [&] { return !driver.Checked(kIdRebuild); });
  driver.Key(VK_RETURN);
  driver.WaitForMessage();
  driver.Answer(IDOK);
  driver.WaitForPanel(kPanelInformation);
  driver.AccessKey('v');
  driver.WaitUntil("the version box", [&] { return driver.Focus() == kIdApplicationVersion; });
  driver.AccessKey('b');
  driver.WaitForPanel(kPanelWelcome);
}

// They are made when the mouse comes over the form.
TEST_F(WizardWindows, ExplainTheirControlsInToolTips) {
  WizardDriver& driver = StartAndGoTo(kPanelInformation);
  SendMessageW(driver.Window(), WM_SETCURSOR, reinterpret_cast<WPARAM>(driver.Window()), HTCLIENT);
  const CompiledStringTable strings;
  const std::string type = strings.Text(1071);
  for (const auto& [control, tip] : std::map<int, std::string>{{kIdProjectFile, strings.Text(1066)},
                                                               {kIdBrowse, strings.Text(1067)},
                                                               {kIdRebuild, strings.Text(1068)},
                                                               {kIdApplicationName, strings.Text(1069)},
                                                               {kIdCompanyName, strings.Text(1070)},
                                                               {kIdApplicationType, type},
                                                               {kIdApplicationVersion, strings.Text(1072)},
                                                               {kIdExeName, "C:\\Src\\App.exe"},
                                                               {kIdCancel, ""}}) {
    EXPECT_EQ(driver.ToolTip(driver.Find(control)), tip) << control;
  }
  EXPECT_EQ(driver.ToolTip(GetWindow(driver.Find(kIdApplicationType), GW_CHILD)), type) << "its text box";
}

// A program without its help file beside it says what is missing.
TEST_F(WizardWindows, OpenTheHelpBesideTheProgram) {
  program_ = machine_.Folder() + "/showwizard.exe";
  ASSERT_TRUE(CopyFileA(BXVBWIZ_SHOWWIZARD, program_.c_str(), TRUE));
  char folder[MAX_PATH] = {};
  ASSERT_NE(GetFullPathNameA(machine_.Folder().c_str(), MAX_PATH, folder, nullptr), 0U);
  WizardDriver& driver = Start();
  driver.Key(VK_F1);
  EXPECT_NE(driver.WaitForMessage().find(std::string(folder) + "\\bxvbwiz.chm"), std::string::npos)
      << driver.WaitForMessage();
  driver.Answer(IDOK);
  driver.Click(kIdHelp);
  driver.WaitForMessage();
  driver.Answer(IDOK);
}

TEST_F(WizardWindows, AreOwnedByTheHostsWindow) {
  WizardDriver& driver = Start(std::string("--host ") + kProject);
  const HWND host = GetWindow(driver.Window(), GW_OWNER);
  ASSERT_NE(host, nullptr);
  driver.WaitUntil("the window", [&] { return IsWindowVisible(driver.Window()) != FALSE; });
  EXPECT_FALSE(IsWindowEnabled(host));
  driver.Click(kIdCancel);
  auto results = driver.WaitForEnd();
  EXPECT_EQ(results["HostEnabled"], "1");
  EXPECT_EQ(results["HostActive"], "1");
}

}  // namespace
}  // namespace bxvbwiz
