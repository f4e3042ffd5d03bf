#include "sysinfo/Key.h"

#include "support/Errors.h"

namespace bxvbwiz {
Key::Key(Registry& registry) : registry_(registry) {}

Key::~Key() {
  // The root constants are negative.
  if (handle_ > 0) registry_.CloseKey(handle_);
}

std::shared_ptr<Key> Key::Make(Registry& registry) {
  return std::shared_ptr<Key>(new Key(registry));
}

std::shared_ptr<Key> Key::Root(Registry& registry, RegistryHandle root) {
  std::shared_ptr<Key> key = Make(registry);
  key->SetHandle(root);
  return key;
}

Keys& Key::SubKeys() {
  if (!subKeys_) subKeys_ = std::make_unique<Keys>(registry_, *this);
  return *subKeys_;
}

Values& Key::Values() {
  if (!values_) values_ = std::make_unique<bxvbwiz::Values>(registry_, *this);
  return *values_;
}

void Key::SetName(const std::string& name) {
  if (!name_.empty()) return;
  name_ = name;
  for (const PredefinedKey& root : kPredefinedKeys) {
    if (name == root.name) SetHandle(root.handle);
  }
}

void Key::SetHandle(RegistryHandle handle) {
  if (handle_ != 0) return;
  handle_ = handle;
  for (const PredefinedKey& root : kPredefinedKeys) {
    if (handle == root.handle) SetName(root.name);
  }
}

void Key::SetParent(const std::shared_ptr<Key>& parent) {
  if (!Parent()) parent_ = parent;
}

void Key::BecomeElementOf(const std::shared_ptr<Key>& parent) {
  elementParent_ = parent;
}

std::shared_ptr<Key> Key::Parent() const {
  return parent_ ? parent_ : elementParent_.lock();
}

std::shared_ptr<Key> Key::OpenSubKey(const std::string& path, std::uint32_t& access) {
  if (access == 0) access = RegConstants::KeyAllAccess;
  RegistryHandle opened = 0;
  if (registry_.OpenKey(handle_, path, access, opened) != SystemError::Success) return nullptr;
  std::shared_ptr<Key> key = Make(registry_);
  key->SetHandle(opened);
  key->SetName(path);
  key->SetParent(shared_from_this());
  key->SubKeys().RefreshLater();
  key->Values().RefreshLater();
  return key;
}

std::shared_ptr<Key> Key::OpenSubKeyForReading(const std::string& path) {
  std::uint32_t access = RegConstants::KeyRead;
  return OpenSubKey(path, access);
}

bool Key::SubKeyExists(const std::string& path) {
  RegistryHandle opened = 0;
  if (registry_.OpenKey(handle_, path, RegConstants::KeyAllAccess, opened) != SystemError::Success)
    return false;
  registry_.CloseKey(opened);
  return true;
}

std::string Key::FullPath() const {
  std::string path = name_;
  for (std::shared_ptr<Key> key = Parent(); key; key = key->Parent()) path.insert(0, key->Name() + "\\");
  return path;
}

std::string Key::RequiredText(const std::string& valueName) {
  const auto value = Values().Item(valueName);
  if (value == nullptr) {
    throw RuntimeError(kErrorObjectNotSet,
                       "Object variable or With block variable not set: the registry key " + FullPath() +
                           " has no value " + valueName);
  }
  const ValueData data = value->Get();
  if (!std::holds_alternative<std::string>(data)) {
    throw RuntimeError(kErrorPathFileAccess, "Path/File access error: the value " + valueName +
                                                 " of the registry key " + FullPath());
  }
  return std::get<std::string>(data);
}

bool Key::DeleteSubkeys() {
  for (std::size_t position = SubKeys().Count(); position > 0; --position)
    SubKeys().Item(position)->DeleteSubkeys();
  return false;
}

}  // namespace bxvbwiz
