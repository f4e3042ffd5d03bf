#include "com/Host.h"

#include <algorithm>

namespace bxvbwiz {

std::wstring WindowsPath(std::wstring path) {
  std::replace(path.begin(), path.end(), L'/', L'\\');
  return path;
}

RegisteredServer::RegisteredServer() {
  EXPECT_EQ(Call("DllRegisterServer"), S_OK);
}

RegisteredServer::~RegisteredServer() {
  EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
  FreeLibrary(module_);
}

HRESULT RegisteredServer::Call(const char* exported) const {
  using Function = HRESULT(STDAPICALLTYPE*)();
  const auto function =
      reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, exported)));
  return function == nullptr ? E_NOTIMPL : function();
}

HRESULT RegisteredServer::ClassObject(REFCLSID id, REFIID interfaceId, void** object) const {
  const auto function = reinterpret_cast<LPFNGETCLASSOBJECT>(
      reinterpret_cast<void*>(GetProcAddress(module_, "DllGetClassObject")));
  return function(id, interfaceId, object);
}

ComPtr<IDispatch> HostTest::Create(const std::wstring& progId) {
  CLSID id{};
  EXPECT_EQ(CLSIDFromProgID(progId.c_str(), &id), S_OK);
  ComPtr<IDispatch> object;
  EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.ReceiveVoid()), S_OK);
  return object;
}

OwnedVariant Variant(const std::wstring& text) {
  OwnedVariant value;
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return value;
}

OwnedVariant Variant(IDispatch* object) {
  OwnedVariant value;
  value.vt = VT_DISPATCH;
  value.pdispVal = object;
  if (object != nullptr) object->AddRef();
  return value;
}

Called Call(IDispatch* object, const std::wstring& member, std::vector<VARIANT> arguments, WORD flags) {
  Called called;
  std::wstring name = member;
  LPOLESTR names[] = {name.data()};
  DISPID id = DISPID_UNKNOWN;
  called.code = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(called.code)) return called;
  std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
  DISPID put = DISPID_PROPERTYPUT;
  const bool isPut = flags == DISPATCH_PROPERTYPUT;
  DISPPARAMS parameters{reversed.data(), &put, static_cast<UINT>(reversed.size()), isPut ? 1U : 0U};
  OwnedVariant result;
  EXCEPINFO exception{};
  called.code = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                               isPut ? nullptr : &result, &exception, &called.wrongArgument);
  if (called.code == DISP_E_EXCEPTION) {
    called.code = exception.scode;
    called.text = exception.bstrDescription == nullptr ? L"" : exception.bstrDescription;
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
  } else if (SUCCEEDED(VariantChangeTypeEx(&result, &result, LOCALE_INVARIANT, VARIANT_ALPHABOOL, VT_BSTR))) {
    called.text.assign(result.bstrVal == nullptr ? L"" : result.bstrVal, SysStringLen(result.bstrVal));
  }
  return called;
}

std::wstring RegistryText(HKEY root, const std::wstring& key, const std::wstring& name) {
  wchar_t text[1024] = L"";
  DWORD size = sizeof text;
  const LONG code = RegGetValueW(root, key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, text, &size);
  return code == ERROR_SUCCESS ? text : L"-";
}

void SetRegistryText(HKEY root, const std::wstring& key, const std::wstring& name, const std::wstring& text) {
  RegSetKeyValueW(root, key.c_str(), name.c_str(), REG_SZ, text.c_str(),
                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

}  // namespace bxvbwiz
