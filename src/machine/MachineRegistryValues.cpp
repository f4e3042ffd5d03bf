#include <algorithm>
#include <utility>

#include "machine/MachineRegistry.h"
#include "text/Text.h"
#include "text/Utf16Text.h"

// The calls that read and change values, and the reading of values from the registry's text.
namespace bxvbwiz {

SystemError MachineRegistry::EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size,
                                       std::string& name, std::uint32_t& type) {
  Node node = RegistryTree::kNone;
  if (const SystemError error = Resolve(key, kQueryValue, node); error != SystemError::Success) return error;
  const Values& values = ValuesOf(node);
  if (index >= values.list.size()) return SystemError::NoMoreItems;
  const Value& value = values.list[index];
  std::string found = Ansi(value.name);
  if (!FitsName(found, size)) return SystemError::MoreData;
  name = std::move(found);
  type = value.isRead ? value.data.type : value.source.type;
  return SystemError::Success;
}

SystemError MachineRegistry::QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                                        RegistryData& data) {
  Node node = RegistryTree::kNone;
  if (const SystemError error = Resolve(key, kQueryValue, node); error != SystemError::Success) return error;
  Values& values = ValuesOf(node);
  const auto entry = values.byName.find(UpperCase(StoredName(name)));
  if (entry == values.byName.end()) return SystemError::FileNotFound;
  RegistryData found = DataOf(values.list[entry->second]);
  std::size_t bytes = found.data.size();
  if (IsTextType(found.type) && !IsAscii(found.data)) {
    const std::string encoded = codePage_.Encode(found.data);
    bytes = encoded.size();
    found.data = codePage_.Decode(encoded);
  }
  if (bytes > size) return SystemError::MoreData;
  data = std::move(found);
  return SystemError::Success;
}

SystemError MachineRegistry::SetValue(RegistryHandle key, const std::string& name, const RegistryData& data) {
  Node node = RegistryTree::kNone;
  if (const SystemError error = Resolve(key, kSetValue, node); error != SystemError::Success) return error;
  const std::string stored = StoredName(name);
  if (!IsOneLine(stored)) return SystemError::InvalidName;
  const RegistryData wanted{data.type, IsTextType(data.type) ? Ansi(data.data) : data.data};
  Values& values = ValuesOf(node);
  const auto [entry, isNew] = values.byName.try_emplace(UpperCase(stored), values.list.size());
  if (isNew) {
    values.list.emplace_back();
    values.list.back().name = stored;
  }
  Value& value = values.list[entry->second];
  if (!isNew) {
    const RegistryData& present = DataOf(value);
    if (present.type == wanted.type && present.data == wanted.data) return SystemError::Success;
  }
  value.data = wanted;
  value.isRead = value.changed = true;
  values.changed = true;
  if (volatile_.count(node) != 0) return SystemError::Success;
  EnsureHeading(node);
  changed_ = true;
  return SystemError::Success;
}

SystemError MachineRegistry::DeleteValue(RegistryHandle key, const std::string& name) {
  Node node = RegistryTree::kNone;
  if (const SystemError error = Resolve(key, kSetValue, node); error != SystemError::Success) return error;
  Values& values = ValuesOf(node);
  const auto entry = values.byName.find(UpperCase(StoredName(name)));
  if (entry == values.byName.end()) return SystemError::FileNotFound;
  values.list[entry->second].removed = true;
  Compact(values);
  values.changed = true;
  changed_ = true;
  return SystemError::Success;
}

// ---- parts

MachineRegistry::Values& MachineRegistry::ValuesOf(Node node) {
  const auto [entry, isNew] = values_.try_emplace(node);
  if (!isNew) return entry->second;
  std::vector<std::uint32_t> blocks;
  for (std::uint32_t block = tree_.LastBlock(node); block != RegistryTree::kNone;
       block = tree_.Blocks()[block].previous) {
    blocks.push_back(block);
  }
  for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) {
    ReadBlock(tree_.Blocks()[*block], entry->second);
  }
  Compact(entry->second);
  return entry->second;
}

void MachineRegistry::ReadBlock(const RegistryTree::Block& block, Values& values) const {
  ForEachRegValue(source_.text, block.values, block.end,
                  [&](const ScannedValue& source, std::size_t position, std::size_t) {
                    std::string name = RegValueName(source);
                    std::string folded = UpperCase(name);
                    if (source.form == ScannedValue::Form::Delete) {
                      const auto old = values.byName.find(folded);
                      if (old == values.byName.end()) return;
                      values.list[old->second].removed = true;
                      values.byName.erase(old);
                      return;
                    }
                    const auto [entry, isNew] =
                        values.byName.try_emplace(std::move(folded), values.list.size());
                    if (isNew) {
                      values.list.emplace_back();
                      values.list.back().name = std::move(name);
                      values.list.back().position = static_cast<std::uint32_t>(position);
                    }
                    values.list[entry->second].source = source;
                  });
}

const RegistryData& MachineRegistry::DataOf(Value& value) const {
  if (!value.isRead) value.data = RegValueData(value.source, source_.encoding, codePage_);
  value.isRead = true;
  return value.data;
}

// Takes removed values out of the list.
void MachineRegistry::Compact(Values& values) {
  const auto isRemoved = [](const Value& value) { return value.removed; };
  const auto end = std::remove_if(values.list.begin(), values.list.end(), isRemoved);
  if (end == values.list.end()) return;
  values.list.erase(end, values.list.end());
  values.byName.clear();
  for (std::size_t i = 0; i < values.list.size(); ++i)
    values.byName.emplace(UpperCase(values.list[i].name), i);
}

}  // namespace bxvbwiz
