#include <functional>

#include "com/Host.h"
#include "platform/win32/WideText.h"
#include "TestMachine.h"

BSTR MakeSetup(const wchar_t* project);  // of docs/automation.md

namespace bxvbwiz {
namespace {

const std::wstring kProduct = L"SOFTWARE\\Borvex\\Borvex Professional\\6.0\\";

// What a host does from a timer while the wizard is shown.
std::function<void()> whileShown;

void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  whileShown();
}

void SetKeys(const char* keys) {
  SetEnvironmentVariableA("BXVBWIZ_KEYS", keys);
}

// The product is installed with a template, and there is a project that needs no rebuild.
class RunTest : public HostTest {
 protected:
  RunTest() : HostTest(kDrivenServer) {
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
    SetKeys(nullptr);
    for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) RegDeleteTreeW(root, L"SOFTWARE\\Borvex");
  }

  std::wstring Path(const std::wstring& relative) const {
    return WindowsPath(Widen(files_.Folder()) + L"\\drive_c\\" + relative);
  }

  ComPtr<IDispatch> CreateWithProject() const {
    ComPtr<IDispatch> app = Create(L"BX6VBWiz.Application");
    EXPECT_EQ(Put(app.Get(), L"Project", project_), S_OK);
    return app;
  }
  // The path of a setup project; empty without a name.
  std::wstring Setup(const std::wstring& name) const {
    return name.empty() ? L"" : Path(L"Setups\\" + name + L"\\" + name + L".bxp");
  }

  TestMachine files_;
  std::wstring project_ = Path(L"Src\\App.vbp");
};

// StillExecuting, ReturnCode and ProjectFile.
std::wstring Results(const ComPtr<IDispatch>& app) {
  return Call(app.Get(), L"StillExecuting").text + L" " + Call(app.Get(), L"ReturnCode").text + L" " +
         Call(app.Get(), L"ProjectFile").text;
}

TEST_F(RunTest, ReturnsWhenTheWizardHasEnded) {
  struct Case {
    const char* keys;
    const wchar_t* showPage2;
    const wchar_t* returnCode;
    const wchar_t* name;
  };
  const Case cases[] = {{"c", L"True", L"0", L""},
                        {"nnno", L"True", L"-1", L"Demo"},
                        {"nno", L"False", L"-1", L"Demo-1"},
                        {"nnc", L"False", L"0", L"Demo-2"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.keys);
    SetKeys(row.keys);
    const ComPtr<IDispatch> groups = Create(L"BX6VBWiz.CFileGroups");
    const ComPtr<IDispatch> app = CreateWithProject();
    EXPECT_EQ(Call(groups.Get(), L"AppPath").text, Path(L"Src\\")) << "of the form that is there now";
    Put(app.Get(), L"ShowPage2", row.showPage2);
    EXPECT_EQ(Results(app), L"True -1 ");
    EXPECT_EQ(Call(app.Get(), L"Run").code, S_OK);
    const std::wstring file = Setup(row.name);
    EXPECT_EQ(Results(app), std::wstring(L"False ") + row.returnCode + L" " + file);
    EXPECT_TRUE(file.empty() || GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(Call(app.Get(), L"Run").code, S_OK) << "a wizard that has ended is not shown again";
  }
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kProduct + L"0000", L"ReturnCode"), L"-")
      << "a host reads the properties instead";
}

TEST_F(RunTest, LetsMessagesFlowAndSurvivesCallsAndReleaseFromInside) {
  ComPtr<IDispatch> app = Create(L"BX6VBWiz.Application");
  Called polled;
  Called again;
  Called ofAnother;
  whileShown = [&] {
    polled = Call(app.Get(), L"StillExecuting");
    again = Call(app.Get(), L"Run");
    const ComPtr<IDispatch> other = Create(L"BX6VBWiz.Application");
    ofAnother = Call(other.Get(), L"Run");
    app = ComPtr<IDispatch>();
    PostThreadMessageW(GetCurrentThreadId(), WM_APP, 'c', 0);
  };
  SetTimer(nullptr, 0, 10, &OnTimer);
  IDispatch* const running = app.Get();
  EXPECT_EQ(Call(running, L"Run").code, S_OK);
  EXPECT_FALSE(app) << "the timer has run";
  EXPECT_EQ(polled.text, L"True");
  constexpr HRESULT kFormShown = static_cast<HRESULT>(0x800A0190);  // run-time error 400
  EXPECT_EQ(again.code, kFormShown);
  EXPECT_EQ(ofAnother.code, kFormShown);
  EXPECT_EQ(server_.Call("DllCanUnloadNow"), S_OK) << "nothing of the run is left";
}

