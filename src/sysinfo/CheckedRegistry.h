#pragma once

#include <string>
#include <unordered_map>

#include "platform/Forwarding.h"

namespace bxvbwiz {

// A registry whose failures are not lost. The classes over it take every failure for a missing key or value;
// one that leaves open whether it is there is told.
class CheckedRegistry : public ForwardingRegistry {
 public:
  explicit CheckedRegistry(Registry& inner) : ForwardingRegistry(inner) {}

  SystemError OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                      RegistryHandle& opened) override;
  SystemError CloseKey(RegistryHandle key) override;
  SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                        std::uint32_t access, RegistryHandle& opened) override;
  SystemError EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name) override;
  SystemError EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name,
                        std::uint32_t& type) override;
  SystemError QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                         RegistryData& data) override;

 private:
  std::string PathOf(RegistryHandle key);
  SystemError Check(SystemError error, RegistryHandle key, const std::string& path = {});
  SystemError Opened(SystemError error, RegistryHandle key, const std::string& path, RegistryHandle opened);

  std::unordered_map<RegistryHandle, std::string> paths_;  // of the open keys
};

}  // namespace bxvbwiz
