#include <functional>
#include <thread>

#include "com/Host.h"
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

// Runs the wizard of this thread, while its user presses the buttons of WizardDriver::Press.
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
    SetRegistryText(HKEY_LOCAL_MACHINE, kProduct + L"VBWiz", L"DepFile", Path(L"Borvex"));
    SetRegistryText(HKEY_LOCAL_MACHINE, kProduct + L"VBWiz", L"TemplateSource", Path(L"Borvex\\Template"));
    SetRegistryText(HKEY_LOCAL_MACHINE, kProduct + L"Main", L"Path", Path(L"Borvex"));
    SetRegistryText(HKEY_LOCAL_MACHINE, kProduct + L"Main", L"DataLink", Path(L"Links"));
    SetRegistryText(HKEY_CURRENT_USER, kProduct + L"Main", L"DataFile", Path(L"Setups"));
  }
  ~RunTest() override {
    for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) RegDeleteTreeW(root, L"SOFTWARE\\Borvex");
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
std::wstring Results(const ComPtr<IDispatch>& app) {
  return Call(app.Get(), L"StillExecuting").text + L" " + Call(app.Get(), L"ReturnCode").text + L" " +
         Call(app.Get(), L"ProjectFile").text;
}

TEST_F(RunTest, ReturnsWhenTheWizardHasEndedAndDoesNotShowItAgain) {
  const ComPtr<IDispatch> groups = Create(L"BX6VBWiz.CFileGroups");
  const ComPtr<IDispatch> app = Create(L"BX6VBWiz.Application");
  EXPECT_EQ(Put(app.Get(), L"Project", project_), S_OK);
  EXPECT_EQ(Call(groups.Get(), L"AppPath").text, Path(L"Src\\")) << "of the form that is there now";
  EXPECT_EQ(Results(app), L"True -1 ");
  Pressing("nnno", [&] { EXPECT_EQ(Call(app.Get(), L"Run").code, S_OK); });
  const std::wstring setup = Setup(L"Demo");
  EXPECT_EQ(Results(app), L"False -1 " + setup);
  EXPECT_NE(GetFileAttributesW(setup.c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(Call(app.Get(), L"Run").code, S_OK);
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kProduct + L"0000", L"ReturnCode"), L"-")
      << "a host reads the properties instead";
}

TEST_F(RunTest, LetsMessagesFlowAndSurvivesCallsAndReleaseFromInside) {
  ComPtr<IDispatch> app = Create(L"BX6VBWiz.Application");
  whileShown = [&] {
    EXPECT_EQ(Call(app.Get(), L"StillExecuting").text, L"True");
    constexpr HRESULT kFormShown = static_cast<HRESULT>(0x800A0190);  // run-time error 400
    for (const ComPtr<IDispatch>& any : {app, Create(L"BX6VBWiz.Application")})
      EXPECT_EQ(Call(any.Get(), L"Run").code, kFormShown);
    app = ComPtr<IDispatch>();
    HWND window = FindWindowW(nullptr, L"Visual Basic Project Wizard - Welcome");
    EXPECT_TRUE(IsWindowVisible(window));
    PostMessageW(window, WM_CLOSE, 0, 0);
  };
  SetTimer(nullptr, 0, 10, &OnTimer);
  IDispatch* const running = app.Get();
  EXPECT_EQ(Call(running, L"Run").code, S_OK);
  EXPECT_FALSE(app) << "the timer has run";
  EXPECT_EQ(server_.Call("DllCanUnloadNow"), S_OK) << "nothing of the run is left";
}

TEST_F(RunTest, AnObjectThatLostTheFormIsRunInANewOne) {
  const ComPtr<IDispatch> first = Create(L"BX6VBWiz.Application");
  const ComPtr<IDispatch> second = Create(L"BX6VBWiz.Application");
  Pressing("c", [&] { EXPECT_EQ(Call(first.Get(), L"Run").code, S_OK); });
  EXPECT_EQ(Results(first), L"False 0 ");
  Put(second.Get(), L"Project", project_);
  Pressing("nnnc", [&] { EXPECT_EQ(Call(second.Get(), L"Run").code, S_OK); });
  EXPECT_EQ(Results(second), L"False 0 " + Setup(L"Demo")) << "cancelled when all was done";
}

TEST_F(RunTest, AStandAloneStartLeavesItsResultsInTheRegistry) {
  WizardDriver program(kProgram + " /IABCD -S1 -AOrders /V /P" + Narrow(project_));
  program.Press("nnno");
  EXPECT_EQ(program.WaitForEnd(), 0U);
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kProduct + L"ABCD", L"ReturnCode"), L"1");
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kProduct + L"ABCD", L"Project"), Setup(L"Orders"));
}

