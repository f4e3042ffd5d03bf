#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "com/BX6VBWiz.h"
#include "com/ComPtr.h"
#include "text/win32/WideText.h"

// What hosts of the automation server share.
namespace bxvbwiz {

// With backslashes.
inline std::wstring WindowsPath(std::wstring path) {
  for (wchar_t& c : path) {
    if (c == L'/') c = L'\\';
  }
  return path;
}

inline const std::wstring kServer = WindowsPath(L"Z:" + Widen(SHIPPED_FOLDER) + L"\\Bx6vbwiz.dll");

// The creatable classes by ProgID, and their interfaces.
inline const std::pair<const wchar_t*, IID> kClasses[] = {{L"BX6VBWiz.Application", IID_IApplication},
                                                          {L"BX6VBWiz.CSystemInfo", IID_ISystemInfo},
                                                          {L"BX6VBWiz.CFileGroups", IID_IFileGroups},
                                                          {L"BX6VBWiz.CComponents", IID_IComponents}};

// The server, loaded and registered while this lives.
class RegisteredServer {
 public:
  explicit RegisteredServer(const std::wstring& path = kServer) : module_(LoadLibraryW(path.c_str())) {
    EXPECT_EQ(Call("DllRegisterServer"), S_OK);
  }
  ~RegisteredServer() {
    EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
    FreeLibrary(module_);
  }
  HRESULT Call(const char* exported) const { return Exported<HRESULT(STDAPICALLTYPE*)()>(exported)(); }
  HRESULT ClassObject(REFCLSID id, REFIID interfaceId, void** object) const {
    return Exported<LPFNGETCLASSOBJECT>("DllGetClassObject")(id, interfaceId, object);
  }

 private:
  template <class Function>
  Function Exported(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }
  HMODULE module_;
};

class HostTest : public testing::Test {
 protected:
  // By its ProgID, through CoCreateInstance.
  static ComPtr<IDispatch> Create(const wchar_t* progId, const IID& interfaceId) {
    CLSID id{};
    EXPECT_EQ(CLSIDFromProgID(progId, &id), S_OK);
    ComPtr<IDispatch> object;
    EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, interfaceId, object.ReceiveVoid()), S_OK);
    return object;
  }
  static ComPtr<IApplication> CreateApplication() {
    return ComPtr<IApplication>(
        static_cast<IApplication*>(Create(L"BX6VBWiz.Application", IID_IApplication).Get()));
  }

  struct Apartment {
    Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Apartment() { CoUninitialize(); }
  } apartment_;
  RegisteredServer server_;
};

// A text of automation, freed with its owner.
class Bstr : public OwnedVariant {
 public:
  explicit Bstr(const std::wstring& text = L"") {
    vt = VT_BSTR;
    bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  }
  std::wstring Text() const { return {bstrVal, SysStringLen(bstrVal)}; }
};

// The text of a registry value; "-" when there is none.
inline std::wstring RegistryText(HKEY root, const std::wstring& key, const wchar_t* name = L"") {
  wchar_t text[1024] = L"";
  DWORD size = sizeof text;
  const LONG code = RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
  return code == ERROR_SUCCESS ? text : L"-";
}

}  // namespace bxvbwiz
