#include <gtest/gtest.h>

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "TestMachine.h"
#include "tools/WizardDriver.h"

// The wizard as its user sees it: a second process works the real controls of a wizard on a machine folder.
// The golden cases compare what whole runs write.
namespace bxvbwiz {
namespace {

constexpr const char* kProject = "C:\\Src\\App.vbp";
constexpr const char* kProjectFile = "&Visual Basic Project File (*.vbp)";
constexpr const char* kApplicationName = "&Application Name";
// Exit codes of showwizard.
constexpr DWORD kFinished = 0;
constexpr DWORD kCancelled = 1;

SIZE SizeOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return {place.right - place.left, place.bottom - place.top};
}

class WizardWindows : public testing::Test {
 protected:
  WizardWindows() {
    machine_.InstallProduct();
    machine_.Write("drive_c/Src/App.vbp",
                   "Type=Exe\r\nForm=Main.frm\r\nReference=*\\G{00000000-0000-0000-0000-00000000AAAA}#1.0#0#"
                   "C:\\Gone\\Gone.tlb#Gone\r\nName=\"My App\"\r\nExeName32=\"App.exe\"\r\n");
    machine_.Write("drive_c/Src/Main.frm", "VERSION 5.00\r\n");
    machine_.Write("drive_c/Src/App.exe", "MZ");
    machine_.Store();
  }

  WizardDriver& Start(const std::string& program = BXVBWIZ_SHOWWIZARD) {
    driver_ = std::make_unique<WizardDriver>("\"" + program + "\" generate --machine \"" + machine_.Folder() +
                                             "\" " + kProject);
    return *driver_;
  }
  void ExpectMessage(const std::string& part) {
    const std::string message = driver_->WaitForMessage();
    EXPECT_NE(message.find(part), std::string::npos) << message;
    driver_->Answer(IDOK);
  }
  void WaitForText(const std::string& name, const std::string& text) {
    driver_->WaitUntil(text, [&] { return driver_->Text(name) == text; });
  }

  TestMachine machine_;
  std::unique_ptr<WizardDriver> driver_;
};

TEST_F(WizardWindows, AreWorkedByKeyboardAndMouseFromWelcomeToReport) {
  WizardDriver& driver = Start();
  driver.WaitForFocus(kProjectFile);
  EXPECT_EQ(FindWindowExW(driver.Window(), nullptr, L"Button", L"&OK"), nullptr)
      << "made when it is first shown";
  driver.SetText(kProjectFile, "");
  EXPECT_FALSE(driver.Enabled("&Next>"));
  driver.Key(VK_RETURN);  // presses nothing
  driver.SetText(kProjectFile, "C:\\None.vbp");
  driver.Key(VK_RETURN);
  ExpectMessage("does not exist");
  driver.WaitForFocus(kProjectFile);
  driver.Click("Bro&wse...");
  driver.AnswerFileDialog(kProject);
  WaitForText(kProjectFile, kProject);
  driver.WaitForFocus("&Next>");
  for (const char* next : {"Cancel", "&Help", kProjectFile, "Bro&wse...", "&Rebuild the Project"}) {
    driver.Key(VK_TAB);
    driver.WaitForFocus(next);
  }
  for (const LRESULT state : {BST_CHECKED, BST_UNCHECKED}) {
    driver.AccessKey('r');
    driver.WaitUntil("the check", [&] { return driver.Ask("&Rebuild the Project", BM_GETCHECK) == state; });
  }
  driver.Key(VK_RETURN);
  driver.WaitForMessage();
  for (const char* ignored : {"&Next>", kProjectFile, "&Rebuild the Project"})
    EXPECT_FALSE(driver.Enabled(ignored)) << ignored;
  EXPECT_TRUE(driver.Enabled("Cancel"));
  const HWND rebuild = driver.Find("&Rebuild the Project");
  ExpectMessage("Gone.tlb");

  driver.WaitForPage("Project Information");
  driver.WaitForFocus(kApplicationName);
  EXPECT_EQ(driver.Text("Application Executable"), "C:\\Src\\App.exe");
  EXPECT_EQ(driver.Ask(kApplicationName, EM_GETSEL), MAKELONG(0, 6)) << "all of it is selected";
  driver.Type(kApplicationName, "D.");
  ExpectMessage("The application name contains illegal characters.");
  driver.Type(kApplicationName, "\xC3\xA4s");
  WaitForText(kApplicationName, "D\xC3\xA4s");
  driver.Ask("Application &Type", CB_SETCURSEL, 2);
  const HWND types = driver.Find("Application &Type");
  SendMessageW(GetParent(types), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(types), CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(types));
  driver.AccessKey('v');
  driver.WaitForFocus("Application &Version");
  driver.Key(VK_RETURN);

  driver.WaitForPage("Summary");
  EXPECT_FALSE(IsWindowEnabled(rebuild)) << "its access key would still press it";
  EXPECT_EQ(driver.Ask("SysTreeView32", TVM_GETCOUNT), 5);
  driver.AccessKey('f');
  driver.WaitUntil("the file view", [&] { return driver.Ask("SysTreeView32", TVM_GETCOUNT) == 3; });
  const HWND tree = driver.Find("SysTreeView32");
  const SIZE before = SizeOf(tree);
  const SIZE least = SizeOf(driver.Window());
  for (const LONG change : {-50L, 100L}) {
    SetWindowPos(driver.Window(), nullptr, 0, 0, least.cx + change, least.cy + change, SWP_NOMOVE);
    const LONG more = std::max(0L, change);  // than the smallest
    driver.WaitUntil("another size", [&] { return SizeOf(driver.Window()).cy == least.cy + more; });
    EXPECT_EQ(SizeOf(tree).cx, before.cx + more);
    EXPECT_EQ(SizeOf(tree).cy, before.cy + more) << "the tree takes the room";
  }
  driver.AccessKey('b');
  driver.WaitForPage("Project Information");
  driver.Press("nn");

  driver.WaitForPage("Report");
  EXPECT_FALSE(driver.Enabled("Cancel"));
  EXPECT_NE(driver.Text("Edit").find("IMPORTANT - PLEASE READ!\r\n"), std::string::npos);
  driver.Key(VK_RETURN);
  EXPECT_EQ(driver.WaitForEnd(), kFinished);
  EXPECT_NE(machine_.Read("drive_c/Setups/D\xC3\xA4s/D\xC3\xA4s.bxp").find("Finance Application"),
            std::string::npos);
}

TEST_F(WizardWindows, AreCancelledByButtonKeyAndMenu) {
  Start().Click("Cancel");
  EXPECT_EQ(driver_->WaitForEnd(), kCancelled);
  Start().Key(VK_ESCAPE);
  EXPECT_EQ(driver_->WaitForEnd(), kCancelled);
  PostMessageW(Start().Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_EQ(driver_->WaitForEnd(), kCancelled);
}

// A program without its help file beside it says what is missing.
TEST_F(WizardWindows, OpenTheHelpBesideTheProgram) {
  const std::string program = machine_.Folder() + "/showwizard.exe";
  ASSERT_TRUE(CopyFileA(BXVBWIZ_SHOWWIZARD, program.c_str(), TRUE));
  const std::string folder = machine_.Folder().substr(machine_.Folder().rfind('/') + 1);
  Start(program).Key(VK_F1);
  ExpectMessage("\\" + folder + "\\bxvbwiz.chm");
}

}  // namespace
}  // namespace bxvbwiz
