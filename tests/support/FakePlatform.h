#pragma once

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/Forwarding.h"
#include "platform/machine/CodePages.h"
#include "platform/machine/MachineRegistry.h"
#include "platform/Text.h"
#include "support/User.h"

namespace bxvbwiz {

// Counts the open handles; keys of the names in `readOnly` open for reading only.
class WatchedRegistry : public ForwardingRegistry {
 public:
  using ForwardingRegistry::ForwardingRegistry;
  std::set<std::string> readOnly;
  int open = 0;

  SystemError OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                      RegistryHandle& opened) override {
    if (Refused(path, access)) return SystemError::AccessDenied;
    return Counted(ForwardingRegistry::OpenKey(key, path, access, opened));
  }
  SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                        std::uint32_t access, RegistryHandle& opened) override {
    if (Refused(path, access)) return SystemError::AccessDenied;
    return Counted(ForwardingRegistry::CreateKey(key, path, options, access, opened));
  }
  SystemError CloseKey(RegistryHandle key) override { return --open, ForwardingRegistry::CloseKey(key); }

 private:
  bool Refused(const std::string& path, std::uint32_t access) const {
    constexpr std::uint32_t kSetValue = 2;  // KEY_SET_VALUE of winnt.h
    return (access & kSetValue) != 0 && readOnly.count(path.substr(path.rfind('\\') + 1)) != 0;
  }
  SystemError Counted(SystemError result) { return open += result == SystemError::Success, result; }
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
  std::string Text(unsigned number) const override { return std::to_string(number) + " (%%1)"; }
};

struct FakePlatform {
  explicit FakePlatform(const std::string& registryLines = {})
      : stored("REGEDIT4\r\n" + registryLines, *codePage) {}

  std::unique_ptr<CodePage> codePage = MakeCodePage(1252);
  MachineRegistry stored;
  WatchedRegistry registry{stored};
  FakeFiles files;
  FakeParts parts;
  Platform platform{registry, parts, files, parts, parts, parts, parts, parts, *codePage, parts};
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
