#include <algorithm>
#include <utility>

#include "machine/MachineRegistry.h"
#include "text/Text.h"

// The text of the registry with what was changed.
namespace bxvbwiz {
namespace {

void EndLine(std::string& text) {
  if (!text.empty() && text.back() != '\n' && text.back() != '\r') text += "\r\n";
}

}  // namespace

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
    // New values go after the last line that is not blank.
    const std::size_t visible = text.find_last_not_of(" \t\r\n") + 1;
    const char* const lineEnd = NextRegLine(text.data() + visible, text.data() + text.size());
    const std::string blank = text.substr(static_cast<std::size_t>(lineEnd - text.data()));
    text.resize(text.size() - blank.size());
    EndLine(text);
    text += NewValues(values->second) + blank;
  }
  text.append(source_.text, copied);
  // The heading of a subkey that the text deletes further down would create a deleted key again.
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

// The block's lines with changed values in place and without deleted ones.
std::string MachineRegistry::ChangedBlock(const RegistryTree::Block& block, const Values& values) const {
  const std::string_view source = source_.text;
  std::string text;
  std::size_t copied = block.begin;
  ForEachRegValue(
      source, block.values, block.end, [&](const ScannedValue& scanned, std::size_t begin, std::size_t end) {
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
