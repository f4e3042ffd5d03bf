#pragma once

#include "platform/Registry.h"

namespace bxvbwiz {

class Win32Registry : public Registry {
 public:
  SystemError OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                      RegistryHandle& opened) override;
  SystemError CloseKey(RegistryHandle key) override;
  SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                        std::uint32_t access, RegistryHandle& opened) override;
  SystemError DeleteKey(RegistryHandle key, const std::string& name) override;
  SystemError EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name) override;
  SystemError EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name,
                        std::uint32_t& type) override;
  SystemError QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                         RegistryData& data) override;
  SystemError SetValue(RegistryHandle key, const std::string& name, const RegistryData& data) override;
  SystemError DeleteValue(RegistryHandle key, const std::string& name) override;
};

}  // namespace bxvbwiz