TEST_F(RunTest, ServesTheHostOfThePageThroughTheVtable) {
  OwnedVariant made;
  made.vt = VT_BSTR;
  Pressing("c", [&] { EXPECT_EQ(MakeSetup(project_.c_str()), nullptr); });
  Pressing("nnno", [&] { made.bstrVal = MakeSetup(project_.c_str()); });
  ASSERT_NE(made.bstrVal, nullptr);
  EXPECT_EQ(made.bstrVal, Setup(L"Demo"));
}

TEST_F(RunTest, ServesAScriptWithEveryMember) {
  WizardDriver script("cscript.exe //nologo \"Z:" SCRIPT_FOLDER "/host.vbs\" " + Narrow(Path(L"")));
  script.Press("nno");
  EXPECT_EQ(script.WaitForEnd(), 42U) << "a script that stops at an error ends with 0";
}

// With a log, and a monitor that notes what becomes of it.
class LogTest : public RunTest {
 protected:
  LogTest() {
    DeleteFileA(kLog);
    SetRegistryText(HKEY_CURRENT_USER, kSettings + L"\\Logging", L"LogLevel", L"1");
    SetRegistryText(HKEY_CURRENT_USER, kSettings + L"\\Logging", L"LogName", L"bxvbwiz-test.log");
    SetRegistryText(HKEY_LOCAL_MACHINE, kMonitor + L"\\CLSID", L"", kMonitorId);
    SetMonitorServer(WindowsPath(L"Z:" + Widen(LOG_MONITOR_SERVER)));
  }
  ~LogTest() override {
    for (const std::wstring& key : {kNotes, kSettings}) RegDeleteTreeW(HKEY_CURRENT_USER, key.c_str());
    for (const std::wstring& key : {kMonitor, kMonitorClass}) RegDeleteTreeW(HKEY_LOCAL_MACHINE, key.c_str());
    DeleteFileA(kLog);
  }
  void SetMonitorServer(const std::wstring& dll) const {
    SetRegistryText(HKEY_LOCAL_MACHINE, kMonitorClass + L"\\InprocServer32", L"", dll);
  }
  std::wstring Noted() const { return RegistryText(HKEY_CURRENT_USER, kNotes, L"LogMonitor"); }

  static constexpr const char* kLog = "C:\\windows\\bxvbwiz-test.log";
  const std::wstring kSettings = L"Software\\VB and VBA Program Settings\\Bx6vbwiz";
  const std::wstring kNotes = L"Software\\BxvbwizTests";
  const std::wstring kMonitor = L"Software\\Classes\\LogMon.CMonitor";
  const std::wstring kMonitorId = L"{9C0A4E0B-2E5B-4C0B-9B5D-1C9B4B1D9A11}";
  const std::wstring kMonitorClass = L"Software\\Classes\\CLSID\\" + kMonitorId;
};

TEST_F(LogTest, HoldsErrorsWithTheCallStackAndKeepsAMonitor) {
  const std::wstring server = RegistryText(HKEY_LOCAL_MACHINE, kMonitorClass + L"\\InprocServer32");
  for (const std::wstring& dll : {std::wstring(L"C:\\missing.dll"), server}) {
    SetMonitorServer(dll);
    const ComPtr<IDispatch> groups = Create(L"BX6VBWiz.CFileGroups");
    Call(groups.Get(), L"GetAppPath", {Variant(L"C:\\missing\\no.vbp")});
    EXPECT_EQ(Noted(), dll == server ? L"made" : L"-");
  }
  EXPECT_EQ(Noted(), L"released");
  WizardDriver program(kProgram);
  EXPECT_EQ(Noted(), L"made") << "a stand-alone start has one, too";
  program.Press("c");
  program.WaitForEnd();
  EXPECT_EQ(Noted(), L"released");
  const std::string log = ReadBytes(kLog);
  EXPECT_NE(log.find("\r\nCall Stack:\r\n    CFileGroups:GetAppPath\r\n"), std::string::npos) << log;
}

TEST_F(LogTest, AWizardWithoutAWindowSaysSo) {
  SetEnvironmentVariableA("BXVBWIZ_NO_WINDOW", "1");  // to the monitor
  const ComPtr<IDispatch> app = Create(L"BX6VBWiz.Application");
  const Called failed = Call(app.Get(), L"Run");
  EXPECT_EQ(failed.code, static_cast<HRESULT>(0x800A005B));  // run-time error 91
  EXPECT_EQ(failed.text, L"Cannot make the wizard's window");
  WizardDriver program(kProgram + " /IABCD");
  EXPECT_EQ(program.WaitForMessage(), "Cannot make the wizard's window");
  program.Answer(IDOK);
  EXPECT_EQ(program.WaitForEnd(), 1U);
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kProduct + L"ABCD", L"ReturnCode"), L"0") << "nobody ended it";
  SetEnvironmentVariableA("BXVBWIZ_NO_WINDOW", nullptr);
  Pressing("c", [&] { EXPECT_EQ(Call(app.Get(), L"Run").code, S_OK); });
}

}  // namespace
}  // namespace bxvbwiz
