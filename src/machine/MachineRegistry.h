#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "machine/MachineRegistryTree.h"
#include "machine/RegText.h"
#include "platform/Platform.h"

namespace bxvbwiz {

// The registry of a machine folder, held in memory. The text of registry.reg is kept as it was read, and the
// values of a key are read from it when they are first asked for. Text changes only the lines of values and
// keys that were changed, so that comments and unreadable lines survive.
//
// As through the A calls, a character that the code page cannot hold is seen as "?". An open key has the
// access rights that it was opened with: reading values, listing keys and setting values each need theirs.
class MachineRegistry : public Registry {
 public:
  // `bytes` are the whole of registry.reg; `codePage` must outlive the registry. Throws RegTextError.
  MachineRegistry(std::string bytes, const CodePage& codePage);
  MachineRegistry(const MachineRegistry&) = delete;
  MachineRegistry& operator=(const MachineRegistry&) = delete;

  // A volatile key is left out of Text, with all below it. A key that was deleted while it was open gives
  // FileNotFound. A name with a line break cannot be stored and gives InvalidName.
  SystemError OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                      RegistryHandle& opened) override;
  SystemError CloseKey(RegistryHandle key) override;
  SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                        std::uint32_t access, RegistryHandle& opened) override;
  SystemError DeleteKey(RegistryHandle key, const std::string& name) override;
  SystemError EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name) override;
  SystemError EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name,
                        std::uint32_t& type) override;
  SystemError QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                         RegistryData& data) override;
  SystemError SetValue(RegistryHandle key, const std::string& name, const RegistryData& data) override;
  SystemError DeleteValue(RegistryHandle key, const std::string& name) override;

  // True when something has changed since the registry was read or SetStored was called.
  bool Changed() const { return changed_; }
  void SetStored() { changed_ = false; }
  // The whole registry, with the header and in the encoding that it was read with.
  std::string Text() const;
  // The number of values that were left out, because they cannot be read or belong to no known key.
  std::size_t Skipped() const { return loaded_.skipped; }
  // The first of them.
  const std::vector<SkippedRegValue>& SkippedValues() const { return loaded_.skippedValues; }

 private:
  using Node = RegistryTree::Node;

  // Access rights, as in winnt.h.
  static constexpr std::uint32_t kQueryValue = 1;
  static constexpr std::uint32_t kSetValue = 2;
  static constexpr std::uint32_t kEnumerateSubKeys = 8;

  struct Value {
    std::string name;
    ScannedValue source;         // in the text, where it is set last
    std::uint32_t position = 0;  // of the line that sets it first; 0 for a value that the text does not have
    RegistryData data;           // once `isRead`
    bool isRead = false;
    bool changed = false;
    bool removed = false;  // Compact takes it out
  };

  struct Values {
    std::vector<Value> list;                              // in the order of the text
    std::unordered_map<std::string, std::size_t> byName;  // indexes of `list`, by folded name
    bool changed = false;
  };

  struct OpenedKey {
    Node node;
    std::uint32_t access;
  };

  SystemError Resolve(RegistryHandle handle, std::uint32_t needed, Node& node) const;
  SystemError Walk(Node start, std::string_view path, Node& node) const;
  RegistryHandle NewHandle(Node node, std::uint32_t access);
  static std::uint32_t Granted(std::uint32_t access);
  std::string Ansi(std::string_view text) const;
  std::string StoredName(std::string_view name) const;
  bool FitsName(const std::string& name, std::size_t size) const;

  Values& ValuesOf(Node node);
  void ReadBlock(const RegistryTree::Block& block, Values& values) const;
  const RegistryData& DataOf(Value& value) const;
  static void Compact(Values& values);
  void EnsureHeading(Node node);

  std::string ChangedBlock(const RegistryTree::Block& block, const Values& values) const;
  std::string NewValues(const Values& values) const;

  const CodePage& codePage_;
  RegText source_;
  RegistryTree tree_;
  RegLoadResult loaded_;
  std::unordered_map<Node, Values> values_;             // of the keys whose values were asked for
  std::unordered_map<Node, std::vector<Node>> sorted_;  // subkeys of the keys that were listed
  std::unordered_map<RegistryHandle, OpenedKey> opened_;
  RegistryHandle nextHandle_ = 4;  // handles are multiples of four, as on Windows
  std::unordered_set<Node> volatile_;
  std::vector<Node> added_;                        // keys that need a new heading in the text
  std::unordered_map<Node, std::string> deleted_;  // the paths of deleted keys
  bool changed_ = false;
};

}  // namespace bxvbwiz
