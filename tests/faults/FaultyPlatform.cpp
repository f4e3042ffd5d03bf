#include "faults/FaultyPlatform.h"

#include <map>

#include "platform/Forwarding.h"
#include "sysinfo/Key.h"

namespace bxvbwiz {
namespace {

using E = SystemError;

// The errors that the system gives. That something is missing is an answer and no fault: where a call asks
// whether something is there, that error is not among them.
constexpr E kFind[] = {E::AccessDenied, E::NotReady};
constexpr E kRead[] = {E::FileNotFound, E::AccessDenied, E::SharingViolation, E::GeneralFailure};
constexpr E kMap[] = {E::AccessDenied, E::SharingViolation, E::NotEnoughMemory};
constexpr E kWrite[] = {E::PathNotFound, E::AccessDenied, E::WriteProtect, E::DiskFull};
constexpr E kCopy[] = {E::FileNotFound, E::AccessDenied, E::SharingViolation, E::DiskFull};
constexpr E kRename[] = {E::FileNotFound, E::AccessDenied, E::AlreadyExists, E::SharingViolation};
constexpr E kDelete[] = {E::AccessDenied, E::SharingViolation};
constexpr E kMakeDirectory[] = {E::PathNotFound, E::AccessDenied, E::AlreadyExists, E::DiskFull};
constexpr E kSetAttributes[] = {E::FileNotFound, E::AccessDenied};
constexpr E kFullPath[] = {E::FilenameTooLong};
constexpr E kChangeDirectory[] = {E::PathNotFound, E::AccessDenied};
constexpr E kOpenKey[] = {E::AccessDenied, E::NotEnoughMemory};
constexpr E kCloseKey[] = {E::InvalidHandle};
constexpr E kReadKey[] = {E::AccessDenied, E::MoreData, E::NotEnoughMemory};

// Makes a call, unless it is to fail.
template <std::size_t kCount, class Call>
E Try(FaultPlan& plan, const char* name, const std::string& path, const E (&errors)[kCount], Call call) {
  const std::size_t way = plan.Next(name, path, kCount);
  return way == 0 ? call() : errors[way - 1];
}

// For calls that tell no error.
bool Fails(FaultPlan& plan, const char* name, const std::string& path = {}) {
  return plan.Next(name, path, 1) != 0;
}

class FaultyRegistry : public ForwardingRegistry {
 public:
  FaultyRegistry(Registry& inner, FaultPlan& plan) : ForwardingRegistry(inner), plan_(plan) {}
  E OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
            RegistryHandle& opened) override {
    return Open("OpenKey", key, path, opened,
                [&] { return ForwardingRegistry::OpenKey(key, path, access, opened); });
  }
  E CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options, std::uint32_t access,
              RegistryHandle& opened) override {
    return Open("CreateKey", key, path, opened,
                [&] { return ForwardingRegistry::CreateKey(key, path, options, access, opened); });
  }
  E CloseKey(RegistryHandle key) override {
    return Try(plan_, "CloseKey", PathOf(key), kCloseKey, [&] { return ForwardingRegistry::CloseKey(key); });
  }
  E EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name) override {
    return Try(plan_, "EnumKey", PathOf(key), kReadKey,
               [&] { return ForwardingRegistry::EnumKey(key, index, size, name); });
  }
  E EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name,
              std::uint32_t& type) override {
    return Try(plan_, "EnumValue", PathOf(key), kReadKey,
               [&] { return ForwardingRegistry::EnumValue(key, index, size, name, type); });
  }
  E QueryValue(RegistryHandle key, const std::string& name, std::size_t size, RegistryData& data) override {
    return Try(plan_, "QueryValue", PathOf(key), kReadKey,
               [&] { return ForwardingRegistry::QueryValue(key, name, size, data); });
  }

 private:
  template <class Call>
  E Open(const char* name, RegistryHandle key, const std::string& path, const RegistryHandle& opened,
         Call call) {
    const std::string full = PathOf(key) + "\\" + path;
    const E error = Try(plan_, name, full, kOpenKey, call);
    if (error == E::Success) paths_[opened] = full;
    return error;
  }
  std::string PathOf(RegistryHandle key) { return key < 0 ? Key::Root(*this, key)->Name() : paths_[key]; }

  FaultPlan& plan_;
  std::map<RegistryHandle, std::string> paths_;
};

