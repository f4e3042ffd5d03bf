#include <functional>
#include <thread>
#include <tuple>

#include "com/Host.h"
// after windows.h
#include <commctrl.h>

#include "TestMachine.h"
#include "tools/WizardDriver.h"

BSTR MakeSetup(const wchar_t* project);  // of docs/automation.md

namespace bxvbwiz {
namespace {

const std::string kProgram = "\"Z:" SHIPPED_FOLDER "/Bx6vbwiz.exe\"";
const std::wstring kProduct = L"SOFTWARE\\Borvex\\Borvex Professional\\6.0\\";

// What a host does from a timer while the wizard is shown.
std::function<void()> whileShown;

void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  whileShown();
}

// The window of this thread's wizard; other processes may show one, too.
HWND OwnWizard() {
  HWND window = nullptr;
  do {
    window = FindWindowExW(nullptr, window, nullptr, L"Visual Basic Project Wizard - Welcome");
  } while (window != nullptr && GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId());
  return window;
}

// Runs the wizard of this thread while a user presses the buttons of WizardDriver::Press.
template <class Run>
void Pressing(const char* buttons, Run&& run) {
  std::thread user([buttons] {
    try {
      WizardDriver().Press(buttons);
    } catch (const std::exception& error) {
      ADD_FAILURE() << error.what();
    }
  });
  run();
  user.join();
}

// The product is installed with a template, and there is a project that needs no rebuild.
class RunTest : public HostTest {
 protected:
  RunTest() {
    files_.InstallProduct();
    files_.Write("drive_c/Src/App.vbp",
                 "Type=Exe\r\nForm=Main.frm\r\nName=\"Demo\"\r\nExeName32=\"App.exe\"\r\n");
    files_.Write("drive_c/Src/Main.frm", "VERSION 5.00\r\n");
    files_.Write("drive_c/Src/App.exe", "MZ");
    for (const auto& [key, name, folder] : {std::tuple(L"VBWiz", L"DepFile", L"Borvex"),
                                            {L"VBWiz", L"TemplateSource", L"Borvex\\Template"},
                                            {L"Main", L"Path", L"Borvex"},
                                            {L"Main", L"DataLink", L"Links"},
                                            {L"Main", L"DataFile", L"Setups"}})
      SetProductFolder(std::wstring(name) == L"DataFile" ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE, key, name,
                       Path(folder));
  }
  ~RunTest() override {
    for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) RegDeleteTreeW(root, L"SOFTWARE\\Borvex");
  }

  static void SetProductFolder(HKEY root, const std::wstring& key, const wchar_t* name,
                               const std::wstring& folder) {
    RegSetKeyValueW(root, (kProduct + key).c_str(), name, REG_SZ, folder.c_str(),
                    static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t)));
  }
  std::wstring Path(const std::wstring& relative) const {
    return WindowsPath(Widen(files_.Folder()) + L"\\drive_c\\" + relative);
  }

  // The path of a setup project.
  std::wstring Setup(const std::wstring& name) const {
    return Path(L"Setups\\" + name + L"\\" + name + L".bxp");
  }

  TestMachine files_;
  std::wstring project_ = Path(L"Src\\App.vbp");
};

// StillExecuting, ReturnCode and ProjectFile.
std::wstring Results(const ComPtr<IApplication>& app) {
  VARIANT_BOOL executing = VARIANT_FALSE;
  SHORT code = 99;
  Bstr setup;
  app->get_StillExecuting(&executing);
  app->get_ReturnCode(&code);
  app->get_ProjectFile(&setup.bstrVal);
  return (executing == VARIANT_FALSE ? L"False " : L"True ") + std::to_wstring(code) + L" " + setup.Text();
}

TEST_F(RunTest, ReturnsWhenTheWizardHasEndedAndDoesNotShowItAgain) {
  const ComPtr<IDispatch> groups = Create(L"BX6VBWiz.CFileGroups", IID_IFileGroups);
  const ComPtr<IApplication> app = CreateApplication();
  EXPECT_EQ(app->put_Project(Bstr(project_).bstrVal), S_OK);
  Bstr folder;
  static_cast<IFileGroups*>(groups.Get())->get_AppPath(&folder.bstrVal);
  EXPECT_EQ(folder.Text(), Path(L"Src\\")) << "of the form that is there now";
  EXPECT_EQ(Results(app), L"True -1 ");
  Pressing("nnno", [&] { EXPECT_EQ(app->Run(), S_OK); });
  const std::wstring setup = Setup(L"Demo");
  EXPECT_EQ(Results(app), L"False -1 " + setup);
  EXPECT_NE(GetFileAttributesW(setup.c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(app->Run(), S_OK);
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kProduct + L"0000", L"ReturnCode"), L"-")
      << "a host reads the properties instead";
}

