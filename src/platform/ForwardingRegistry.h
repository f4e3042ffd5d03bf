#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/CallHook.h"
#include "platform/Registry.h"

namespace bxvbwiz {

// Passes every call on, past a hook.
class ForwardingRegistry : public Registry, protected Hooked {
 public:
  explicit ForwardingRegistry(Registry& inner, CallHook& hook = NoHook()) : Hooked(hook), inner_(inner) {}
  SystemError OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                      RegistryHandle& opened) override {
    return Open("OpenKey", key, path, opened, [&] { return inner_.OpenKey(key, path, access, opened); });
  }
  SystemError CloseKey(RegistryHandle key) override {
    const auto closing = paths_.extract(key);
    const std::string_view path = closing.empty() ? PathOf(key) : std::string_view(closing.mapped());
    return Pass({"CloseKey", path}, [&] { return inner_.CloseKey(key); });
  }
  SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                        std::uint32_t access, RegistryHandle& opened) override {
    return Open("CreateKey", key, path, opened,
                [&] { return inner_.CreateKey(key, path, options, access, opened); });
  }
  SystemError DeleteKey(RegistryHandle key, const std::string& name) override {
    return Pass({"DeleteKey", PathOf(key), name}, [&] { return inner_.DeleteKey(key, name); });
  }
  SystemError EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name) override {
    return List({"EnumKey", PathOf(key)}, name, [&] { return inner_.EnumKey(key, index, size, name); });
  }
  SystemError EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name,
                        std::uint32_t& type) override {
    return List({"EnumValue", PathOf(key)}, name,
                [&] { return inner_.EnumValue(key, index, size, name, type); });
  }
  SystemError QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                         RegistryData& data) override {
    return Pass({"QueryValue", PathOf(key), name}, [&] { return inner_.QueryValue(key, name, size, data); });
  }
  SystemError SetValue(RegistryHandle key, const std::string& name, const RegistryData& data) override {
    return Pass({"SetValue", PathOf(key), name}, [&] { return inner_.SetValue(key, name, data); });
  }
  SystemError DeleteValue(RegistryHandle key, const std::string& name) override {
    return Pass({"DeleteValue", PathOf(key), name}, [&] { return inner_.DeleteValue(key, name); });
  }

 private:
  // The full path of a key that was opened here or is predefined; empty for any other.
  std::string_view PathOf(RegistryHandle key) const {
    for (const PredefinedKey& root : kPredefinedKeys) {
      if (key == root.handle) return root.name;
    }
    const auto known = paths_.find(key);
    return known == paths_.end() ? std::string_view() : known->second;
  }
  template <class Call>
  SystemError Open(std::string_view name, RegistryHandle key, const std::string& path,
                   const RegistryHandle& opened, Call make) {
    std::string full(PathOf(key));
    if (!path.empty()) full.append("\\").append(path);
    const SystemError error = Pass({name, full}, make);
    if (error == SystemError::Success) paths_[opened] = std::move(full);
    return error;
  }
  // A call that gives a name.
  template <class Call>
  SystemError List(SeamCall call, const std::string& name, Call make) {
    return Pass(call, [&] {
      const SystemError error = make();
      call.detail = name;
      return error;
    });
  }

  Registry& inner_;
  std::unordered_map<RegistryHandle, std::string> paths_;  // of the open keys
};

}  // namespace bxvbwiz
