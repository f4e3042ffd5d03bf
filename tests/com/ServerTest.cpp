// After windows.h:
#include "com/Host.h"
// which these need.
#include <ocidl.h>
#include <psapi.h>

#include <functional>
#include <thread>

namespace bxvbwiz {
namespace {

constexpr HRESULT kPathNotFound = static_cast<HRESULT>(0x800A004C);  // run-time error 76

using ServerTest = HostTest;

ComPtr<IUnknown> Query(IUnknown* object, REFIID id) {
  ComPtr<IUnknown> found;
  EXPECT_EQ(object->QueryInterface(id, found.ReceiveVoid()), S_OK);
  return found;
}

TEST_F(ServerTest, QueryInterfaceKeepsItsRulesInEveryClass) {
  const IID dual[] = {IID_IApplication, IID_ISystemInfo, IID_IFileGroups, IID_IComponents};
  for (std::size_t i = 0; i < kProgIds.size(); ++i) {
    const ComPtr<IDispatch> object = Create(kProgIds[i]);
    const ComPtr<IUnknown> identity = Query(object.Get(), IID_IUnknown);
    for (const IID& id :
         {IID_IUnknown, IID_IDispatch, dual[i], IID_ISupportErrorInfo, IID_IProvideClassInfo}) {
      const ComPtr<IUnknown> found = Query(object.Get(), id);
      EXPECT_EQ(Query(found.Get(), IID_IUnknown).Get(), identity.Get());
      EXPECT_EQ(Query(found.Get(), dual[i]).Get(), Query(object.Get(), dual[i]).Get());
    }
    void* none = this;
    EXPECT_EQ(object->QueryInterface(IID_IStream, &none), E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  }
}

TEST_F(ServerTest, FactoriesRefuseAggregationAndUnknownClasses) {
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(server_.ClassObject(CLSID_StdMarshal, IID_IClassFactory, factory.ReceiveVoid()),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(server_.ClassObject(CLSID_Application, IID_IClassFactory, nullptr), E_POINTER);
  ASSERT_EQ(server_.ClassObject(CLSID_Application, IID_IClassFactory, factory.ReceiveVoid()), S_OK);
  void* object = this;
  EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, &object), E_NOINTERFACE);
}

TEST_F(ServerTest, IsInUseWhileAFactoryAnObjectOrALockOfAnyThreadLives) {
  const auto onAnotherThread = [](const std::function<void()>& work) { std::thread(work).join(); };
  const auto factory = [this] {
    ComPtr<IClassFactory> made;
    EXPECT_EQ(server_.ClassObject(CLSID_CFileGroups, IID_IClassFactory, made.ReceiveVoid()), S_OK);
    return made;
  };
  EXPECT_EQ(server_.Call("DllCanUnloadNow"), S_OK);
  ComPtr<IClassFactory> held = factory();
  EXPECT_EQ(server_.Call("DllCanUnloadNow"), S_FALSE);
  EXPECT_EQ(held->LockServer(TRUE), S_OK);
  onAnotherThread([&] { held = ComPtr<IClassFactory>(); });
  EXPECT_EQ(server_.Call("DllCanUnloadNow"), S_FALSE) << "locked";
  onAnotherThread([&] { EXPECT_EQ(factory()->LockServer(FALSE), S_OK); });
  EXPECT_EQ(server_.Call("DllCanUnloadNow"), S_OK);
  EXPECT_EQ(factory()->LockServer(FALSE), S_OK) << "one too many";
  ComPtr<IDispatch> object = Create(L"BX6VBWiz.CSystemInfo");
  EXPECT_EQ(Call(object.Get(), L"WinDir").code, S_OK) << "the thread's server is a new one";
  EXPECT_EQ(server_.Call("DllCanUnloadNow"), S_FALSE);
  object = ComPtr<IDispatch>();
  EXPECT_EQ(server_.Call("DllCanUnloadNow"), S_OK);
}

TEST_F(ServerTest, TenThousandObjectsLeaveNothing) {
  const auto held = [] {
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    return std::make_pair(memory.PagefileUsage, handles);
  };
  const ComPtr<IDispatch> kept = Create(L"BX6VBWiz.CSystemInfo");
  const auto makeMany = [&](int count) {
    for (int i = 0; i < count; ++i) Call(Create(kProgIds[static_cast<std::size_t>(i) % 4]).Get(), L"WinDir");
  };
  makeMany(500);
  const auto before = held();
  makeMany(10000);
  constexpr SIZE_T kNoise = 1 << 20;
  EXPECT_LT(held().first, before.first + kNoise);
  EXPECT_EQ(held().second, before.second);
}

TEST_F(ServerTest, MembersStandInTheirOrder) {
  const wchar_t* const members[] = {
      L" ID ID Project Project ShowPage2 ShowPage2 AppName AppName VBScript VBScript StillExecuting "
      L"ReturnCode"
      L" ProjectFile Run",
      L" CommonFilesPath CommonFilesSysPath MSDAOPath ProgramFilesPath WinDir WinSysDir IsWindows95 "
      L"IsWindows98"
      L" IsWindowsNT351 IsWindowsNT4 IsWindowsNT5 WinVerMajor WinVerMinor WinBuildNumber WinPlatformId"
      L" WinCSDVersion",
      L" ConvertDestMacroToBXDestSymbol ConvertBXDestSymbolToPath ConvertPathToBXDestSymbol"
      L" ConvertRegisterMacro ResolveLinkPath SearchForSourceFile SearchForDestPath AppPath GetAppPath"
      L" GetFileGroupInfo CreateFileGroupName IsSharedFile CheckCoreCompIni CheckSelfRegister CreateFileGroup"
      L" AddFileGroupToProject AddFileGroupToComponent",
      L" CreateComponentName CreateComponent AddScriptDefinedVariable"};
  constexpr std::size_t kOfDispatch = 7;  // methods of IUnknown and IDispatch
  for (std::size_t i = 0; i < kProgIds.size(); ++i) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(Create(kProgIds[i])->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Receive()), S_OK);
    std::wstring found;
    FUNCDESC* function = nullptr;
    for (UINT index = 0; SUCCEEDED(info->GetFuncDesc(index, &function)); ++index) {
      OwnedVariant name = Variant(L"");
      info->GetDocumentation(function->memid, &name.bstrVal, nullptr, nullptr, nullptr);
      const auto place = static_cast<std::size_t>(function->oVft) / sizeof(void*);
      if (place >= kOfDispatch) found += L" " + std::wstring(name.bstrVal);
      info->ReleaseFuncDesc(function);
    }
    EXPECT_EQ(found, members[i]);
  }
}

