#include "machine/MachineProfileStrings.h"

#include <optional>
#include <utility>

#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The system takes C strings: a NUL ends an argument.
std::string_view UpToNul(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

bool IsMissing(SystemError error) {
  return error == SystemError::FileNotFound || error == SystemError::PathNotFound;
}

// The paths; `paths` is empty afterwards.
std::vector<std::string> Taken(std::set<std::string>& paths) {
  std::vector<std::string> taken(paths.begin(), paths.end());
  paths.clear();
  return taken;
}

}  // namespace

MachineProfileStrings::MachineProfileStrings(const CodePage& codePage, ProfileStore& store,
                                             std::string windowsFolder)
    : codePage_(codePage), store_(store), windowsFolder_(std::move(windowsFolder)) {}

std::string MachineProfileStrings::GetString(ProfileText section, ProfileText key,
                                             std::string_view defaultValue, std::size_t size,
                                             const std::string& file) {
  if (size == 0) return {};
  Files::iterator found;
  const SystemError error = Open(file, Use::Read, found);
  if (error != SystemError::Success) {
    if (!IsMissing(error)) unreadable_.insert(FullPath(file));
  } else {
    const ProfileEngine& engine = found->second.engine;
    if (!section) return CutList(engine.Sections(), size);
    const std::string name = codePage_.Encode(UpToNul(*section));
    if (!key) {
      if (const auto names = engine.Keys(name)) return CutList(*names, size);
    } else if (const auto value = engine.Value(name, codePage_.Encode(UpToNul(*key)))) {
      return Cut(*value, size - 1);
    }
  }
  std::string fallback = codePage_.Encode(UpToNul(defaultValue));
  fallback.resize(fallback.find_last_not_of(' ') + 1);
  return Cut(fallback, size - 1);
}

bool MachineProfileStrings::WriteString(ProfileText section, ProfileText key, ProfileText value,
                                        const std::string& file) {
  if (!section) return false;
  Edit edit{Edit::Kind::RemoveSection, codePage_.Encode(UpToNul(*section)), {}, {}};
  if (key) {
    edit.kind = value ? Edit::Kind::SetValue : Edit::Kind::RemoveKey;
    edit.key = codePage_.Encode(UpToNul(*key));
    if (value) edit.text = codePage_.Encode(UpToNul(*value));
  }
  return Apply(file, std::move(edit));
}

bool MachineProfileStrings::WriteSection(ProfileText section, ProfileText entries, const std::string& file) {
  if (!section) return false;
  Edit edit{Edit::Kind::RemoveSection, codePage_.Encode(UpToNul(*section)), {}, {}};
  if (entries) {
    edit.kind = Edit::Kind::SetSection;
    // Two NULs in a row end the list.
    edit.text = codePage_.Encode(entries->substr(0, entries->find(std::string_view("\0\0", 2))));
  }
  return Apply(file, std::move(edit));
}

std::vector<std::string> MachineProfileStrings::Unreadable() {
  return Taken(unreadable_);
}

std::vector<std::string> MachineProfileStrings::Flush() {
  StoreAll();
  return Taken(failed_);
}

void MachineProfileStrings::StoreAll() {
  for (auto file = files_.begin(); file != files_.end();) {
    file = Store(file->second) ? std::next(file) : files_.erase(file);
  }
}

void MachineProfileStrings::BeforeFileAccess(const std::string& path) {
  if (files_.empty()) return;
  const std::string key = store_.Key(path);
  if (key.empty()) return;
  for (auto file = files_.lower_bound(key); file != files_.end() && StartsWith(file->first, key);) {
    const bool isTouched = file->first.size() == key.size() || file->first[key.size()] == '\\';
    // A stored file stays in memory: if the access changes it, its stamp shows that.
    file = isTouched && !Store(file->second) ? files_.erase(file) : std::next(file);
  }
}

// ---- parts

std::string MachineProfileStrings::FullPath(const std::string& file) const {
  if (file.find_first_of("\\/:") != std::string::npos) return file;
  return windowsFolder_ + (EndsWith(windowsFolder_, "\\") ? "" : "\\") + file;
}

