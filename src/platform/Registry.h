#pragma once

#include <cstdint>
#include <string>

#include "platform/SystemError.h"

namespace bxvbwiz {

// An open key, or one of the root constants (negative in this signed reading, as HKEY_LOCAL_MACHINE =
// 0x80000002 is).
using RegistryHandle = std::int32_t;

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
  // RegCreateKeyExA: opens or creates. `options` as REG_OPTION_NON_VOLATILE (0).
  virtual SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                                std::uint32_t access, RegistryHandle& opened) = 0;
  // RegDeleteKeyA. AccessDenied when the key has subkeys, as on Windows NT.
  virtual SystemError DeleteKey(RegistryHandle key, const std::string& name) = 0;
  // RegEnumKeyExA. `size` is the name buffer in bytes of the code page, the NUL included; MoreData when the
  // name does not fit; NoMoreItems behind the last. Subkeys come in the order of their names, case ignored.
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
