#include "com/Registration.h"

#include <string>

#include "com/BX6VBWiz.h"
#include "com/Classes.h"
#include "com/Module.h"
// after windows.h
#include <olectl.h>

// In the import library, but not in the cross compiler's header.
WINOLEAUTAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* helpFolder);
WINOLEAUTAPI UnRegisterTypeLibForUser(REFGUID library, WORD majorVersion, WORD minorVersion, LCID locale,
                                      SYSKIND system);

namespace bxvbwiz {
namespace {

// The classes, below the root of the machine and of the user.
constexpr const wchar_t* kClasses = L"Software\\Classes\\";
#ifdef _WIN64
constexpr SYSKIND kSystem = SYS_WIN64;
constexpr const wchar_t* kSystemName = L"win64";
constexpr REGSAM kOtherView = KEY_WOW64_32KEY;
#else
constexpr SYSKIND kSystem = SYS_WIN32;
constexpr const wchar_t* kSystemName = L"win32";
constexpr REGSAM kOtherView = KEY_WOW64_64KEY;
#endif
// Characters of the longest path (UNICODE_STRING of ntdef.h) with a NUL.
constexpr DWORD kPathBuffer = 32768;
// The version in the type library's description.
constexpr USHORT kMajorVersion = 1;
constexpr USHORT kMinorVersion = 0;

enum class Scope { Machine, User };

HKEY RootOf(Scope scope) {
  return scope == Scope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring GuidText(REFGUID id) {
  wchar_t text[39];  // braces, 32 digits, 4 hyphens, NUL
  StringFromGUID2(id, text, static_cast<int>(std::size(text)));
  return text;
}

std::wstring LibraryVersion() {
  return std::to_wstring(kMajorVersion) + L"." + std::to_wstring(kMinorVersion);
}

// Writes, reads and deletes below one scope's classes, and keeps the first failure.
class ClassesKey {
 public:
  explicit ClassesKey(Scope scope) : root_(RootOf(scope)) {}

  void Write(const std::wstring& path, const wchar_t* name, const std::wstring& text) {
    if (error_ != ERROR_SUCCESS) return;
    HKEY key = nullptr;
    error_ = RegCreateKeyExW(root_, (kClasses + path).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                             KEY_SET_VALUE, nullptr, &key, nullptr);
    if (error_ != ERROR_SUCCESS) return;
    const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    error_ = RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                            static_cast<DWORD>(size));
    RegCloseKey(key);
  }

  void DeleteTree(const std::wstring& path) {
    const LONG error = RegDeleteTreeW(root_, (kClasses + path).c_str());
    if (error != ERROR_FILE_NOT_FOUND && error_ == ERROR_SUCCESS) error_ = error;
  }

  // The default text of a key in one view of the registry (0: that of this program); empty when it has none.
  std::wstring Read(const std::wstring& path, REGSAM view = 0) const {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root_, (kClasses + path).c_str(), 0, KEY_QUERY_VALUE | view, &key) != ERROR_SUCCESS)
      return {};
    DWORD size = kPathBuffer * sizeof(wchar_t);
    std::wstring text(kPathBuffer, L'\0');
    const LONG error = RegGetValueW(key, nullptr, nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &size);
    RegCloseKey(key);
    return error == ERROR_SUCCESS ? std::wstring(text.c_str()) : std::wstring();
  }

  HRESULT Result() const { return HRESULT_FROM_WIN32(static_cast<DWORD>(error_)); }

 private:
  HKEY root_;
  LONG error_ = ERROR_SUCCESS;
};

