#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/Registry.h"
#include "sysinfo/RegConstants.h"

namespace bxvbwiz {

class Keys;
class Values;

// One registry key as an object. What the registry refuses gives an empty result; RequiredText alone raises
// errors.
class Key : public std::enable_shared_from_this<Key> {
 public:
  // A key without name and handle; setting one of them to a root's makes it that root.
  static std::shared_ptr<Key> Make(Registry& registry);
  // A root key, by its constant.
  static std::shared_ptr<Key> Root(Registry& registry, RegistryHandle root);
  // Closes the handle, unless it is 0 or a root constant.
  ~Key();
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  // The collections belong to the key and live as long as it does.
  Keys& SubKeys();
  bxvbwiz::Values& Values();

  // The root's name, or the path by which the key was opened. A set name stays; one that equals a root's name
  // ("HKEY_LOCAL_MACHINE", case-sensitive) gives the key that root's handle.
  void SetName(const std::string& name);
  const std::string& Name() const { return name_; }
  // A set handle stays; a root constant gives the key that root's name.
  void SetHandle(RegistryHandle handle);
  RegistryHandle Handle() const { return handle_; }
  // A set parent stays. The key keeps its parent alive, unless it is an element of the parent's SubKeys.
  void SetParent(const std::shared_ptr<Key>& parent);
  std::shared_ptr<Key> Parent() const;

  // Opens a subkey and lists its subkeys and values. An `access` of 0 becomes KeyAllAccess in the caller's
  // variable. Null when the subkey cannot be opened.
  std::shared_ptr<Key> OpenSubKey(const std::string& path, std::uint32_t& access);
  // The same for reading.
  std::shared_ptr<Key> OpenSubKeyForReading(const std::string& path);
  // Whether the subkey can be opened with all access.
  bool SubKeyExists(const std::string& path);
  // The names from the root to this key.
  std::string FullPath() const;
  // The text of a value. Raises error 91 when the key has no such value, and error 75 when it is no text:
  // without it a path would be that of a drive's root.
  std::string RequiredText(const std::string& valueName);
  // Walks the subkeys, deepest first, deletes nothing and gives false: kept as a harmless walk.
  bool DeleteSubkeys();

 private:
  friend class Keys;
  explicit Key(Registry& registry);
  void BecomeElementOf(const std::shared_ptr<Key>& parent);

  Registry& registry_;
  std::string name_;
  RegistryHandle handle_ = 0;
  std::shared_ptr<Key> parent_;       // of an opened key
  std::weak_ptr<Key> elementParent_;  // of an element of the parent's SubKeys
  std::unique_ptr<Keys> subKeys_;
  std::unique_ptr<bxvbwiz::Values> values_;
};

}  // namespace bxvbwiz