TEST_F(ServerTest, LateBoundCallsSayWhatIsWrong) {
  const ComPtr<IDispatch> app = Create(L"BX6VBWiz.Application");
  const ComPtr<IDispatch> groups = Create(L"BX6VBWiz.CFileGroups");
  const OwnedVariant object = Variant(app.Get());
  const OwnedVariant text = Variant(L"$(APPPATH)");
  struct Case {
    IDispatch* object;
    const wchar_t* member;
    std::vector<VARIANT> arguments;
    WORD flags;
    HRESULT code;
    UINT wrongArgument;  // 99: none
  };
  const WORD call = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  const Case cases[] = {
      {app.Get(), L"sTILLeXECUTING", {}, call, S_OK, 99},
      {app.Get(), L"Missing", {}, call, DISP_E_UNKNOWNNAME, 99},
      {app.Get(), L"ReturnCode", {text}, DISPATCH_PROPERTYPUT, DISP_E_MEMBERNOTFOUND, 99},
      {app.Get(), L"ShowPage2", {text}, DISPATCH_PROPERTYPUT, DISP_E_TYPEMISMATCH, 0},
      {groups.Get(), L"SearchForDestPath", {text}, call, DISP_E_BADPARAMCOUNT, 99},
      {groups.Get(), L"IsSharedFile", {text, text}, call, DISP_E_TYPEMISMATCH, 1},
      {groups.Get(), L"IsSharedFile", {object, object}, call, DISP_E_TYPEMISMATCH, 0},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(testing::Message() << row.member << " " << row.arguments.size());
    const Called called = Call(row.object, row.member, row.arguments, row.flags);
    EXPECT_EQ(called.code, row.code);
    EXPECT_EQ(called.wrongArgument, row.wrongArgument);
  }
  EXPECT_EQ(Call(groups.Get(), L"IsSharedFile", {text, text}).text,
            L"IsSharedFile: the argument file has the wrong type");
  const Called cut =
      Call(groups.Get(), L"CreateFileGroup", {Variant(std::wstring(L"C:\\windows\0x", 12)), object});
  EXPECT_EQ(cut.code, kPathNotFound) << "nothing is written where a folder's name was cut";
}

