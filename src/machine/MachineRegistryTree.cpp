#include "machine/MachineRegistryTree.h"

#include <algorithm>
#include <array>
#include <utility>

#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The predefined keys that have a tree of their own.
constexpr std::array<PredefinedKey, 6> kPredefined = {{
    {"HKEY_CURRENT_USER", kHKeyCurrentUser},
    {"HKEY_LOCAL_MACHINE", kHKeyLocalMachine},
    {"HKEY_USERS", kHKeyUsers},
    {"HKEY_PERFORMANCE_DATA", kHKeyPerformanceData},
    {"HKEY_CURRENT_CONFIG", RootHandle(0x80000005)},
    {"HKEY_DYN_DATA", RootHandle(0x80000006)},
}};
constexpr std::string_view kClassesRoot = "HKEY_CLASSES_ROOT";
constexpr RegistryTree::Node kLocalMachine = 1;  // its place in kPredefined

constexpr char UpperAscii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// The hash of a name below a parent, the same for every case of the name (FNV-1a, spread at the end).
class NameHash {
 public:
  explicit NameHash(RegistryTree::Node parent) : state_(2166136261U ^ parent * 0x9E3779B1U) {}
  void Add(char c) { state_ = (state_ ^ static_cast<unsigned char>(c)) * 16777619U; }
  std::uint32_t Value() const { return (state_ ^ state_ >> 15) * 0x85EBCA6BU; }

 private:
  std::uint32_t state_;
};

std::uint32_t Hash(RegistryTree::Node parent, std::string_view name) {
  NameHash hash(parent);
  unsigned char all = 0;
  for (const char c : name) {
    all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
    hash.Add(UpperAscii(c));
  }
  if (all < 0x80) return hash.Value();
  NameHash folded(parent);
  for (const char c : UpperCase(name)) folded.Add(c);
  return folded.Value();
}

bool SameName(std::string_view left, std::string_view right) {
  const auto same = [](char a, char b) { return UpperAscii(a) == UpperAscii(b); };
  if (left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(), same)) return true;
  const auto isOther = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
  if (std::none_of(left.begin(), left.end(), isOther) && std::none_of(right.begin(), right.end(), isOther)) {
    return false;
  }
  return UpperCase(left) == UpperCase(right);
}

}  // namespace

std::string_view NextKeyName(std::string_view& path) {
  const std::size_t end = std::min(path.find('\\'), path.size());
  const std::string_view name = path.substr(0, end);
  path.remove_prefix(std::min(end + 1, path.size()));
  return name;
}

RegistryTree::RegistryTree() : slots_(64, kNone) {
  for (const PredefinedKey& key : kPredefined) {
    nodes_.emplace_back();
    nodes_.back().name = key.name;
  }
  roots_ = static_cast<Node>(nodes_.size());
  classes_ = Add(Add(kLocalMachine, "SOFTWARE"), "Classes");
  pinned_ = static_cast<Node>(nodes_.size());
}

RegistryTree::Node RegistryTree::Root(std::string_view name) const {
  if (SameName(name, kClassesRoot)) return classes_;
  for (Node node = 0; node < roots_; ++node) {
    if (SameName(name, kPredefined[node].name)) return node;
  }
  return kNone;
}

RegistryTree::Node RegistryTree::Root(RegistryHandle handle) const {
  if (handle == kHKeyClassesRoot) return classes_;
  for (Node node = 0; node < roots_; ++node) {
    if (handle == kPredefined[node].handle) return node;
  }
  return kNone;
}

RegistryTree::Node RegistryTree::Find(Node parent, std::string_view name) const {
  const std::uint32_t hash = Hash(parent, name);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t slot = hash & mask; slots_[slot] != kNone; slot = (slot + 1) & mask) {
    const Key& key = nodes_[slots_[slot]];
    if (key.hash == hash && key.parent == parent && SameName(key.name, name)) return slots_[slot];
  }
  return kNone;
}

RegistryTree::Node RegistryTree::Add(Node parent, std::string_view name) {
  const std::uint32_t hash = Hash(parent, name);
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  for (; slots_[slot] != kNone; slot = (slot + 1) & mask) {
    const Key& key = nodes_[slots_[slot]];
    if (key.hash == hash && key.parent == parent && SameName(key.name, name)) return slots_[slot];
  }
  const auto added = static_cast<Node>(nodes_.size());
  nodes_.push_back({name, parent, kNone, nodes_[parent].firstChild, hash, kNone});
  nodes_[parent].firstChild = added;
  slots_[slot] = added;
  if (nodes_.size() * 3 > slots_.size() * 2) Grow();
  return added;
}

void RegistryTree::Grow() {
  std::vector<Node> slots(slots_.size() * 2, kNone);
  const std::size_t mask = slots.size() - 1;
  for (Node node = roots_; node < nodes_.size(); ++node) {
    if (nodes_[node].parent == kNone) continue;
    std::size_t slot = nodes_[node].hash & mask;
    while (slots[slot] != kNone) slot = (slot + 1) & mask;
    slots[slot] = node;
  }
  slots_ = std::move(slots);
}

std::string_view RegistryTree::Keep(std::string_view name) {
  return kept_.emplace_back(name);
}

void RegistryTree::Remove(Node node) {
  if (node < roots_) return;
  RemoveBelow(node);
  nodes_[node].lastBlock = kNone;
  if (!IsDeletable(node)) return;
  Node* link = &nodes_[nodes_[node].parent].firstChild;
  while (*link != node) link = &nodes_[*link].nextSibling;
  *link = nodes_[node].nextSibling;
  nodes_[node].parent = kNone;
}

void RegistryTree::RemoveBelow(Node node) {
  // Keys that exist from the start stay, but empty.
  std::vector<Node> open = {node};
  while (!open.empty()) {
    const Node parent = open.back();
    open.pop_back();
    Node child = std::exchange(nodes_[parent].firstChild, kNone);
    while (child != kNone) {
      const Node next = nodes_[child].nextSibling;
      open.push_back(child);
      if (IsDeletable(child)) {
        nodes_[child].parent = kNone;
      } else {
        nodes_[child].nextSibling = std::exchange(nodes_[parent].firstChild, child);
        nodes_[child].lastBlock = kNone;
      }
      child = next;
    }
  }
}

std::string RegistryTree::Path(Node node) const {
  std::vector<Node> keys;
  for (; node != kNone; node = nodes_[node].parent) keys.push_back(node);
  std::string path;
  for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
    if (!path.empty()) path += '\\';
    path += nodes_[*key].name;
  }
  return path;
}

std::vector<RegistryTree::Node> RegistryTree::Children(Node node) const {
  std::vector<std::pair<std::string, Node>> named;
  for (Node child = nodes_[node].firstChild; child != kNone; child = nodes_[child].nextSibling) {
    named.emplace_back(UpperCase(nodes_[child].name), child);
  }
  std::sort(named.begin(), named.end());
  std::vector<Node> children;
  children.reserve(named.size());
  for (const auto& child : named) children.push_back(child.second);
  return children;
}

void RegistryTree::AddBlock(Block block) {
  block.previous = std::exchange(nodes_[block.node].lastBlock, static_cast<std::uint32_t>(blocks_.size()));
  blocks_.push_back(block);
}

}  // namespace bxvbwiz
