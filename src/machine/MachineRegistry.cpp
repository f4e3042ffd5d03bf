#include "machine/MachineRegistry.h"

#include <algorithm>
#include <utility>

#include "text/Text.h"
#include "text/Utf16Text.h"

namespace bxvbwiz {
namespace {

// Rights that stand for others, as in winnt.h.
constexpr std::uint32_t kMaximumAllowed = 0x02000000;
constexpr std::uint32_t kGenericReadAccess = 0x80000000;
constexpr std::uint32_t kGenericWriteAccess = 0x40000000;
constexpr std::uint32_t kGenericAllAccess = 0x10000000;

}  // namespace

// The rights that a mask gives, with the specific ones in place of the generic.
std::uint32_t MachineRegistry::Granted(std::uint32_t access) {
  if ((access & (kMaximumAllowed | kGenericAllAccess)) != 0) return kKeyAllAccess;
  if ((access & kGenericReadAccess) != 0) access |= kQueryValue | kEnumerateSubKeys;
  if ((access & kGenericWriteAccess) != 0) access |= kSetValue;
  return access;
}

MachineRegistry::MachineRegistry(std::string bytes, const CodePage& codePage)
    : codePage_(codePage), source_(DecodeRegText(std::move(bytes), codePage)) {
  loaded_ = LoadRegHeadings(source_.text, source_.body, tree_);
  if (loaded_.openEnd == RegistryTree::kNone) return;
  // What is added to the text later must not be taken for the line that this value waits for.
  Values& values = ValuesOf(loaded_.openEnd);
  for (Value& value : values.list) {
    if (!value.source.continues) continue;
    DataOf(value);
    value.changed = values.changed = true;
  }
}

// ---- keys

SystemError MachineRegistry::OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                                     RegistryHandle& opened) {
  Node node = RegistryTree::kNone;
  if (const SystemError error = Resolve(key, 0, node); error != SystemError::Success) return error;
  const std::string name = StoredName(path);
  if (name.empty() && key < 0) {
    opened = key;
    return SystemError::Success;
  }
  if (const SystemError error = Walk(node, name, node); error != SystemError::Success) return error;
  opened = NewHandle(node, access);
  return SystemError::Success;
}

SystemError MachineRegistry::CloseKey(RegistryHandle key) {
  if (tree_.Root(key) != RegistryTree::kNone) return SystemError::Success;
  return opened_.erase(key) != 0 ? SystemError::Success : SystemError::InvalidHandle;
}

SystemError MachineRegistry::CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                                       std::uint32_t access, RegistryHandle& opened) {
  Node node = RegistryTree::kNone;
  if (const SystemError error = Resolve(key, 0, node); error != SystemError::Success) return error;
  const std::string name = StoredName(path);
  if (!IsOneLine(name)) return SystemError::InvalidName;
  std::string_view rest = name;
  // An empty name is not made: "a\\b" and "\a" name no key.
  if (StartsWith(rest, "\\") || rest.find("\\\\") != std::string_view::npos) return SystemError::InvalidName;
  while (!rest.empty()) {
    const std::string_view child = NextKeyName(rest);
    Node found = tree_.Find(node, child);
    if (found == RegistryTree::kNone) {
      found = tree_.Add(node, tree_.Keep(child));
      sorted_.erase(node);
      if (options == kRegOptionVolatile || volatile_.count(node) != 0) {
        volatile_.insert(found);
      } else {
        added_.push_back(found);
        changed_ = true;
      }
    }
    node = found;
  }
  opened = NewHandle(node, access);
  return SystemError::Success;
}

SystemError MachineRegistry::DeleteKey(RegistryHandle key, const std::string& name) {
  Node node = RegistryTree::kNone;
  if (const SystemError error = Resolve(key, 0, node); error != SystemError::Success) return error;
  if (const SystemError error = Walk(node, StoredName(name), node); error != SystemError::Success)
    return error;
  if (tree_.HasChildren(node) || !tree_.IsDeletable(node)) return SystemError::AccessDenied;
  const Node parent = tree_.Parent(node);
  deleted_.emplace(node, tree_.Path(node));
  tree_.Remove(node);
  if (tree_.IsDeletable(parent) && !tree_.HasChildren(parent)) EnsureHeading(parent);
  values_.erase(node);
  sorted_.erase(node);
  if (const auto listed = sorted_.find(parent); listed != sorted_.end()) {
    std::vector<Node>& children = listed->second;
    children.erase(std::find(children.begin(), children.end(), node));
  }
  changed_ = true;
  return SystemError::Success;
}

SystemError MachineRegistry::EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size,
                                     std::string& name) {
  Node node = RegistryTree::kNone;
  if (const SystemError error = Resolve(key, kEnumerateSubKeys, node); error != SystemError::Success)
    return error;
  const auto [entry, isNew] = sorted_.try_emplace(node);
  if (isNew) entry->second = tree_.Children(node);
  if (index >= entry->second.size()) return SystemError::NoMoreItems;
  std::string found = Ansi(tree_.Name(entry->second[index]));
  if (!FitsName(found, size)) return SystemError::MoreData;
  name = std::move(found);
  return SystemError::Success;
}

// ---- parts

// The key of a handle that has the rights `needed`; predefined keys have all.
SystemError MachineRegistry::Resolve(RegistryHandle handle, std::uint32_t needed, Node& node) const {
  const Node root = tree_.Root(handle);
  if (root != RegistryTree::kNone) {
    node = root;
    return SystemError::Success;
  }
  const auto entry = opened_.find(handle);
  if (entry == opened_.end()) return SystemError::InvalidHandle;
  if (!tree_.IsAlive(entry->second.node)) return SystemError::FileNotFound;
  if ((entry->second.access & needed) != needed) return SystemError::AccessDenied;
  node = entry->second.node;
  return SystemError::Success;
}

SystemError MachineRegistry::Walk(Node start, std::string_view path, Node& node) const {
  Node found = start;
  while (!path.empty()) {
    found = tree_.Find(found, NextKeyName(path));
    if (found == RegistryTree::kNone) return SystemError::FileNotFound;
  }
  node = found;
  return SystemError::Success;
}

RegistryHandle MachineRegistry::NewHandle(Node node, std::uint32_t access) {
  const RegistryHandle handle = nextHandle_;
  nextHandle_ += 4;
  opened_.emplace(handle, OpenedKey{node, Granted(access)});
  return handle;
}

// The text as it passes through the code page.
std::string MachineRegistry::Ansi(std::string_view text) const {
  return IsAscii(text) ? std::string(text) : codePage_.Decode(codePage_.Encode(text));
}

// A name that a call gives. Names are C strings for the system, so that a NUL ends them.
std::string MachineRegistry::StoredName(std::string_view name) const {
  return Ansi(name.substr(0, name.find('\0')));
}

bool MachineRegistry::FitsName(const std::string& name, std::size_t size) const {
  return codePage_.Encode(name).size() < size;
}

// Makes sure that the key is there when the text is read again, also without anything below it.
void MachineRegistry::EnsureHeading(Node node) {
  if (tree_.LastBlock(node) != RegistryTree::kNone) return;
  if (std::find(added_.rbegin(), added_.rend(), node) == added_.rend()) added_.push_back(node);
}

}  // namespace bxvbwiz
