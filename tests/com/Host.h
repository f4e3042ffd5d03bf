#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "com/BX6VBWiz.h"
#include "com/ComPtr.h"
#include "text/win32/WideText.h"

// What hosts of the automation server share: a registered server, and late-bound calls.
namespace bxvbwiz {

// With backslashes.
std::wstring WindowsPath(std::wstring path);

inline const std::wstring kServer = WindowsPath(L"Z:" + Widen(SHIPPED_FOLDER) + L"\\Bx6vbwiz.dll");

// The creatable classes by ProgID.
inline const std::vector<std::wstring> kProgIds = {L"BX6VBWiz.Application", L"BX6VBWiz.CSystemInfo",
                                                   L"BX6VBWiz.CFileGroups", L"BX6VBWiz.CComponents"};

// The server, loaded and registered while this lives.
class RegisteredServer {
 public:
  RegisteredServer();
  ~RegisteredServer();
  HRESULT Call(const char* exported) const;
  HRESULT ClassObject(REFCLSID id, REFIID interfaceId, void** object) const;

 private:
  HMODULE module_ = LoadLibraryW(kServer.c_str());
};

class HostTest : public testing::Test {
 protected:
  // By its ProgID, through CoCreateInstance.
  static ComPtr<IDispatch> Create(const std::wstring& progId);

  struct Apartment {
    Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Apartment() { CoUninitialize(); }
  } apartment_;
  RegisteredServer server_;
};

OwnedVariant Variant(const std::wstring& text);
OwnedVariant Variant(IDispatch* object);

// What a late-bound call gives.
struct Called {
  HRESULT code = E_FAIL;  // an exception's own code
  std::wstring text;      // the result, or the exception's description
  UINT wrongArgument = 99;
};
// The arguments stand in their order; a property is put with DISPATCH_PROPERTYPUT.
Called Call(IDispatch* object, const std::wstring& member, std::vector<VARIANT> arguments = {},
            WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET);
inline HRESULT Put(IDispatch* object, const std::wstring& property, const std::wstring& value) {
  return Call(object, property, {Variant(value)}, DISPATCH_PROPERTYPUT).code;
}

// The text of a registry value; "-" when there is none.
std::wstring RegistryText(HKEY root, const std::wstring& key, const std::wstring& name = L"");
void SetRegistryText(HKEY root, const std::wstring& key, const std::wstring& name, const std::wstring& text);

}  // namespace bxvbwiz