TEST_F(RunTest, LetsMessagesFlowAndSurvivesCallsAndReleaseFromInside) {
  ComPtr<IApplication> app = CreateApplication();
  whileShown = [&] {
    EXPECT_EQ(Results(app), L"True -1 ");
    constexpr HRESULT kFormShown = static_cast<HRESULT>(0x800A0190);  // run-time error 400
    for (const ComPtr<IApplication>& any : {app, CreateApplication()}) EXPECT_EQ(any->Run(), kFormShown);
    app = ComPtr<IApplication>();
    const HWND window = OwnWizard();
    EXPECT_TRUE(IsWindowVisible(window));
    PostMessageW(window, WM_CLOSE, 0, 0);
  };
  SetTimer(nullptr, 0, 10, &OnTimer);
  EXPECT_EQ(app.Get()->Run(), S_OK);
  EXPECT_FALSE(app) << "the timer has run";
  EXPECT_EQ(server_.Call("DllCanUnloadNow"), S_OK) << "nothing of the run is left";
}

TEST_F(RunTest, AnObjectThatLostTheFormIsRunInANewOne) {
  const ComPtr<IApplication> first = CreateApplication();
  const ComPtr<IApplication> second = CreateApplication();
  Pressing("c", [&] { EXPECT_EQ(first->Run(), S_OK); });
  EXPECT_EQ(Results(first), L"False 0 ");
  second->put_Project(Bstr(project_).bstrVal);
  Pressing("nnne", [&] { EXPECT_EQ(second->Run(), S_OK); });
  EXPECT_EQ(Results(second), L"False 0 " + Setup(L"Demo")) << "cancelled when all was done";
}

TEST_F(RunTest, ReturnsWhenTheHostDestroysItsWindow) {
  const ComPtr<IApplication> app = CreateApplication();
  const HWND owner = CreateWindowW(L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                   nullptr, nullptr, nullptr, nullptr);
  SetActiveWindow(owner);
  whileShown = [&] {
    EXPECT_EQ(GetWindow(OwnWizard(), GW_OWNER), owner);
    DestroyWindow(owner);
  };
  SetTimer(nullptr, 0, 10, &OnTimer);
  EXPECT_EQ(app->Run(), S_OK);
  EXPECT_EQ(Results(app), L"False 0 ");
}

LRESULT CALLBACK RefuseWindow(int code, WPARAM window, LPARAM created) {
  return code == HCBT_CREATEWND ? 1 : CallNextHookEx(nullptr, code, window, created);
}

TEST_F(RunTest, AWizardWithoutAWindowSaysSo) {
  const ComPtr<IApplication> app = CreateApplication();
  const HHOOK hook = SetWindowsHookExW(WH_CBT, &RefuseWindow, nullptr, GetCurrentThreadId());
  EXPECT_EQ(app->Run(), static_cast<HRESULT>(0x800A005B));  // run-time error 91
  UnhookWindowsHookEx(hook);
  ComPtr<IErrorInfo> error;
  ASSERT_EQ(GetErrorInfo(0, error.Receive()), S_OK);
  Bstr text;
  error->GetDescription(&text.bstrVal);
  EXPECT_EQ(text.Text(), L"Cannot make the wizard's window");
  Pressing("c", [&] { EXPECT_EQ(app->Run(), S_OK); });
}

TEST_F(RunTest, AStandAloneStartLeavesItsResultsInTheRegistry) {
  WizardDriver program(kProgram + " /IABCD -S1 -AOrders /V /P" + Narrow(project_));
  program.Press("nnno");
  EXPECT_EQ(program.WaitForEnd(), 0U);
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kProduct + L"ABCD", L"ReturnCode"), L"1");
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kProduct + L"ABCD", L"Project"), Setup(L"Orders"));
}

TEST_F(RunTest, ServesTheHostOfThePage) {
  Bstr made;
  Pressing("c", [&] { EXPECT_EQ(MakeSetup(project_.c_str()), nullptr); });
  Pressing("nnno", [&] { made.bstrVal = MakeSetup(project_.c_str()); });
  EXPECT_EQ(made.Text(), Setup(L"Demo"));
}

TEST_F(RunTest, ServesAScriptWithEveryMember) {
  WizardDriver script("cscript.exe //nologo \"Z:" SCRIPT_FOLDER "/host.vbs\" " + Narrow(Path(L"")));
  script.Press("nno");
  EXPECT_EQ(script.WaitForEnd(), 42U) << "a script that stops at an error ends with 0";
}

}  // namespace
}  // namespace bxvbwiz
