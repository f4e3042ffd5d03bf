#include "sysinfo/CheckedRegistry.h"

#include "support/Findings.h"
#include "sysinfo/Key.h"

namespace bxvbwiz {

SystemError CheckedRegistry::OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                                     RegistryHandle& opened) {
  const SystemError error = ForwardingRegistry::OpenKey(key, path, access, opened);
  return Opened(error, key, path, opened);
}

SystemError CheckedRegistry::CloseKey(RegistryHandle key) {
  paths_.erase(key);
  return ForwardingRegistry::CloseKey(key);
}

SystemError CheckedRegistry::CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                                       std::uint32_t access, RegistryHandle& opened) {
  const SystemError error = ForwardingRegistry::CreateKey(key, path, options, access, opened);
  // A user without administrator rights may not create keys; whoever may read them opens them for that.
  return error == SystemError::AccessDenied ? error : Opened(error, key, path, opened);
}

SystemError CheckedRegistry::EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size,
                                     std::string& name) {
  return Check(ForwardingRegistry::EnumKey(key, index, size, name), key);
}

SystemError CheckedRegistry::EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size,
                                       std::string& name, std::uint32_t& type) {
  return Check(ForwardingRegistry::EnumValue(key, index, size, name, type), key);
}

SystemError CheckedRegistry::QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                                        RegistryData& data) {
  return Check(ForwardingRegistry::QueryValue(key, name, size, data), key);
}

std::string CheckedRegistry::PathOf(RegistryHandle key) {
  if (key < 0) return Key::Root(*this, key)->Name();
  const auto known = paths_.find(key);
  return known == paths_.end() ? std::string() : known->second;
}

SystemError CheckedRegistry::Check(SystemError error, RegistryHandle key, const std::string& path) {
  if (error == SystemError::Success || error == SystemError::NoMoreItems || MeansMissing(error)) return error;
  AddFinding(FindingId::RegistryKeyUnreadable,
             {PathOf(key) + (path.empty() ? "" : "\\" + path), ErrorCode(error)});
  return error;
}

SystemError CheckedRegistry::Opened(SystemError error, RegistryHandle key, const std::string& path,
                                    RegistryHandle opened) {
  if (error == SystemError::Success) paths_[opened] = PathOf(key) + "\\" + path;
  return Check(error, key, path);
}

}  // namespace bxvbwiz