TEST_F(ServerTest, TextsComeBackAsTheyWereSet) {
  const ComPtr<IDispatch> app = Create(L"BX6VBWiz.Application");
  for (const std::wstring& text : {std::wstring(), std::wstring(3000000, L'x'), std::wstring(L"a\0b", 3),
                                   std::wstring(L"\u53d7\u6ce8 \xD83D\xDE00")}) {
    ASSERT_EQ(Call(app.Get(), L"AppName", {Variant(text)}, DISPATCH_PROPERTYPUT).code, S_OK);
    EXPECT_EQ(Call(app.Get(), L"AppName").text, text);
  }
  ComPtr<IApplication> early;
  app->QueryInterface(IID_IApplication, early.ReceiveVoid());
  EXPECT_EQ(early->put_AppName(nullptr), S_OK) << "a null text is the empty one";
  EXPECT_EQ(Call(app.Get(), L"AppName").text, L"");
  EXPECT_EQ(early->get_AppName(nullptr), E_POINTER);
  OwnedVariant number;
  number.vt = VT_I4;
  number.lVal = 12;
  EXPECT_EQ(Call(app.Get(), L"ID", {number}, DISPATCH_PROPERTYPUT).code, S_OK);
  EXPECT_EQ(Call(app.Get(), L"ID").text, L"12") << "a number becomes its text";
}

TEST_F(ServerTest, ArgumentsByReferenceTakeWhatTheMethodChanges) {
  const ComPtr<IDispatch> groups = Create(L"BX6VBWiz.CFileGroups");
  OwnedVariant name = Variant(L"kernel32.dll");
  VARIANT byName{};
  byName.vt = VT_BYREF | VT_BSTR;
  byName.pbstrVal = &name.bstrVal;
  SHORT resolves = 0;
  VARIANT byNumber{};
  byNumber.vt = VT_BYREF | VT_I2;
  byNumber.piVal = &resolves;
  const BSTR before = name.bstrVal;
  EXPECT_EQ(Call(groups.Get(), L"ResolveLinkPath", {Variant(L"C:\\windows"), byName, byNumber}).code, S_OK);
  EXPECT_EQ(resolves, -1);
  EXPECT_EQ(name.bstrVal, before) << "a text stays the host's";
}

TEST_F(ServerTest, AnErrorIsTheHostsAndTheObjectGoesOn) {
  const ComPtr<IDispatch> groups = Create(L"BX6VBWiz.CFileGroups");
  const Called aborted = Call(groups.Get(), L"CheckCoreCompIni", {Variant(L"a.dll")});
  EXPECT_EQ(aborted.code, E_ABORT) << "the product is not installed";
  EXPECT_NE(aborted.text.find(L"6.0\\Main cannot be found in the Registry"), std::wstring::npos);
  EXPECT_EQ(Call(groups.Get(), L"CheckSelfRegister", {Variant(L"a.TLB")}).text, L"3");
}

}  // namespace
}  // namespace bxvbwiz
