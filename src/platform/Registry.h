#pragma once

#include <cstdint>
#include <string>

#include "platform/SystemError.h"

namespace bxvbwiz {

// An open key, or one of the root constants (negative in this signed reading, as HKEY_LOCAL_MACHINE =
// 0x80000002 is).
using RegistryHandle = std::int32_t;

// A predefined key, as HKEY_... in winreg.h.
struct PredefinedKey {
  const char* name;
  RegistryHandle handle;
};
constexpr RegistryHandle RootHandle(std::uint32_t constant) {
  return static_cast<RegistryHandle>(constant);
}
constexpr RegistryHandle kHKeyClassesRoot = RootHandle(0x80000000);
constexpr RegistryHandle kHKeyCurrentUser = RootHandle(0x80000001);
constexpr RegistryHandle kHKeyLocalMachine = RootHandle(0x80000002);
constexpr RegistryHandle kHKeyUsers = RootHandle(0x80000003);
constexpr RegistryHandle kHKeyPerformanceData = RootHandle(0x80000004);
// Those that the wizard knows by name.
inline constexpr PredefinedKey kPredefinedKeys[] = {
    {"HKEY_CLASSES_ROOT", kHKeyClassesRoot},         {"HKEY_CURRENT_USER", kHKeyCurrentUser},
    {"HKEY_LOCAL_MACHINE", kHKeyLocalMachine},       {"HKEY_USERS", kHKeyUsers},
    {"HKEY_PERFORMANCE_DATA", kHKeyPerformanceData},
};

// Access rights, as KEY_... in winnt.h.
constexpr std::uint32_t kKeyQueryValue = 1;
constexpr std::uint32_t kKeySetValue = 2;
constexpr std::uint32_t kKeyCreateSubKey = 4;
constexpr std::uint32_t kKeyEnumerateSubKeys = 8;
constexpr std::uint32_t kKeyNotify = 16;
constexpr std::uint32_t kKeyCreateLink = 32;
constexpr std::uint32_t kReadControl = 0x20000;
constexpr std::uint32_t kKeyRead = kKeyQueryValue | kKeyEnumerateSubKeys | kKeyNotify | kReadControl;
constexpr std::uint32_t kKeyWrite = kKeySetValue | kKeyCreateSubKey | kReadControl;
// Without the rights to delete a key and to change its owner and permissions, which are part of
// KEY_ALL_ACCESS but not needed here.
constexpr std::uint32_t kKeyAllAccess = kKeyRead | kKeyWrite | kKeyCreateLink;

// Options of CreateKey, as REG_OPTION_... in winnt.h. A volatile key is never stored.
constexpr std::uint32_t kRegOptionNonVolatile = 0;
constexpr std::uint32_t kRegOptionVolatile = 1;

// Types of a value's data, as REG_... in winnt.h.
constexpr std::uint32_t kRegSz = 1;
constexpr std::uint32_t kRegExpandSz = 2;
constexpr std::uint32_t kRegBinary = 3;
constexpr std::uint32_t kRegDword = 4;
constexpr std::uint32_t kRegMultiSz = 7;

// The data of a registry value. For the string types (REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ) `data` is the
// UTF-8 text with the terminating NULs as they are stored, for the others the bytes (REG_DWORD: four, low
// byte first).
struct RegistryData {
  std::uint32_t type = 0;
  std::string data;
};

// The nine registry calls. Names are UTF-8 and compared without regard to case; paths separate keys with "\".
// Every call gives SystemError::Success or the system's code; on a failure the out parameters are unchanged.
class Registry {
 public:
  virtual ~Registry() = default;

  // RegOpenKeyExA. `access` is the access mask. FileNotFound when the key is missing.
  virtual SystemError OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                              RegistryHandle& opened) = 0;
  // RegCloseKey.
  virtual SystemError CloseKey(RegistryHandle key) = 0;
  // RegCreateKeyExA: opens or creates. `options` is a kRegOption... value.
  virtual SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                                std::uint32_t access, RegistryHandle& opened) = 0;
  // RegDeleteKeyA. AccessDenied when the key has subkeys, as on Windows NT.
  virtual SystemError DeleteKey(RegistryHandle key, const std::string& name) = 0;
  // RegEnumKeyExA. `size` is the name buffer in bytes of the code page, the NUL included; MoreData when the
  // name does not fit; NoMoreItems after the last. Subkeys come in the order of their names, case ignored.
  virtual SystemError EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size,
                              std::string& name) = 0;
  // RegEnumValueA: name and type of a value, in the order in which they were stored. `size` as for EnumKey.
  virtual SystemError EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name,
                                std::uint32_t& type) = 0;
  // RegQueryValueExA. `size` is the data buffer in bytes (of the code page for the string types); MoreData
  // when the data does not fit.
  virtual SystemError QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                                 RegistryData& data) = 0;
  // RegSetValueExA.
  virtual SystemError SetValue(RegistryHandle key, const std::string& name, const RegistryData& data) = 0;
  // RegDeleteValueA.
  virtual SystemError DeleteValue(RegistryHandle key, const std::string& name) = 0;
};

}  // namespace bxvbwiz
