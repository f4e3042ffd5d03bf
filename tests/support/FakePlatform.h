#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/Text.h"
#include "support/User.h"

namespace bxvbwiz {

// Keys by their path in upper case, "<root handle>\A\B"; names keep their case.
class FakeRegistry : public Registry {
 public:
  struct Node {
    std::string name;
    std::vector<std::pair<std::string, RegistryData>> values;
  };
  std::map<std::string, Node> nodes;
  std::set<std::string> readOnly;  // last names of keys that only open for reading
  std::map<RegistryHandle, std::string> open;

  static std::string PathOf(RegistryHandle root) { return std::to_string(static_cast<std::uint32_t>(root)); }
  Node& Make(RegistryHandle root, const std::string& path) {
    std::string at = PathOf(root);
    for (std::size_t start = 0; start <= path.size();) {
      const std::size_t end = std::min(path.find('\\', start), path.size());
      const std::string name = path.substr(start, end - start);
      at += "\\" + UpperCase(name);
      nodes.emplace(at, Node{name, {}});
      start = end + 1;
    }
    return nodes[at];
  }
  SystemError OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                      RegistryHandle& opened) override {
    const auto found = nodes.find(At(key) + "\\" + UpperCase(path));
    if (found == nodes.end()) return SystemError::FileNotFound;
    if ((access & 2) != 0 && readOnly.count(found->second.name) != 0) return SystemError::AccessDenied;
    opened = ++lastHandle_;
    open[opened] = found->first;
    return SystemError::Success;
  }
  SystemError CloseKey(RegistryHandle key) override {
    return open.erase(key) == 1 ? SystemError::Success : SystemError::InvalidHandle;
  }
  SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t, std::uint32_t access,
                        RegistryHandle& opened) override {
    nodes.emplace(At(key) + "\\" + UpperCase(path), Node{path, {}});
    return OpenKey(key, path, access, opened);
  }
  SystemError DeleteKey(RegistryHandle key, const std::string& name) override {
    return nodes.erase(At(key) + "\\" + UpperCase(name)) == 1 ? SystemError::Success
                                                              : SystemError::FileNotFound;
  }
  SystemError EnumKey(RegistryHandle key, std::uint32_t index, std::size_t, std::string& name) override {
    const std::string prefix = At(key) + "\\";
    for (const auto& [path, node] : nodes) {
      if (!StartsWith(path, prefix) || path.find('\\', prefix.size()) != std::string::npos) continue;
      if (index-- == 0) return name = node.name, SystemError::Success;
    }
    return SystemError::NoMoreItems;
  }
  SystemError EnumValue(RegistryHandle key, std::uint32_t index, std::size_t, std::string& name,
                        std::uint32_t& type) override {
    const auto& values = nodes[At(key)].values;
    if (index >= values.size()) return SystemError::NoMoreItems;
    name = values[index].first;
    type = values[index].second.type;
    return SystemError::Success;
  }
  SystemError QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                         RegistryData& data) override {
    for (const auto& value : nodes[At(key)].values) {
      if (!EqualsIgnoreCase(value.first, name)) continue;
      if (value.second.data.size() > size) return SystemError::MoreData;
      return data = value.second, SystemError::Success;
    }
    return SystemError::FileNotFound;
  }
  SystemError SetValue(RegistryHandle key, const std::string& name, const RegistryData& data) override {
    DeleteValue(key, name);
    nodes[At(key)].values.emplace_back(name, data);
    return SystemError::Success;
  }
  SystemError DeleteValue(RegistryHandle key, const std::string& name) override {
    auto& values = nodes[At(key)].values;
    for (auto value = values.begin(); value != values.end(); ++value) {
      if (EqualsIgnoreCase(value->first, name)) return values.erase(value), SystemError::Success;
    }
    return SystemError::FileNotFound;
  }

 private:
  std::string At(RegistryHandle key) const { return key > 0 ? open.at(key) : PathOf(key); }
  RegistryHandle lastHandle_ = 0;
};

