// After windows.h:
#include "com/Host.h"
// which these need.
#include <ocidl.h>
#include <psapi.h>

#include <functional>
#include <thread>

namespace bxvbwiz {
namespace {

using ServerTest = HostTest;

ComPtr<IUnknown> Query(IUnknown* object, REFIID id) {
  ComPtr<IUnknown> found;
  EXPECT_EQ(object->QueryInterface(id, found.ReceiveVoid()), S_OK);
  return found;
}

TEST_F(ServerTest, QueryInterfaceKeepsItsRulesInEveryClass) {
  for (const auto& [progId, dual] : kClasses) {
    const ComPtr<IDispatch> object = Create(progId, IID_IDispatch);
    const ComPtr<IUnknown> identity = Query(object.Get(), IID_IUnknown);
    for (const IID& id : {IID_IUnknown, IID_IDispatch, dual, IID_ISupportErrorInfo, IID_IProvideClassInfo}) {
      const ComPtr<IUnknown> found = Query(object.Get(), id);
      EXPECT_EQ(Query(found.Get(), IID_IUnknown).Get(), identity.Get());
      EXPECT_EQ(Query(found.Get(), dual).Get(), Query(object.Get(), dual).Get());
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
  ComPtr<IDispatch> object = Create(L"BX6VBWiz.CSystemInfo", IID_IDispatch);  // of a new server
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
  const ComPtr<IDispatch> kept = Create(L"BX6VBWiz.CSystemInfo", IID_IDispatch);
  const auto makeMany = [&](int count) {
    for (int i = 0; i < count; ++i) {
      const auto& [progId, dual] = kClasses[i % 4];
      OLECHAR missing[] = L"Missing";
      LPOLESTR names[] = {missing};
      DISPID id = 0;
      EXPECT_NE(Create(progId, dual)->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &id), S_OK);
    }
  };
  makeMany(500);
  const auto before = held();
  makeMany(10000);
  constexpr SIZE_T kNoise = 1 << 20;
  EXPECT_LT(held().first, before.first + kNoise);
  EXPECT_EQ(held().second, before.second);
}

TEST_F(ServerTest, AnArgumentByReferenceTakesWhatTheMethodChanges) {
  Bstr folder(L"C:\\windows");
  Bstr file(L"kernel32.dll");
  SHORT resolves = 0;
  VARIANT arguments[3] = {};  // the last one first
  arguments[0].vt = VT_BYREF | VT_I2;
  arguments[0].piVal = &resolves;
  arguments[1] = file;
  arguments[2] = folder;
  DISPPARAMS parameters{arguments, nullptr, 3, 0};
  constexpr DISPID kResolveLinkPath = 5;
  EXPECT_EQ(Create(L"BX6VBWiz.CFileGroups", IID_IDispatch)
                ->Invoke(kResolveLinkPath, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &parameters, nullptr,
                         nullptr, nullptr),
            S_OK);
  EXPECT_EQ(resolves, -1);
}

TEST_F(ServerTest, AnErrorIsTheHostsAndTheObjectGoesOn) {
  const ComPtr<IDispatch> object = Create(L"BX6VBWiz.CFileGroups", IID_IFileGroups);
  auto& groups = *static_cast<IFileGroups*>(object.Get());
  Bstr file(L"a.TLB");
  Bstr found;
  EXPECT_EQ(groups.CheckCoreCompIni(&file.bstrVal, &found.bstrVal), E_ABORT)
      << "the product is not installed";
  ComPtr<IErrorInfo> error;
  ASSERT_EQ(GetErrorInfo(0, error.Receive()), S_OK);
  Bstr text;
  error->GetDescription(&text.bstrVal);
  EXPECT_NE(text.Text().find(L"6.0\\Main cannot be found in the Registry"), std::wstring::npos);
  SHORT code = 0;
  EXPECT_EQ(groups.CheckSelfRegister(&file.bstrVal, &code), S_OK);
  EXPECT_EQ(code, 3);
  EXPECT_EQ(groups.CheckSelfRegister(&file.bstrVal, nullptr), E_POINTER);
}

}  // namespace
}  // namespace bxvbwiz
