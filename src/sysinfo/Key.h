#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/Registry.h"
#include "support/KeyedCollection.h"
#include "sysinfo/RegConstants.h"

// The registry as objects: keys, their subkeys and values.
namespace bxvbwiz {

class Key;

// The data of a value: nothing, a REG_DWORD, a REG_SZ or a REG_BINARY.
using ValueData = std::variant<std::monostate, std::int32_t, std::string, std::vector<std::uint8_t>>;

// One named value of a key.
class Value {
 public:
  Value(Registry& registry, const Key& parent, std::string name, std::uint32_t type)
      : DataType(type), registry_(registry), parent_(parent), name_(std::move(name)) {}

  std::uint32_t DataType;  // a Reg... type of RegConstants; a successful read updates it

  const std::string& Name() const { return name_; }
  const Key& Parent() const { return parent_; }
  // The data; empty for other types, data over RegMaxDataSize and whatever the registry refuses. Strings are
  // not expanded.
  ValueData Get();
  // Writes data of this value's type; other types and alternatives are not written. False when nothing was.
  bool Set(const ValueData& data);
  // Get as text; empty unless the value is a REG_SZ.
  std::string Text();

 private:
  Registry& registry_;
  const Key& parent_;  // outlives its values
  std::string name_;
};

// The values of a key, found by position (from 1) or by name (case ignored). Those of a key that was opened
// are listed when they are first asked for.
class Values {
 public:
  Values(Registry& registry, Key& parent) : registry_(registry), parent_(parent) {}

  // Adds a value of that name and type to the collection (writing it is Value::Set); one of that name is
  // replaced in its place.
  std::shared_ptr<Value> Add(const std::string& name, std::uint32_t type);
  std::shared_ptr<Value> Item(std::size_t position) { return List().Item(position); }
  // Null when there is none. Alone it needs no list.
  std::shared_ptr<Value> Item(const std::string& name);
  // The value without a name, or the first one; null when there is none.
  std::shared_ptr<Value> Default();
  std::size_t Count() { return List().Count(); }
  // Deletes the value in the registry and drops it. False when the registry refuses.
  bool Remove(const std::string& name);
  void Refresh();
  // Refreshes when something is asked for that needs the list.
  void RefreshLater() { isListed_ = false; }
  Key& Parent() const { return parent_; }

 private:
  KeyedCollection<Value>& List();
  std::shared_ptr<Value> Enter(const std::string& name, std::uint32_t type);

  Registry& registry_;
  Key& parent_;                                      // owns this
  KeyedCollection<Value> values_{KeyCase::Ignored};  // keyed by "N" + name: the default value has no name
  bool isListed_ = true;
};

class Keys;

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

  // Opens a subkey, whose subkeys and values will be listed. An `access` of 0 becomes KeyAllAccess in the
  // caller's variable. Null when the subkey cannot be opened.
  std::shared_ptr<Key> OpenSubKey(const std::string& path, std::uint32_t& access);
  // The same for reading.
  std::shared_ptr<Key> OpenSubKeyForReading(const std::string& path);
  // Whether the subkey can be opened with all access.
  bool SubKeyExists(const std::string& path);
  // The names from the root to this key.
  std::string FullPath() const;
  // The text of a value. Raises error 91 when the key has no such value, and error 75 when it is not a text:
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

// The subkeys of a key, found by position or by name (case ignored). Those of a key that was opened are
// listed when they are first asked for.
class Keys {
 public:
  Keys(Registry& registry, Key& parent) : registry_(registry), parent_(parent) {}

  // Opens or creates a subkey, whose values will be listed, and adds it; null when the registry refuses. A
  // subkey that is already listed is replaced in its place.
  std::shared_ptr<Key> Add(const std::string& name);
  std::shared_ptr<Key> Item(std::size_t position) { return List().Item(position); }
  std::shared_ptr<Key> Item(const std::string& name) { return List().FindItem(name); }
  std::size_t Count() { return List().Count(); }
  // Deletes the subkey of that name or position in the registry and drops it. False when the registry
  // refuses.
  bool Remove(const std::string& name);
  bool Remove(std::size_t position);
  // Lists the subkeys again. One that may not be opened with all access is opened for reading, so that a user
  // without administrator rights sees it too.
  void Refresh();
  // Refreshes when the subkeys are first asked for.
  void RefreshLater() { isListed_ = false; }
  Key& Parent() const { return parent_; }

 private:
  KeyedCollection<Key>& List();
  std::shared_ptr<Key> AddOpened(const std::string& name, RegistryHandle opened);

  Registry& registry_;
  Key& parent_;  // owns this
  KeyedCollection<Key> keys_{KeyCase::Ignored};
  bool isListed_ = true;
};

}  // namespace bxvbwiz