// Files and folders by their full path as spelled. Patterns: one name, or "*.*".
class FakeFiles : public FileSystem {
 public:
  struct Entry {
    std::string bytes;
    std::uint32_t attributes = kAttributeArchive;
  };
  std::map<std::string, Entry> entries;
  std::vector<SystemError> faults;  // what the next copies give, the last one first

  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    const std::size_t cut = pattern.rfind('\\') + 1;
    const std::string folder = pattern.substr(0, cut);
    const std::string name = pattern.substr(cut);
    if (entries.count(folder.substr(0, folder.size() - 1)) == 0) return SystemError::PathNotFound;
    if (name == "*.*") found = {{".", kAttributeDirectory}, {"..", kAttributeDirectory}};
    for (const auto& [path, entry] : entries) {
      if (!StartsWith(path, folder) || path.find('\\', cut) != std::string::npos) continue;
      if (name == "*.*" || EqualsIgnoreCase(path.substr(cut), name))
        found.push_back({path.substr(cut), entry.attributes});
    }
    return found.empty() ? SystemError::FileNotFound : SystemError::Success;
  }
  FileHandle Open(const std::string& path, std::uint32_t, std::uint32_t, std::uint32_t,
                  std::uint32_t) override {
    return entries.count(path) == 0 ? kInvalidFile : 7;
  }
  bool Close(FileHandle file) override { return closed.push_back(file), true; }
  bool SetTimes(FileHandle, FileTime time) override { return times.push_back(time), true; }
  SystemError Read(const std::string& path, std::string& bytes) override {
    return bytes = entries[path].bytes, SystemError::Success;
  }
  SystemError Write(const std::string& path, std::string_view bytes, WriteMode mode) override {
    std::string& kept = entries[path].bytes;
    if (mode == WriteMode::Create) kept.clear();
    return kept.append(bytes), SystemError::Success;
  }
  SystemError Map(const std::string&, std::unique_ptr<FileView>&) override { return kUnsupported; }
  SystemError Copy(const std::string& source, const std::string& target) override {
    if (!faults.empty()) {
      const SystemError fault = faults.back();
      faults.pop_back();
      return fault;
    }
    return entries[target] = entries.at(source), SystemError::Success;
  }
  SystemError Rename(const std::string&, const std::string&) override { return kUnsupported; }
  SystemError Delete(const std::string&) override { return kUnsupported; }
  SystemError MakeDirectory(const std::string& path) override {
    return entries[path].attributes = kAttributeDirectory, SystemError::Success;
  }
  SystemError SetAttributes(const std::string& path, std::uint32_t attributes) override {
    return entries.at(path).attributes = attributes, SystemError::Success;
  }
  std::string Search(const std::string&) override { return {}; }
  SystemError FullPath(const std::string&, std::string&) override { return kUnsupported; }
  std::string CurrentDirectory() override { return "C:\\"; }
  SystemError ChangeDirectory(const std::string&) override { return kUnsupported; }

  std::vector<FileHandle> closed;
  std::vector<FileTime> times;

 private:
  static constexpr SystemError kUnsupported = SystemError::GeneralFailure;
};

// The small parts, in one object: each answers from a public member.
class FakeParts : public SystemFacts,
                  public ProfileStrings,
                  public Processes,
                  public Guids,
                  public Settings,
                  public Clock,
                  public CodePage,
                  public StringTable {
 public:
  VersionInfo version{5, 1, 2600, 2, "Service Pack 3"};
  std::string windows = "C:\\WINDOWS";
  std::map<std::string, std::string> settings;
  int folderCalls = 0;

  VersionInfo Version() override { return version; }
  std::string WindowsDirectory(std::size_t) override { return ++folderCalls, windows; }
  std::string SystemDirectory(std::size_t) override { return ++folderCalls, windows + "\\system32"; }
  std::string GetString(ProfileText, ProfileText, std::string_view, std::size_t,
                        const std::string&) override {
    return {};
  }
  bool WriteString(ProfileText, ProfileText, ProfileText, const std::string&) override { return false; }
  bool WriteSection(ProfileText, ProfileText, const std::string&) override { return false; }
  std::vector<std::string> Flush() override { return {}; }
  std::unique_ptr<Process> Start(const std::string&) override { return nullptr; }
  std::optional<GuidBytes> Create() override {
    return GuidBytes{0x3C, 0x2D, 0x1E, 0x0F, 0x5B, 0x4A, 0x87, 0x69,
                     0xA5, 0xB4, 0xC3, 0xD2, 0xE1, 0xF0, 1,    2};
  }
  std::string Get(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& defaultValue) override {
    const auto found = settings.find(application + "/" + section + "/" + key);
    return found == settings.end() ? defaultValue : found->second;
  }
  std::optional<FileTime> SystemTime() override { return FileTime{42}; }
  std::string LocalDateTimeText() override { return {}; }
  // Latin-1, and nothing beyond ASCII is alphanumeric but its letters from U+00C0 on.
  std::string Decode(std::string_view bytes) const override {
    std::string text;
    for (const char byte : bytes) AppendUtf8(text, static_cast<unsigned char>(byte));
    return text;
  }
  std::string Encode(std::string_view text) const override {
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
      const char32_t character = NextCharacter(text, at);
      bytes += character < 0x100 ? static_cast<char>(character) : '?';
    }
    return bytes;
  }
  bool IsAlphaNumeric(char32_t character) const override { return character >= 0xC0 && character < 0x100; }
  std::string Text(unsigned number) const override { return std::to_string(number) + " (%%1)"; }
};

struct FakePlatform {
  FakeRegistry registry;
  FakeFiles files;
  FakeParts parts;
  Platform platform{registry, parts, files, parts, parts, parts, parts, parts, parts, parts};
};

// Answers messages with the buttons given to it, Cancel when they are used up, and records what it is told.
class RecordingUser : public User {
 public:
  std::deque<Button> answers;
  std::vector<std::string> messages;
  std::vector<Pointer> pointers;
  int advances = 0;
  int events = 0;
  int returnCode = -1;
  bool ended = false;

  Button ShowMessage(const Message& message) override {
    messages.push_back(message.text);
    if (answers.empty()) return Button::Cancel;
    const Button answer = answers.front();
    answers.pop_front();
    return answer;
  }
  void ShowStatus(const std::string&) override {}
  void AdvanceProgress() override { ++advances; }
  void SetPointer(Pointer pointer) override { pointers.push_back(pointer); }
  void DoEvents() override { ++events; }
  void SetReturnCode(std::int16_t code) override { returnCode = code; }
  void WizardHasEnded() override { ended = true; }
  void NoteIncomplete(const std::string&) override {}
};

}  // namespace bxvbwiz
