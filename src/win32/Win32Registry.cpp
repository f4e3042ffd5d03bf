#include "win32/Win32Registry.h"

#include <windows.h>

#include "win32/AnsiText.h"

namespace bxvbwiz {

namespace {

// Handles are 32 bits of meaning, sign-extended: 64-bit Windows defines the root constants so.
HKEY ToKey(RegistryHandle handle) {
  return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(handle));
}
RegistryHandle ToHandle(HKEY key) {
  return static_cast<RegistryHandle>(reinterpret_cast<LONG_PTR>(key));
}

SystemError Result(LONG code) {
  return static_cast<SystemError>(code);
}

bool IsText(DWORD type) {
  return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

}  // namespace

SystemError Win32Registry::OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                                   RegistryHandle& opened) {
  HKEY result = nullptr;
  const LONG code = RegOpenKeyExA(ToKey(key), ToAnsi(path).c_str(), 0, access, &result);
  if (code == ERROR_SUCCESS) opened = ToHandle(result);
  return Result(code);
}

SystemError Win32Registry::CloseKey(RegistryHandle key) {
  return Result(RegCloseKey(ToKey(key)));
}

SystemError Win32Registry::CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                                     std::uint32_t access, RegistryHandle& opened) {
  HKEY result = nullptr;
  char noClass[] = "";
  const LONG code = RegCreateKeyExA(ToKey(key), ToAnsi(path).c_str(), 0, noClass, options, access, nullptr,
                                    &result, nullptr);
  if (code == ERROR_SUCCESS) opened = ToHandle(result);
  return Result(code);
}

SystemError Win32Registry::DeleteKey(RegistryHandle key, const std::string& name) {
  return Result(RegDeleteKeyA(ToKey(key), ToAnsi(name).c_str()));
}

SystemError Win32Registry::EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size,
                                   std::string& name) {
  std::string buffer(size, '\0');
  char className[255];
  auto length = static_cast<DWORD>(size);
  DWORD classLength = sizeof className;
  const LONG code =
      RegEnumKeyExA(ToKey(key), index, buffer.data(), &length, nullptr, className, &classLength, nullptr);
  if (code == ERROR_SUCCESS) name = FromAnsi(std::string_view(buffer.data(), length));
  return Result(code);
}

SystemError Win32Registry::EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size,
                                     std::string& name, std::uint32_t& type) {
  std::string buffer(size, '\0');
  auto length = static_cast<DWORD>(size);
  DWORD found = 0;
  const LONG code =
      RegEnumValueA(ToKey(key), index, buffer.data(), &length, nullptr, &found, nullptr, nullptr);
  if (code == ERROR_SUCCESS) {
    name = FromAnsi(std::string_view(buffer.data(), length));
    type = found;
  }
  return Result(code);
}

SystemError Win32Registry::QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                                      RegistryData& data) {
  std::string buffer(size, '\0');
  auto length = static_cast<DWORD>(size);
  DWORD type = 0;
  const LONG code = RegQueryValueExA(ToKey(key), ToAnsi(name).c_str(), nullptr, &type,
                                     reinterpret_cast<BYTE*>(buffer.data()), &length);
  if (code == ERROR_SUCCESS) {
    buffer.resize(length);
    data.type = type;
    data.data = IsText(type) ? FromAnsi(buffer) : buffer;
  }
  return Result(code);
}

SystemError Win32Registry::SetValue(RegistryHandle key, const std::string& name, const RegistryData& data) {
  const std::string bytes = IsText(data.type) ? ToAnsi(data.data) : data.data;
  return Result(RegSetValueExA(ToKey(key), ToAnsi(name).c_str(), 0, data.type,
                               reinterpret_cast<const BYTE*>(bytes.data()),
                               static_cast<DWORD>(bytes.size())));
}

SystemError Win32Registry::DeleteValue(RegistryHandle key, const std::string& name) {
  return Result(RegDeleteValueA(ToKey(key), ToAnsi(name).c_str()));
}

}  // namespace bxvbwiz