class FaultyFiles : public ForwardingFileSystem {
 public:
  using Base = ForwardingFileSystem;
  FaultyFiles(FileSystem& inner, FaultPlan& plan) : Base(inner), plan_(plan) {}
  E Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    return Try(plan_, "Find", pattern, kFind, [&] { return Base::Find(pattern, found); });
  }
  FileHandle Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                  std::uint32_t disposition, std::uint32_t attributes) override {
    if (Fails(plan_, "Open", path)) return kInvalidFile;
    const FileHandle file = Base::Open(path, access, share, disposition, attributes);
    paths_[file] = path;
    return file;
  }
  bool Close(FileHandle file) override {
    const bool closed = Base::Close(file);  // the system lets go of it in any case
    return !Fails(plan_, "Close", paths_[file]) && closed;
  }
  bool SetTimes(FileHandle file, FileTime time) override {
    return !Fails(plan_, "SetTimes", paths_[file]) && Base::SetTimes(file, time);
  }
  E Read(const std::string& path, std::string& bytes) override {
    return Try(plan_, "Read", path, kRead, [&] { return Base::Read(path, bytes); });
  }
  E Write(const std::string& path, std::string_view bytes, WriteMode mode) override {
    return Try(plan_, "Write", path, kWrite, [&] { return Base::Write(path, bytes, mode); });
  }
  E Map(const std::string& path, std::unique_ptr<FileView>& view) override {
    return Try(plan_, "Map", path, kMap, [&] { return Base::Map(path, view); });
  }
  E Copy(const std::string& source, const std::string& target) override {
    return Try(plan_, "Copy", source, kCopy, [&] { return Base::Copy(source, target); });
  }
  E Rename(const std::string& source, const std::string& target) override {
    return Try(plan_, "Rename", target, kRename, [&] { return Base::Rename(source, target); });
  }
  E Delete(const std::string& path) override {
    return Try(plan_, "Delete", path, kDelete, [&] { return Base::Delete(path); });
  }
  E MakeDirectory(const std::string& path) override {
    return Try(plan_, "MakeDirectory", path, kMakeDirectory, [&] { return Base::MakeDirectory(path); });
  }
  E SetAttributes(const std::string& path, std::uint32_t attributes) override {
    return Try(plan_, "SetAttributes", path, kSetAttributes,
               [&] { return Base::SetAttributes(path, attributes); });
  }
  std::string Search(const std::string& name) override {
    return Fails(plan_, "Search", name) ? std::string() : Base::Search(name);
  }
  E FullPath(const std::string& path, std::string& full) override {
    return Try(plan_, "FullPath", path, kFullPath, [&] { return Base::FullPath(path, full); });
  }
  std::string CurrentDirectory() override {
    return Fails(plan_, "CurrentDirectory") ? std::string() : Base::CurrentDirectory();
  }
  E ChangeDirectory(const std::string& path) override {
    return Try(plan_, "ChangeDirectory", path, kChangeDirectory, [&] { return Base::ChangeDirectory(path); });
  }

 private:
  FaultPlan& plan_;
  std::map<FileHandle, std::string> paths_;
};

class FaultyProfiles : public ForwardingProfileStrings {
 public:
  using Base = ForwardingProfileStrings;
  FaultyProfiles(ProfileStrings& inner, FaultPlan& plan) : Base(inner), plan_(plan) {}
  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string& file) override {
    if (!Fails(plan_, "GetString", file)) return Base::GetString(section, key, defaultValue, size, file);
    unreadable_.push_back(file);
    return std::string(defaultValue);
  }
  bool WriteString(ProfileText section, ProfileText key, ProfileText value,
                   const std::string& file) override {
    return !Fails(plan_, "WriteString", file) && Base::WriteString(section, key, value, file);
  }
  bool WriteSection(ProfileText section, ProfileText entries, const std::string& file) override {
    return !Fails(plan_, "WriteSection", file) && Base::WriteSection(section, entries, file);
  }
  std::vector<std::string> Unreadable() override {
    std::vector<std::string> files = Base::Unreadable();
    files.insert(files.end(), unreadable_.begin(), unreadable_.end());
    unreadable_.clear();
    return files;
  }

 private:
  FaultPlan& plan_;
  std::vector<std::string> unreadable_;
};