HRESULT WriteClasses(Scope scope, const std::wstring& modulePath) {
  ClassesKey classes(scope);
  const std::wstring version = LibraryVersion();
  for (const ServerClass& entry : kServerClasses) {
    const std::wstring id = GuidText(*entry.id);
    const std::wstring key = L"CLSID\\" + id;
    classes.Write(key, nullptr, entry.description);
    classes.Write(key + L"\\InprocServer32", nullptr, modulePath);
    classes.Write(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    classes.Write(key + L"\\ProgID", nullptr, entry.progId);
    classes.Write(key + L"\\TypeLib", nullptr, GuidText(LIBID_BX6VBWiz));
    classes.Write(key + L"\\Version", nullptr, version);
    classes.Write(key + L"\\Programmable", nullptr, L"");
    classes.Write(entry.progId, nullptr, entry.description);
    classes.Write(std::wstring(entry.progId) + L"\\CLSID", nullptr, id);
  }
  return classes.Result();
}

HRESULT RegisterLibrary(Scope scope, std::wstring modulePath) {
  ComPtr<ITypeLib> library;
  const HRESULT loaded = LoadTypeLibEx(modulePath.c_str(), REGKIND_NONE, library.Receive());
  if (FAILED(loaded)) return loaded;
  return scope == Scope::Machine ? RegisterTypeLib(library.Get(), modulePath.data(), nullptr)
                                 : RegisterTypeLibForUser(library.Get(), modulePath.data(), nullptr);
}

std::wstring LongPath(const std::wstring& path) {
  std::wstring full(kPathBuffer, L'\0');
  full.resize(GetLongPathNameW(path.c_str(), full.data(), kPathBuffer));
  return full.empty() ? path : full;
}

// Whether what a registration names is this module, or nothing: then nobody else needs it.
bool IsOurs(const std::wstring& registered, const std::wstring& modulePath) {
  return registered.empty() || CompareStringOrdinal(LongPath(registered).c_str(), -1,
                                                    LongPath(modulePath).c_str(), -1, TRUE) == CSTR_EQUAL;
}

// Whether the other half of a 64-bit system has the class too. Both have one view of the names in common.
bool IsInOtherView(const ClassesKey& classes, const std::wstring& server) {
  const std::wstring other = classes.Read(server, kOtherView);
  return !other.empty() && other != classes.Read(server);
}

HRESULT UnregisterLibrary(Scope scope) {
  const auto unregister = scope == Scope::Machine ? &UnRegisterTypeLib : &UnRegisterTypeLibForUser;
  const HRESULT library = unregister(LIBID_BX6VBWiz, kMajorVersion, kMinorVersion, LOCALE_NEUTRAL, kSystem);
  // Wine gives the last one.
  const bool wasMissing =
      library == TYPE_E_REGISTRYACCESS || library == TYPE_E_LIBNOTREGISTERED || library == E_INVALIDARG;
  return wasMissing ? S_OK : library;
}

// Removes what names this module. Another copy of it may have been registered since.
HRESULT Unregister(Scope scope, const std::wstring& modulePath) {
  ClassesKey classes(scope);
  for (const ServerClass& entry : kServerClasses) {
    const std::wstring key = L"CLSID\\" + GuidText(*entry.id);
    const std::wstring server = key + L"\\InprocServer32";
    if (!IsOurs(classes.Read(server), modulePath)) continue;
    if (!IsInOtherView(classes, server)) classes.DeleteTree(entry.progId);
    classes.DeleteTree(key);
  }
  const std::wstring library = L"TypeLib\\" + GuidText(LIBID_BX6VBWiz) + L"\\" + LibraryVersion() + L"\\0\\";
  const std::wstring registered = classes.Read(library + kSystemName);
  if (registered.empty() || !IsOurs(registered, modulePath)) return classes.Result();
  const HRESULT result = UnregisterLibrary(scope);
  return FAILED(classes.Result()) ? classes.Result() : result;
}

HRESULT RegisterFor(Scope scope, const std::wstring& modulePath) {
  HRESULT result = WriteClasses(scope, modulePath);
  if (SUCCEEDED(result)) result = RegisterLibrary(scope, modulePath);
  if (FAILED(result)) Unregister(scope, modulePath);
  return result;
}

}  // namespace

HRESULT RegisterServer() noexcept {
  try {
    const std::wstring modulePath = ThisModulePath();
    if (SUCCEEDED(RegisterFor(Scope::Machine, modulePath))) return S_OK;
    return RegisterFor(Scope::User, modulePath);
  } catch (...) {
    return SELFREG_E_CLASS;
  }
}

HRESULT UnregisterServer() noexcept {
  try {
    const std::wstring modulePath = ThisModulePath();
    const HRESULT user = Unregister(Scope::User, modulePath);
    const HRESULT machine = Unregister(Scope::Machine, modulePath);
    return FAILED(machine) ? machine : user;
  } catch (...) {
    return SELFREG_E_CLASS;
  }
}

}  // namespace bxvbwiz