// Finds the file in memory, or loads it; for reading it is brought up to date with the disk. On a failure it
// is not held.
SystemError MachineProfileStrings::Open(const std::string& file, Use use, Files::iterator& found) {
  const std::string path = FullPath(file);
  const std::string key = store_.Key(path);
  if (key.empty()) return SystemError::PathNotFound;
  found = files_.find(key);
  if (found == files_.end()) {
    found = files_.emplace(key, File{path, ProfileEngine(codePage_, {}), false, {}, {}}).first;
  }
  // Storing makes all changes again on what is on the disk then, so one more need not look at it now.
  if (use == Use::Write && !found->second.unsaved.empty()) return SystemError::Success;
  const SystemError error = Refresh(found->second);
  if (error == SystemError::Success) return error;
  if (!found->second.unsaved.empty()) failed_.insert(found->second.path);
  files_.erase(found);
  return error;
}

// Reads the file again if it has changed on the disk, and makes the changes again that are not stored yet. A
// missing file with such changes is not an error: storing creates it.
SystemError MachineProfileStrings::Refresh(File& file) {
  if (file.onDisk && !store_.Changed(file.path, file.stamp)) return SystemError::Success;
  std::string bytes;
  const SystemError error = store_.Load(file.path, bytes, file.stamp);
  const bool loaded = error == SystemError::Success;
  if (!loaded && (!IsMissing(error) || file.unsaved.empty())) return error;
  if (loaded || file.onDisk) {
    file.engine = ProfileEngine(codePage_, bytes);
    for (const Edit& edit : file.unsaved) Make(file.engine, edit);
  }
  file.onDisk = loaded;
  return SystemError::Success;
}

bool MachineProfileStrings::Apply(const std::string& file, Edit edit) {
  Files::iterator found;
  if (const SystemError error = Open(file, Use::Write, found); error != SystemError::Success) {
    if (!IsMissing(error)) return false;
    const std::string path = FullPath(file);
    const std::string key = store_.Key(path);
    if (key.empty() || store_.CheckWritable(path) != SystemError::Success) return false;
    found = files_.emplace(key, File{path, ProfileEngine(codePage_, {}), false, {}, {}}).first;
  } else if (found->second.unsaved.empty() &&
             store_.CheckWritable(found->second.path) != SystemError::Success) {
    return false;
  }
  File& entry = found->second;
  if (Make(entry.engine, edit)) entry.unsaved.push_back(std::move(edit));
  if (entry.unsaved.empty() && !entry.onDisk) files_.erase(found);  // nothing to remove in a missing file
  return true;
}

bool MachineProfileStrings::Make(ProfileEngine& engine, const Edit& edit) {
  switch (edit.kind) {
    case Edit::Kind::SetValue:
      return engine.SetValue(edit.section, edit.key, edit.text);
    case Edit::Kind::RemoveKey:
      return engine.RemoveKey(edit.section, edit.key);
    case Edit::Kind::RemoveSection:
      return engine.RemoveSection(edit.section);
    case Edit::Kind::SetSection:
      return engine.SetSection(edit.section, edit.text);
  }
  return false;
}

// Stores the changes that are not on the disk yet. A file that cannot be stored is noted, and must then be
// dropped: what is held of it is not what the disk has.
bool MachineProfileStrings::Store(File& file) {
  if (file.unsaved.empty()) return true;
  SystemError error = Refresh(file);
  if (error == SystemError::Success) error = store_.Replace(file.path, file.engine.Bytes(), file.stamp);
  file.unsaved.clear();
  file.onDisk = true;
  if (error != SystemError::Success) failed_.insert(file.path);
  return error == SystemError::Success;
}

std::string MachineProfileStrings::CutList(const std::vector<std::string>& names, std::size_t size) const {
  std::string list;
  for (const std::string& name : names) {
    list += name;
    list += '\0';
  }
  // One more NUL ends the list; a list that is cut ends in two NULs.
  if (list.size() < size) return codePage_.Decode(list);
  return size > 2 ? Cut(list, size - 2) : std::string();
}

// The text of at most `limit` bytes of the code page, half a character dropped.
std::string MachineProfileStrings::Cut(std::string_view bytes, std::size_t limit) const {
  std::string text = codePage_.Decode(bytes);
  if (bytes.size() <= limit) return text;
  std::size_t end = 0;
  for (std::size_t used = 0; end < text.size();) {
    std::size_t next = end;
    NextCharacter(text, next);
    used += codePage_.Encode(std::string_view(text).substr(end, next - end)).size();
    if (used > limit) break;
    end = next;
  }
  text.resize(end);
  return text;
}

}  // namespace bxvbwiz
