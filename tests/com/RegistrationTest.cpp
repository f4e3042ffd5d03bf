#include <set>

#include "com/Host.h"

namespace bxvbwiz {
namespace {

const std::wstring kRoot = L"Software\\Classes\\";
const std::wstring kApplicationId = L"CLSID\\{A663CDFE-5393-47E9-88A6-0016EBC38404}";

// Every key and value below a key, as paths.
void Collect(HKEY root, const std::wstring& path, std::set<std::wstring>& found) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  found.insert(path);
  wchar_t name[300];
  for (DWORD i = 0, size = 300; RegEnumValueW(key, i, name, &size, nullptr, nullptr, nullptr, nullptr) == 0;
       ++i, size = 300)
    found.insert(path + L" = " + name + L": " + RegistryText(root, path, name));
  for (DWORD i = 0, size = 300; RegEnumKeyExW(key, i, name, &size, nullptr, nullptr, nullptr, nullptr) == 0;
       ++i, size = 300)
    Collect(root, path + L"\\" + name, found);
  RegCloseKey(key);
}

std::set<std::wstring> RegistryKeys() {
  std::set<std::wstring> found;
  std::set<std::wstring> keys = {L"CLSID", L"Interface", L"TypeLib"};
  for (const auto& [progId, interfaceId] : kClasses) keys.insert(progId);
  for (const std::wstring& key : keys) {
    Collect(HKEY_LOCAL_MACHINE, kRoot + key, found);
    Collect(HKEY_CURRENT_USER, kRoot + key, found);
  }
  return found;
}

TEST(RegistrationTest, IsForTheMachineAndIsUndoneCompletely) {
  const std::set<std::wstring> before = RegistryKeys();
  {
    const RegisteredServer server;
    const std::wstring key = kRoot + kApplicationId;
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, key + L"\\InprocServer32"), kServer);
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, key + L"\\ProgID"), L"BX6VBWiz.Application");
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadRegTypeLib(LIBID_BX6VBWiz, 1, 0, LOCALE_NEUTRAL, library.Receive()), S_OK);
    const std::set<std::wstring> once = RegistryKeys();
    EXPECT_EQ(server.Call("DllRegisterServer"), S_OK);
    EXPECT_EQ(RegistryKeys(), once) << "twice is once";
    EXPECT_EQ(server.Call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(RegistryKeys(), before);
  }  // unregisters again
  EXPECT_EQ(RegistryKeys(), before);
}

TEST(RegistrationTest, IsForTheUserWhereTheMachineRefuses) {
  // Nothing lasting may be created below a key that is lost with the session.
  HKEY refusing = nullptr;
  const std::wstring key = kRoot + kApplicationId;
  ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_READ,
                            nullptr, &refusing, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(refusing);
  {
    const RegisteredServer server;
    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, key + L"\\InprocServer32"), kServer);
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, key + L"\\InprocServer32"), L"-");
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, kRoot + L"BX6VBWiz.CFileGroups"), L"-");
    const std::wstring id = RegistryText(HKEY_CURRENT_USER, kRoot + L"BX6VBWiz.CFileGroups\\CLSID");
    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kRoot + L"CLSID\\" + id + L"\\InprocServer32"), kServer);
  }
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, kRoot + L"BX6VBWiz.CFileGroups"), L"-");
}

TEST(RegistrationTest, UnregisteringLeavesWhatAnotherCopyHasRegistered) {
  const std::set<std::wstring> before = RegistryKeys();
  wchar_t folder[MAX_PATH];
  GetTempPathW(MAX_PATH, folder);
  const std::wstring copy = std::wstring(folder) + L"Other copy.dll";
  ASSERT_TRUE(CopyFileW(kServer.c_str(), copy.c_str(), FALSE));
  {
    const RegisteredServer first;
    const RegisteredServer second(copy);
    const std::set<std::wstring> registered = RegistryKeys();
    EXPECT_EQ(first.Call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(RegistryKeys(), registered);
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, kRoot + kApplicationId + L"\\InprocServer32"), copy);
  }
  EXPECT_EQ(RegistryKeys(), before);
  DeleteFileW(copy.c_str());
}

}  // namespace
}  // namespace bxvbwiz
