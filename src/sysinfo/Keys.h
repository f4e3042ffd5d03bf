#pragma once

#include <memory>
#include <string>

#include "support/KeyedCollection.h"
#include "sysinfo/Key.h"

namespace bxvbwiz {

// The subkeys of a key, found by position or by name (case ignored).
class Keys {
 public:
  Keys(Registry& registry, Key& parent) : registry_(registry), parent_(parent) {}

  // Opens or creates a subkey, lists its values and adds it; null when the registry refuses. A subkey that is
  // already listed is replaced in its place.
  std::shared_ptr<Key> Add(const std::string& name);
  std::shared_ptr<Key> Item(std::size_t position) const { return keys_.Item(position); }
  std::shared_ptr<Key> Item(const std::string& name) const { return keys_.FindItem(name); }
  std::size_t Count() const { return keys_.Count(); }
  // Deletes the subkey of that name or position in the registry and drops it. False when the registry
  // refuses.
  bool Remove(const std::string& name);
  bool Remove(std::size_t position);
  // Lists the subkeys anew. One that may not be opened with all access is opened for reading, so that a user
  // without administrator rights sees it too.
  void Refresh();
  Key& Parent() const { return parent_; }

 private:
  std::shared_ptr<Key> AddOpened(const std::string& name, RegistryHandle opened);

  Registry& registry_;
  Key& parent_;  // owns this
  KeyedCollection<Key> keys_{KeyCase::Ignored};
};

}  // namespace bxvbwiz
