#include <algorithm>
#include <utility>

#include "machine/MachineRegistry.h"
#include "text/Text.h"

// How values are read out of the registry's text, and how the text is made that holds what was changed.
namespace bxvbwiz {
namespace {

// Calls `use` with each value of the block that can be read, where its first line begins and where it ends.
template <typename Use>
void ForEachValue(std::string_view text, const RegistryTree::Block& block, Use use) {
  const char* const end = text.data() + text.size();
  const char* position = text.data() + block.values;
  while (position < text.data() + block.end) {
    const char* const line = position;
    position = SkipRegBlanks(position, end);
    if (position == end || (*position != '"' && *position != '@')) {
      position = NextRegLine(position, end);
      continue;
    }
    ScannedValue value;
    position = ScanRegValue(position, end, value);
    if (value.form == ScannedValue::Form::Unreadable) continue;
    use(value, static_cast<std::uint32_t>(line - text.data()),
        static_cast<std::uint32_t>(position - text.data()));
  }
}

void EndLine(std::string& text) {
  if (!text.empty() && text.back() != '\n' && text.back() != '\r') text += "\r\n";
}

}  // namespace

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
  ForEachValue(source_.text, block, [&](const ScannedValue& source, std::uint32_t position, std::uint32_t) {
    std::string name = RegValueName(source);
    std::string folded = UpperCase(name);
    if (source.form == ScannedValue::Form::Delete) {
      const auto old = values.byName.find(folded);
      if (old == values.byName.end()) return;
      values.list[old->second].removed = true;
      values.byName.erase(old);
      return;
    }
    const auto [entry, isNew] = values.byName.try_emplace(std::move(folded), values.list.size());
    if (isNew) {
      values.list.emplace_back();
      values.list.back().name = std::move(name);
      values.list.back().position = position;
    }
    values.list[entry->second].source = source;
  });
}

const RegistryData& MachineRegistry::DataOf(Value& value) const {
  if (!value.isRead) value.data = RegValueData(value.source, source_.encoding, codePage_);
  value.isRead = true;
  return value.data;
}

// Takes the removed values out of the list.
void MachineRegistry::Compact(Values& values) {
  const auto isRemoved = [](const Value& value) { return value.removed; };
  const auto end = std::remove_if(values.list.begin(), values.list.end(), isRemoved);
  if (end == values.list.end()) return;
  values.list.erase(end, values.list.end());
  values.byName.clear();
  for (std::size_t i = 0; i < values.list.size(); ++i)
    values.byName.emplace(UpperCase(values.list[i].name), i);
}

std::string MachineRegistry::Text() const {
  std::string text;
  std::uint32_t copied = 0;
  const std::vector<RegistryTree::Block>& blocks = tree_.Blocks();
  for (std::uint32_t i = 0; i < blocks.size(); ++i) {
    const RegistryTree::Block& block = blocks[i];
    const auto values = values_.find(block.node);
    const bool changed = values != values_.end() && values->second.changed;
    const bool deleted = deleted_.count(block.node) != 0;
    if (!changed && !deleted) continue;
    text.append(source_.text, copied, block.begin - copied);
    copied = block.end;
    if (deleted) continue;
    text += ChangedBlock(block, values->second);
    if (tree_.LastBlock(block.node) != i) continue;
    // New values go behind the last line that is not blank.
    const std::size_t visible = text.find_last_not_of(" \t\r\n") + 1;
    const char* const lineEnd = NextRegLine(text.data() + visible, text.data() + text.size());
    const std::string blank = text.substr(static_cast<std::size_t>(lineEnd - text.data()));
    text.resize(text.size() - blank.size());
    EndLine(text);
    text += NewValues(values->second) + blank;
  }
  text.append(source_.text, copied);
  // A heading of a key below, deleted further down in the text, would make a deleted key again.
  for (const auto& key : deleted_) {
    if (!loaded_.hasDeletions) break;
    EndLine(text);
    text += "\r\n[-" + key.second + "]\r\n";
  }
  for (const Node node : added_) {
    if (!tree_.IsAlive(node)) continue;
    EndLine(text);
    text += "\r\n[" + tree_.Path(node) + "]\r\n";
    if (const auto values = values_.find(node); values != values_.end()) text += NewValues(values->second);
  }
  return EncodeRegText(std::move(text), source_, codePage_);
}

// The block's lines with the changed values in place and without the deleted ones.
std::string MachineRegistry::ChangedBlock(const RegistryTree::Block& block, const Values& values) const {
  const std::string_view source = source_.text;
  std::string text;
  std::uint32_t copied = block.begin;
  ForEachValue(source, block, [&](const ScannedValue& scanned, std::uint32_t begin, std::uint32_t end) {
    if (scanned.form == ScannedValue::Form::Delete) return;
    const auto entry = values.byName.find(UpperCase(RegValueName(scanned)));
    const Value* const value = entry == values.byName.end() ? nullptr : &values.list[entry->second];
    if (value != nullptr && !value->changed) return;
    text.append(source.substr(copied, begin - copied));
    if (value != nullptr && value->position == begin) {
      text += FormatRegValue(value->name, value->data, source_.encoding, codePage_);
    }
    copied = end;
  });
  text.append(source.substr(copied, block.end - copied));
  return text;
}

std::string MachineRegistry::NewValues(const Values& values) const {
  std::string text;
  for (const Value& value : values.list) {
    if (value.position == 0) text += FormatRegValue(value.name, value.data, source_.encoding, codePage_);
  }
  return text;
}

}  // namespace bxvbwiz
