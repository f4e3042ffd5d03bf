#include <functional>

#include "com/Host.h"

BSTR MakeSetup(const wchar_t* project);  // of docs/automation.md

namespace bxvbwiz {
namespace {

const std::wstring kResults = L"SOFTWARE\\Borvex\\Borvex Professional\\6.0\\";

// What a host does from a timer while the wizard is shown.
std::function<void()> whileShown;

void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  whileShown();
}

void Press(char key) {
  PostMessageW(FindWindowExW(HWND_MESSAGE, nullptr, L"BxvbwizDriven", nullptr), WM_APP,
               static_cast<WPARAM>(key), 0);
}

class RunTest : public HostTest {
 protected:
  RunTest() : HostTest(kDrivenServer) {}
  ~RunTest() override { SetEnvironmentVariableA("BXVBWIZ_KEYS", nullptr); }

  InstalledProduct product_;
};

TEST_F(RunTest, ReturnsWhenTheWizardHasEndedByAnyWay) {
  struct Case {
    const char* keys;
    const wchar_t* showPage2;
    const wchar_t* returnCode;
    const wchar_t* projectFile;  // empty, or relative
  };
  const Case cases[] = {{"c", L"True", L"0", L""},
                        {"e", L"True", L"0", L""},
                        {"q", L"True", L"0", L""},
                        {"nnno", L"True", L"-1", L"Setups\\Demo\\Demo.bxp"},
                        {"nno", L"False", L"-1", L"Setups\\Demo-1\\Demo-1.bxp"},
                        {"nnc", L"False", L"0", L"Setups\\Demo-2\\Demo-2.bxp"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.keys);
    SetEnvironmentVariableA("BXVBWIZ_KEYS", row.keys);
    const ComPtr<IDispatch> groups = Create(L"BX6VBWiz.CFileGroups");
    const ComPtr<IDispatch> app = Create(L"BX6VBWiz.Application");
    ASSERT_EQ(
        Call(app.Get(), L"Project", {Variant(product_.Path(L"Src\\App.vbp"))}, DISPATCH_PROPERTYPUT).code,
        S_OK);
    EXPECT_EQ(Call(groups.Get(), L"AppPath").text, product_.Path(L"Src\\"))
        << "of the form that is there now";
    Call(app.Get(), L"ShowPage2", {Variant(row.showPage2)}, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(Call(app.Get(), L"StillExecuting").text, L"True");
    EXPECT_EQ(Call(app.Get(), L"Run").code, S_OK);
    EXPECT_EQ(Call(app.Get(), L"StillExecuting").text, L"False");
    EXPECT_EQ(Call(app.Get(), L"ReturnCode").text, row.returnCode);
    const std::wstring file = Call(app.Get(), L"ProjectFile").text;
    EXPECT_EQ(file, *row.projectFile == L'\0' ? L"" : product_.Path(row.projectFile));
    EXPECT_TRUE(file.empty() || product_.Exists(row.projectFile));
    EXPECT_EQ(Call(app.Get(), L"Run").code, S_OK) << "a wizard that has ended is not shown again";
  }
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kResults + L"0000", L"ReturnCode"), L"-")
      << "a host reads the properties instead";
}

