#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Registry.h"

namespace bxvbwiz {

// Takes the first name, and the backslash after it, from a key's path.
std::string_view NextKeyName(std::string_view& path);

// The keys of a registry, and where in the text of registry.reg their values are. Names are UTF-8 and found
// without regard to case. Made for hundreds of thousands of keys: a key is one record in an array, its name
// lies in the text, and one hash table finds a name below any key.
class RegistryTree {
 public:
  using Node = std::uint32_t;
  static constexpr Node kNone = 0xFFFFFFFF;

  // A heading of the text with the lines below it, as positions in the text.
  struct Block {
    std::uint32_t begin;   // of the heading's line
    std::uint32_t values;  // of the line after it
    std::uint32_t end;
    Node node;
    std::uint32_t previous;  // the block before it of the same key, or kNone
  };

  // The predefined keys exist from the start, and so does HKEY_LOCAL_MACHINE\SOFTWARE\Classes.
  RegistryTree();

  // A predefined key by its name, case ignored, or by its constant; kNone for any other. HKEY_CLASSES_ROOT is
  // HKEY_LOCAL_MACHINE\SOFTWARE\Classes.
  Node Root(std::string_view name) const;
  Node Root(RegistryHandle handle) const;
  // False for keys that exist from the start; they cannot be deleted.
  bool IsDeletable(Node node) const { return node >= pinned_; }

  // The key of that name directly below `parent`, or kNone.
  Node Find(Node parent, std::string_view name) const;
  // The same, adding it when it is missing. The name must stay in memory as long as the tree lives; Keep
  // gives a copy that does.
  Node Add(Node parent, std::string_view name);
  std::string_view Keep(std::string_view name);
  // Removes the key and all below it. Of a key that exists from the start only the content goes; a predefined
  // key stays as it is.
  void Remove(Node node);

  bool IsAlive(Node node) const { return nodes_[node].parent != kNone || node < roots_; }
  Node Parent(Node node) const { return nodes_[node].parent; }
  std::string_view Name(Node node) const { return nodes_[node].name; }
  // "HKEY_...\...\name".
  std::string Path(Node node) const;
  bool HasChildren(Node node) const { return nodes_[node].firstChild != kNone; }
  // Sorted by name, case ignored.
  std::vector<Node> Children(Node node) const;

  // Blocks come in the order of the text.
  void AddBlock(Block block);
  const std::vector<Block>& Blocks() const { return blocks_; }
  std::uint32_t LastBlock(Node node) const { return nodes_[node].lastBlock; }

 private:
  struct Key {
    std::string_view name;
    Node parent = kNone;  // kNone for a removed key too
    Node firstChild = kNone;
    Node nextSibling = kNone;
    std::uint32_t hash = 0;
    std::uint32_t lastBlock = kNone;
  };

  void Grow();
  void RemoveBelow(Node node);

  std::vector<Key> nodes_;
  std::vector<Node> slots_;  // open addressing, a power of two; removed keys stay in their slots
  std::vector<Block> blocks_;
  std::deque<std::string> kept_;
  Node roots_ = 0;    // nodes below this are predefined keys
  Node pinned_ = 0;   // nodes below this exist from the start
  Node classes_ = 0;  // HKEY_LOCAL_MACHINE\SOFTWARE\Classes
};

// Where a value stands that cannot be read.
struct SkippedRegValue {
  std::string key;       // as the last heading names it; empty when it names none
  std::size_t line = 0;  // of the file, from 1
};

struct RegLoadResult {
  std::size_t skipped = 0;                     // values that cannot be read or belong to no key
  std::vector<SkippedRegValue> skippedValues;  // the first of them
  bool hasDeletions = false;                   // a heading deletes a key
  // The last key, if its last value announces another line and the text ends.
  RegistryTree::Node openEnd = RegistryTree::kNone;
};

// Adds the keys of an export to `tree`; `body` is where the line after the header begins.
RegLoadResult LoadRegHeadings(std::string_view text, std::size_t body, RegistryTree& tree);

}  // namespace bxvbwiz
