#include "sysinfo/Key.h"

#include <vector>

namespace bxvbwiz {

KeyedCollection<Key>& Keys::List() {
  if (!isListed_) Refresh();
  return keys_;
}

std::shared_ptr<Key> Keys::Add(const std::string& name) {
  List();
  RegistryHandle opened = 0;
  const SystemError error = registry_.CreateKey(parent_.Handle(), name, RegConstants::RegOptionNonVolatile,
                                                RegConstants::KeyAllAccess, opened);
  return error == SystemError::Success ? AddOpened(name, opened) : nullptr;
}

std::shared_ptr<Key> Keys::AddOpened(const std::string& name, RegistryHandle opened) {
  std::shared_ptr<Key> key = Key::Make(registry_);
  key->SetHandle(opened);
  key->SetName(name);
  key->BecomeElementOf(parent_.shared_from_this());
  key->Values().RefreshLater();
  keys_.Replace(key, name);
  return key;
}

bool Keys::Remove(const std::string& name) {
  if (registry_.DeleteKey(parent_.Handle(), name) != SystemError::Success) return false;
  if (Item(name)) keys_.Remove(name);
  return true;
}

bool Keys::Remove(std::size_t position) {
  if (position < 1 || position > Count()) return false;
  return Remove(std::string(Item(position)->Name()));
}

void Keys::Refresh() {
  isListed_ = true;
  keys_.Clear();
  constexpr std::size_t kNameSize = 255;
  std::vector<std::string> names;
  std::string name;
  // All names first: adding one opens or creates a key, which must not disturb the enumeration.
  while (registry_.EnumKey(parent_.Handle(), static_cast<std::uint32_t>(names.size()), kNameSize, name) ==
         SystemError::Success)
    names.push_back(name);
  for (const std::string& subKey : names) {
    RegistryHandle opened = 0;
    SystemError error = registry_.CreateKey(parent_.Handle(), subKey, RegConstants::RegOptionNonVolatile,
                                            RegConstants::KeyAllAccess, opened);
    if (error == SystemError::AccessDenied)
      error = registry_.OpenKey(parent_.Handle(), subKey, RegConstants::KeyRead, opened);
    if (error == SystemError::Success) AddOpened(subKey, opened);
  }
}

}  // namespace bxvbwiz