// The wait ends although the process has not: here it has, so that no process outlives its run.
class FaultyWait : public Process {
 public:
  FaultyWait(std::unique_ptr<Process> inner, FaultPlan& plan) : inner_(std::move(inner)), plan_(plan) {}
  WaitResult Wait(std::uint32_t milliseconds) override {
    const bool fails = Fails(plan_, "Wait");
    while (fails && inner_->Wait(milliseconds) == WaitResult::TimedOut) continue;
    return fails ? WaitResult::Failed : inner_->Wait(milliseconds);
  }

 private:
  std::unique_ptr<Process> inner_;
  FaultPlan& plan_;
};

class FaultyProcesses : public ForwardingProcesses {
 public:
  FaultyProcesses(Processes& inner, FaultPlan& plan) : ForwardingProcesses(inner), plan_(plan) {}
  std::unique_ptr<Process> Start(const std::string& commandLine) override {
    if (Fails(plan_, "Start")) return nullptr;
    std::unique_ptr<Process> process = ForwardingProcesses::Start(commandLine);
    if (process == nullptr) return process;
    return std::make_unique<FaultyWait>(std::move(process), plan_);
  }

 private:
  FaultPlan& plan_;
};

// What the system says of itself.
class FaultyFacts : public SystemFacts, public Guids, public Settings, public Clock {
 public:
  FaultyFacts(Platform& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  VersionInfo Version() override { return Fails(plan_, "Version") ? VersionInfo() : inner_.facts.Version(); }
  std::string WindowsDirectory(std::size_t size) override {
    return Fails(plan_, "WindowsDirectory") ? std::string() : inner_.facts.WindowsDirectory(size);
  }
  std::string SystemDirectory(std::size_t size) override {
    return Fails(plan_, "SystemDirectory") ? std::string() : inner_.facts.SystemDirectory(size);
  }
  std::uint32_t UserLanguage() override { return inner_.facts.UserLanguage(); }
  std::optional<GuidBytes> Create() override {
    if (Fails(plan_, "CreateGuid")) return std::nullopt;
    return GuidBytes{++guids_};
  }
  std::string Get(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& defaultValue) override {
    if (Fails(plan_, "GetSetting")) return defaultValue;
    return inner_.settings.Get(application, section, key, defaultValue);
  }
  std::optional<FileTime> SystemTime() override {
    return Fails(plan_, "SystemTime") ? std::nullopt : inner_.clock.SystemTime();
  }
  std::string LocalDateTimeText() override {
    return Fails(plan_, "LocalDateTimeText") ? std::string() : inner_.clock.LocalDateTimeText();
  }

 private:
  Platform& inner_;
  FaultPlan& plan_;
  std::uint8_t guids_ = 0;
};

}  // namespace

std::size_t FaultPlan::Next(const char* name, const std::string& path, std::size_t errors) {
  calls.push_back({name, path, errors});
  if (calls.size() <= failingCall) return 0;
  const SeamCall& first = calls[failingCall];
  const bool isFirst = calls.size() - 1 == failingCall;
  return isFirst || (lasts && first.path == path && std::string(first.name) == name) ? failingWay : 0;
}

struct FaultyPlatform::Parts {
  Parts(Platform& inner, FaultPlan& plan)
      : registry(inner.registry, plan),
        files(inner.files, plan),
        profiles(inner.profiles, plan),
        processes(inner.processes, plan),
        facts(inner, plan),
        platform{registry, facts, files, profiles,       processes,
                 facts,    facts, facts, inner.codePage, inner.strings} {}

  FaultyRegistry registry;
  FaultyFiles files;
  FaultyProfiles profiles;
  FaultyProcesses processes;
  FaultyFacts facts;
  Platform platform;
};

FaultyPlatform::FaultyPlatform(Platform& inner, FaultPlan& plan)
    : parts_(std::make_unique<Parts>(inner, plan)) {}

FaultyPlatform::~FaultyPlatform() = default;

Platform& FaultyPlatform::platform() {
  return parts_->platform;
}

}  // namespace bxvbwiz