TEST_F(RunTest, AFatalMessageEndsTheWizardAndKeepsTheReturnCode) {
  SetEnvironmentVariableA("BXVBWIZ_KEYS", "n");
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, (kResults + L"VBWiz").c_str());
  const ComPtr<IDispatch> app = Create(L"BX6VBWiz.Application");
  Call(app.Get(), L"Project", {Variant(product_.Path(L"Src\\App.vbp"))}, DISPATCH_PROPERTYPUT);
  EXPECT_EQ(Call(app.Get(), L"Run").code, S_OK);
  EXPECT_EQ(Call(app.Get(), L"StillExecuting").text, L"False");
  EXPECT_EQ(Call(app.Get(), L"ReturnCode").text, L"-1");
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
    Press('c');
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
  const ComPtr<IDispatch> component = Create(L"BX6VBWiz.CSystemInfo");
  CLSID id{};
  CLSIDFromProgID(L"BX6VBWiz.Application", &id);
  ComPtr<IDispatch> none;
  SetEnvironmentVariableA("BXVBWIZ_KEYS", "y");
  constexpr HRESULT kInvalidCall = static_cast<HRESULT>(0x800A0005);  // run-time error 5
  EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, none.ReceiveVoid()),
            kInvalidCall);
  SetEnvironmentVariableA("BXVBWIZ_KEYS", "c");
  const ComPtr<IDispatch> first = Create(L"BX6VBWiz.Application");
  const ComPtr<IDispatch> second = Create(L"BX6VBWiz.Application");
  for (IDispatch* app : {first.Get(), second.Get()}) {
    EXPECT_EQ(Call(app, L"Run").code, S_OK);
    EXPECT_EQ(Call(app, L"ReturnCode").text, L"0");
  }
}

TEST_F(RunTest, AStandAloneStartLeavesItsResultsInTheRegistry) {
  struct Case {
    const char* keys;
    const wchar_t* options;
    const wchar_t* id;
    const wchar_t* returnCode;
    const wchar_t* projectFile;
    DWORD exitCode = 0;
  };
  const Case cases[] = {
      {"nno", L"/IABCD /S0", L"ABCD", L"1", L"Setups\\Demo\\Demo.bxp"},
      {"c", L"/IABCD /S0", L"ABCD", L"0", L""},
      {"nnno", L"-S1 -AOrders /V", L"0000", L"1", L"Setups\\Orders\\Orders.bxp"},
      {"c", L"/S0 /I /V0", L"", L"0", L""},           // an empty ID
      {"nno", L"/IABCD /iEFGH", L"0000", L"0", L""},  // reported, which the view answers with Cancel
      {"c", L"/S0  /IABCD", L"0000", L"0", L""},      // two blanks end the options
      {"x", L"/IABCD", L"ABCD", L"0", L"", 1},        // nobody ended it
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(testing::Message() << row.keys << " " << row.options);
    SetEnvironmentVariableA("BXVBWIZ_KEYS", row.keys);
    const std::wstring project = product_.Path(L"Src\\App.vbp");
    for (const wchar_t* name : {L"ReturnCode", L"Project"})
      RegDeleteKeyValueW(HKEY_CURRENT_USER, (kResults + row.id).c_str(), name);
    EXPECT_EQ(RunProgram(L"\"" + kDrivenProgram + L"\" " + row.options + L" /P" + project), row.exitCode);
    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kResults + row.id, L"ReturnCode"), row.returnCode);
    const std::wstring file = *row.projectFile == L'\0' ? L"" : product_.Path(row.projectFile);
    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kResults + row.id, L"Project"), file);
  }
}

TEST_F(RunTest, ServesTheHostOfThePageThroughTheVtable) {
  for (const char* keys : {"nnno", "c"}) {
    SetEnvironmentVariableA("BXVBWIZ_KEYS", keys);
    BSTR made = MakeSetup(product_.Path(L"Src\\App.vbp").c_str());
    const std::wstring path = made == nullptr ? L"" : made;
    EXPECT_EQ(path, *keys == 'c' ? L"" : product_.Path(L"Setups\\Demo\\Demo.bxp"));
    SysFreeString(made);
  }
}

TEST_F(RunTest, ServesAScriptWithEveryMember) {
  SetEnvironmentVariableA("BXVBWIZ_KEYS", "nno");
  // A script that stops at an error ends with 0.
  EXPECT_EQ(RunProgram(L"C:\\windows\\system32\\cscript.exe //nologo \"" + kScript + L"\""), 42U);
}

}  // namespace
}  // namespace bxvbwiz