class ShippedRunTest : public HostTest {
 protected:
  ShippedRunTest() : HostTest(kShippedServer) {}
};

TEST_F(ShippedRunTest, ShowsAWindowUntilItIsClosed) {
  const ComPtr<IDispatch> app = Create(L"BX6VBWiz.Application");
  bool shown = false;
  whileShown = [&] {
    HWND window = FindWindowW(nullptr, L"Visual Basic Project Wizard - Welcome");
    shown = IsWindowVisible(window) != FALSE;
    PostMessageW(window, WM_CLOSE, 0, 0);
  };
  SetTimer(nullptr, 0, 10, &OnTimer);
  EXPECT_EQ(Call(app.Get(), L"Run").code, S_OK);
  EXPECT_TRUE(shown);
  EXPECT_EQ(Call(app.Get(), L"ReturnCode").text, L"0");
}

TEST_F(RunTest, AnObjectThatLostTheFormOrFollowsOneThatFailedIsRunInANewOne) {
  SetKeys("y");
  ComPtr<IDispatch> none;
  constexpr HRESULT kInvalidCall = static_cast<HRESULT>(0x800A0005);  // run-time error 5
  EXPECT_EQ(
      CoCreateInstance(CLSID_Application, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, none.ReceiveVoid()),
      kInvalidCall);
  SetKeys("c");
  const ComPtr<IDispatch> both[] = {Create(L"BX6VBWiz.Application"), Create(L"BX6VBWiz.Application")};
  for (const ComPtr<IDispatch>& app : both) {
    EXPECT_EQ(Call(app.Get(), L"Run").code, S_OK);
    EXPECT_EQ(Results(app), L"False 0 ");
  }
}

TEST_F(RunTest, AStandAloneStartLeavesItsResultsInTheRegistry) {
  struct Case {
    const char* keys;
    const wchar_t* options;
    const wchar_t* id;
    const wchar_t* returnCode;
    const wchar_t* name;
    DWORD exitCode = 0;
  };
  const Case cases[] = {
      {"nno", L"/IABCD /S0", L"ABCD", L"1", L"Demo"},
      {"c", L"/IABCD /S0", L"ABCD", L"0", L""},
      {"nnno", L"-S1 -AOrders /V", L"0000", L"1", L"Orders"},
      {"x", L"/IABCD", L"ABCD", L"0", L"", 1},  // nobody ended it
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(testing::Message() << row.keys << " " << row.options);
    SetKeys(row.keys);
    RegDeleteTreeW(HKEY_CURRENT_USER, (kProduct + row.id).c_str());
    EXPECT_EQ(RunProgram(L"\"" + kDrivenProgram + L"\" " + row.options + L" /P" + project_), row.exitCode);
    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kProduct + row.id, L"ReturnCode"), row.returnCode);
    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kProduct + row.id, L"Project"), Setup(row.name));
  }
}

TEST_F(RunTest, ServesTheHostOfThePageThroughTheVtable) {
  for (const auto& [keys, name] : {std::pair("nnno", L"Demo"), std::pair("c", L"")}) {
    SetKeys(keys);
    OwnedVariant made;
    made.bstrVal = MakeSetup(project_.c_str());
    made.vt = VT_BSTR;
    EXPECT_EQ(made.bstrVal == nullptr ? L"" : made.bstrVal, Setup(name));
  }
}

TEST_F(RunTest, ServesAScriptWithEveryMember) {
  SetKeys("nno");
  // A script that stops at an error ends with 0.
  EXPECT_EQ(RunProgram(L"C:\\windows\\system32\\cscript.exe //nologo \"" + kScript + L"\" " + Path(L"")),
            42U);
}

}  // namespace
}  // namespace bxvbwiz
