#include "machine/ProfileEngine.h"

#include <algorithm>
#include <utility>

#include "text/ProfileLine.h"
#include "text/Text.h"
#include "text/Utf16Text.h"

namespace bxvbwiz {

ProfileEngine::ProfileEngine(const CodePage& codePage, std::string_view bytes) : codePage_(&codePage) {
  utf16_ = StartsWith(bytes, kUtf16Mark);
  if (utf16_) {
    Read(FromUtf16(bytes.substr(kUtf16Mark.size())));
  } else {
    Read(bytes);
  }
}

// ---- reading

void ProfileEngine::Read(std::string_view text) {
  lines_.clear();
  sections_.clear();
  repeatsSections_ = false;
  Section* current = nullptr;
  while (!text.empty()) {
    const std::size_t length = ProfileLineLength(text);
    lines_.push_back({Line::Kind::Other, std::string(text.substr(0, length))});
    Index(std::prev(lines_.end()), current);
    text.remove_prefix(length);
  }
}

// Finds out what the line is and adds it to the index. `current` is the section that keys belong to: null
// before the first heading and below a repeated heading, which is never searched.
void ProfileEngine::Index(Lines::iterator line, Section*& current) {
  const std::string_view content = TrimProfileText(WithoutLineEnd(line->text));
  if (content.empty() || content.front() == ';') return;
  if (content.front() == '[') {
    line->kind = Line::Kind::Heading;
    const auto [entry, added] = sections_.try_emplace(Fold(HeadingName(*line)));
    current = added ? &entry->second : nullptr;
    repeatsSections_ = repeatsSections_ || !added;
    if (added) entry->second.heading = entry->second.lastKey = line;
  } else if (content.find('=') != std::string_view::npos) {
    line->kind = Line::Kind::Key;
    if (current == nullptr) return;
    current->lastKey = line;
    if (!current->keys.try_emplace(Fold(KeyName(content)), line).second) current->repeatsKeys = true;
  }
}

std::string ProfileEngine::HeadingName(const Line& line) const {
  std::string_view content = TrimProfileText(WithoutLineEnd(line.text));
  content.remove_prefix(1);
  if (utf16_ || IsAscii(content)) return std::string(TrimProfileText(content.substr(0, content.find(']'))));
  // In a double-byte code page the byte of "]" is also the second byte of letters.
  const std::string text = codePage_->Decode(content);
  return codePage_->Encode(TrimProfileText(std::string_view(text).substr(0, text.find(']'))));
}

std::optional<std::string> ProfileEngine::Value(std::string_view section, std::string_view key) const {
  const Section* found = Find(section);
  if (found == nullptr) return std::nullopt;
  const auto entry = found->keys.find(Fold(FromCodePage(TrimProfileText(key))));
  if (entry == found->keys.end()) return std::nullopt;
  return ToCodePage(KeyValue(entry->second->text));
}

std::optional<std::vector<std::string>> ProfileEngine::Keys(std::string_view section) const {
  const Section* found = Find(section);
  if (found == nullptr) return std::nullopt;
  std::vector<std::string> names;
  for (const Lines::iterator line : KeyLines(*found)) {
    // An empty name would end the list early: its readers take it as a sequence of C strings.
    if (const std::string_view name = KeyName(line->text); !name.empty()) names.push_back(ToCodePage(name));
  }
  return names;
}

std::vector<std::string> ProfileEngine::Sections() const {
  std::vector<std::string> names;
  for (const Line& line : lines_) {
    if (line.kind != Line::Kind::Heading) continue;
    if (const std::string name = HeadingName(line); !name.empty()) names.push_back(ToCodePage(name));
  }
  return names;
}

// ---- changing

bool ProfileEngine::SetValue(std::string_view section, std::string_view key, std::string_view value) {
  const std::string name = FromCodePage(TrimProfileText(key));
  const std::string text = FromCodePage(value);
  bool oddSection = false;
  bool changed = EndWithLineBreak();
  Section* found = Find(section);
  const auto entry = found == nullptr ? LineIndex::iterator() : found->keys.find(Fold(name));
  if (found != nullptr && entry != found->keys.end()) {
    std::string line = WithValue(entry->second->text, text);
    changed = changed || line != entry->second->text;
    entry->second->text = std::move(line);
  } else {
    if (found == nullptr) found = &Append(section, oddSection);
    AppendKey(*found, name, name + '=' + text + "\r\n");
    changed = true;
  }
  if (oddSection || IsOddKey(key, value)) Read(Text());
  return changed;
}

bool ProfileEngine::RemoveKey(std::string_view section, std::string_view key) {
  Section* found = Find(section);
  if (found == nullptr) return false;
  const auto entry = found->keys.find(Fold(FromCodePage(TrimProfileText(key))));
  if (entry == found->keys.end()) return false;
  const Lines::iterator line = entry->second;
  if (line == found->lastKey) {
    do {
      --found->lastKey;
    } while (found->lastKey->kind == Line::Kind::Other);
  }
  lines_.erase(line);
  found->keys.erase(entry);
  EndWithLineBreak();
  if (found->repeatsKeys) Read(Text());
  return true;
}

bool ProfileEngine::RemoveSection(std::string_view section) {
  Section* found = Find(section);
  if (found == nullptr) return false;
  RemoveKeys(*found);
  lines_.erase(found->heading);
  sections_.erase(Fold(FromCodePage(TrimProfileText(section))));
  EndWithLineBreak();
  if (repeatsSections_) Read(Text());
  return true;
}

bool ProfileEngine::SetSection(std::string_view section, std::string_view entries) {
  std::vector<std::string> texts;
  bool odd = false;
  bool oddSection = false;
  while (!entries.empty()) {
    const std::string_view entry = entries.substr(0, entries.find('\0'));
    entries.remove_prefix(std::min(entry.size() + 1, entries.size()));
    if (entry.find('=') == std::string_view::npos) continue;
    texts.push_back(FromCodePage(entry) + "\r\n");
    odd = odd || IsOddKey(entry.substr(0, entry.find('=')), entry);
  }
  bool changed = EndWithLineBreak();
  Section* found = Find(section);
  if (found != nullptr) {
    const std::vector<Lines::iterator> old = KeyLines(*found);
    const bool same =
        std::equal(old.begin(), old.end(), texts.begin(), texts.end(),
                   [](Lines::iterator line, const std::string& text) { return line->text == text; });
    if (same) return changed;
    RemoveKeys(*found);
  } else {
    found = &Append(section, oddSection);
  }
  for (std::string& text : texts) {
    const std::string name(KeyName(text));
    AppendKey(*found, name, std::move(text));
  }
  if (odd || oddSection) Read(Text());
  return true;
}

// ---- parts

ProfileEngine::Section* ProfileEngine::Find(std::string_view section) {
  const auto entry = sections_.find(Fold(FromCodePage(TrimProfileText(section))));
  return entry == sections_.end() ? nullptr : &entry->second;
}

const ProfileEngine::Section* ProfileEngine::Find(std::string_view section) const {
  const auto entry = sections_.find(Fold(FromCodePage(TrimProfileText(section))));
  return entry == sections_.end() ? nullptr : &entry->second;
}

// `odd` becomes true when the heading does not read back as that name.
ProfileEngine::Section& ProfileEngine::Append(std::string_view section, bool& odd) {
  const std::string name = FromCodePage(TrimProfileText(section));
  lines_.push_back({Line::Kind::Heading, '[' + name + "]\r\n"});
  odd = HeadingName(lines_.back()) != name || name.find_first_of("\r\n") != std::string::npos;
  Section& added = sections_[Fold(name)];
  added.heading = added.lastKey = std::prev(lines_.end());
  return added;
}

void ProfileEngine::AppendKey(Section& section, std::string_view name, std::string text) {
  section.lastKey = lines_.insert(std::next(section.lastKey), {Line::Kind::Key, std::move(text)});
  if (!section.keys.try_emplace(Fold(name), section.lastKey).second) section.repeatsKeys = true;
}

std::vector<ProfileEngine::Lines::iterator> ProfileEngine::KeyLines(const Section& section) const {
  std::vector<Lines::iterator> found;
  for (auto line = section.heading; line != section.lastKey;) {
    ++line;
    if (line->kind == Line::Kind::Key) found.push_back(line);
  }
  return found;
}

void ProfileEngine::RemoveKeys(Section& section) {
  for (const Lines::iterator line : KeyLines(section)) lines_.erase(line);
  section.keys.clear();
  section.lastKey = section.heading;
  section.repeatsKeys = false;
}

// After a write the file ends in CR LF, whatever its last line ended with. Gives whether the file changed.
bool ProfileEngine::EndWithLineBreak() {
  if (lines_.empty() || EndsWith(lines_.back().text, "\r\n")) return false;
  std::string& text = lines_.back().text;
  text.resize(WithoutLineEnd(text).size());
  text += "\r\n";
  return true;
}

std::string ProfileEngine::Text() const {
  std::string text;
  for (const Line& line : lines_) text += line.text;
  return text;
}

std::string ProfileEngine::Bytes() const {
  return utf16_ ? std::string(kUtf16Mark) + ToUtf16(Text()) : Text();
}

std::string ProfileEngine::FromCodePage(std::string_view bytes) const {
  return utf16_ && !IsAscii(bytes) ? codePage_->Decode(bytes) : std::string(bytes);
}

std::string ProfileEngine::ToCodePage(std::string_view text) const {
  return utf16_ && !IsAscii(text) ? codePage_->Encode(text) : std::string(text);
}

std::string ProfileEngine::Fold(std::string_view text) const {
  return utf16_ || IsAscii(text) ? UpperCase(text) : UpperCase(codePage_->Decode(text));
}

}  // namespace bxvbwiz
