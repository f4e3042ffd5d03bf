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

// What makes a part's calls fail.
class Faulty {
 protected:
  explicit Faulty(FaultPlan& plan) : plan_(plan) {}
  // Makes a call, unless it is to fail.
  template <std::size_t kCount, class Call>
  E Try(const char* name, const std::string& path, const E (&errors)[kCount], Call call) {
    const std::size_t way = plan_.Next(name, path, kCount);
    return way == 0 ? call() : errors[way - 1];
  }
  // For calls that tell no error.
  bool Fails(const char* name, const std::string& path = {}) { return plan_.Next(name, path, 1) != 0; }

  FaultPlan& plan_;
};

class FaultyRegistry : public ForwardingRegistry, private Faulty {
 public:
  using Base = ForwardingRegistry;
  FaultyRegistry(Registry& inner, FaultPlan& plan) : Base(inner), Faulty(plan) {}
  E OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
            RegistryHandle& opened) override {
    return Open("OpenKey", key, path, opened, [&] { return Base::OpenKey(key, path, access, opened); });
  }
  E CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options, std::uint32_t access,
              RegistryHandle& opened) override {
    return Open("CreateKey", key, path, opened,
                [&] { return Base::CreateKey(key, path, options, access, opened); });
  }
  E CloseKey(RegistryHandle key) override {
    return Try("CloseKey", PathOf(key), kCloseKey, [&] { return Base::CloseKey(key); });
  }
  E EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name) override {
    return Try("EnumKey", PathOf(key), kReadKey, [&] { return Base::EnumKey(key, index, size, name); });
  }
  E EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name,
              std::uint32_t& type) override {
    return Try("EnumValue", PathOf(key), kReadKey,
               [&] { return Base::EnumValue(key, index, size, name, type); });
  }
  E QueryValue(RegistryHandle key, const std::string& name, std::size_t size, RegistryData& data) override {
    return Try("QueryValue", PathOf(key), kReadKey, [&] { return Base::QueryValue(key, name, size, data); });
  }

 private:
  template <class Call>
  E Open(const char* name, RegistryHandle key, const std::string& path, const RegistryHandle& opened,
         Call call) {
    const std::string full = PathOf(key) + "\\" + path;
    const E error = Try(name, full, kOpenKey, call);
    if (error == E::Success) paths_[opened] = full;
    return error;
  }
  std::string PathOf(RegistryHandle key) { return key < 0 ? Key::Root(*this, key)->Name() : paths_[key]; }

  std::map<RegistryHandle, std::string> paths_;
};

class FaultyFiles : public ForwardingFileSystem, private Faulty {
 public:
  using Base = ForwardingFileSystem;
  FaultyFiles(FileSystem& inner, FaultPlan& plan) : Base(inner), Faulty(plan) {}
  E Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    return Try("Find", pattern, kFind, [&] { return Base::Find(pattern, found); });
  }
  FileHandle Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                  std::uint32_t disposition, std::uint32_t attributes) override {
    if (Fails("Open", path)) return kInvalidFile;
    const FileHandle file = Base::Open(path, access, share, disposition, attributes);
    paths_[file] = path;
    return file;
  }
  bool Close(FileHandle file) override {
    const bool closed = Base::Close(file);  // the system lets go of it in any case
    return !Fails("Close", paths_[file]) && closed;
  }
  bool SetTimes(FileHandle file, FileTime time) override {
    return !Fails("SetTimes", paths_[file]) && Base::SetTimes(file, time);
  }
  E Read(const std::string& path, std::string& bytes) override {
    return Try("Read", path, kRead, [&] { return Base::Read(path, bytes); });
  }
  E Write(const std::string& path, std::string_view bytes, WriteMode mode) override {
    return Try("Write", path, kWrite, [&] { return Base::Write(path, bytes, mode); });
  }
  E Map(const std::string& path, std::unique_ptr<FileView>& view) override {
    return Try("Map", path, kMap, [&] { return Base::Map(path, view); });
  }
  E Copy(const std::string& source, const std::string& target) override {
    return Try("Copy", source, kCopy, [&] { return Base::Copy(source, target); });
  }
  void CopyFiles(const std::string& source, const std::string& target, const std::vector<std::string>& names,
                 const std::function<void(std::size_t, E)>& done) override {
    if (plan_.together) return Base::CopyFiles(source, target, names, done);
    FileSystem::CopyFiles(source, target, names, done);
  }
  E Rename(const std::string& source, const std::string& target) override {
    return Try("Rename", target, kRename, [&] { return Base::Rename(source, target); });
  }
  E Delete(const std::string& path) override {
    return Try("Delete", path, kDelete, [&] { return Base::Delete(path); });
  }
  E MakeDirectory(const std::string& path) override {
    return Try("MakeDirectory", path, kMakeDirectory, [&] { return Base::MakeDirectory(path); });
  }
  E SetAttributes(const std::string& path, std::uint32_t attributes) override {
    return Try("SetAttributes", path, kSetAttributes, [&] { return Base::SetAttributes(path, attributes); });
  }
  std::string Search(const std::string& name) override {
    return Fails("Search", name) ? std::string() : Base::Search(name);
  }
  E FullPath(const std::string& path, std::string& full) override {
    return Try("FullPath", path, kFullPath, [&] { return Base::FullPath(path, full); });
  }
  std::string CurrentDirectory() override {
    return Fails("CurrentDirectory") ? std::string() : Base::CurrentDirectory();
  }
  E ChangeDirectory(const std::string& path) override {
    return Try("ChangeDirectory", path, kChangeDirectory, [&] { return Base::ChangeDirectory(path); });
  }

 private:
  std::map<FileHandle, std::string> paths_;
};

class FaultyProfiles : public ForwardingProfileStrings, private Faulty {
 public:
  using Base = ForwardingProfileStrings;
  FaultyProfiles(ProfileStrings& inner, FaultPlan& plan) : Base(inner), Faulty(plan) {}
  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string& file) override {
    if (!Fails("GetString", file)) return Base::GetString(section, key, defaultValue, size, file);
    unreadable_.push_back(file);
    return std::string(defaultValue);
  }
  bool WriteString(ProfileText section, ProfileText key, ProfileText value,
                   const std::string& file) override {
    return !Fails("WriteString", file) && Base::WriteString(section, key, value, file);
  }
  bool WriteSection(ProfileText section, ProfileText entries, const std::string& file) override {
    return !Fails("WriteSection", file) && Base::WriteSection(section, entries, file);
  }
  std::vector<std::string> Unreadable() override {
    std::vector<std::string> files = Base::Unreadable();
    files.insert(files.end(), unreadable_.begin(), unreadable_.end());
    unreadable_.clear();
    return files;
  }

 private:
  std::vector<std::string> unreadable_;
};

// The wait ends although the process has not: here it has, so that no process outlives its run.
class FaultyWait : public Process, private Faulty {
 public:
  FaultyWait(std::unique_ptr<Process> inner, FaultPlan& plan) : Faulty(plan), inner_(std::move(inner)) {}
  WaitResult Wait(std::uint32_t milliseconds) override {
    const bool fails = Fails("Wait");
    while (fails && inner_->Wait(milliseconds) == WaitResult::TimedOut) continue;
    return fails ? WaitResult::Failed : inner_->Wait(milliseconds);
  }

 private:
  std::unique_ptr<Process> inner_;
};

class FaultyProcesses : public ForwardingProcesses, private Faulty {
 public:
  using Base = ForwardingProcesses;
  FaultyProcesses(Processes& inner, FaultPlan& plan) : Base(inner), Faulty(plan) {}
  std::unique_ptr<Process> Start(const std::string& commandLine) override {
    if (Fails("Start")) return nullptr;
    std::unique_ptr<Process> process = Base::Start(commandLine);
    if (process == nullptr) return process;
    return std::make_unique<FaultyWait>(std::move(process), plan_);
  }
};

// What the system says of itself.
class FaultyFacts : public SystemFacts, public Guids, public Settings, public Clock, private Faulty {
 public:
  FaultyFacts(Platform& inner, FaultPlan& plan) : Faulty(plan), inner_(inner) {}
  VersionInfo Version() override { return Fails("Version") ? VersionInfo() : inner_.facts.Version(); }
  std::string WindowsDirectory(std::size_t size) override {
    return Fails("WindowsDirectory") ? std::string() : inner_.facts.WindowsDirectory(size);
  }
  std::string SystemDirectory(std::size_t size) override {
    return Fails("SystemDirectory") ? std::string() : inner_.facts.SystemDirectory(size);
  }
  std::uint32_t UserLanguage() override { return inner_.facts.UserLanguage(); }
  std::optional<GuidBytes> Create() override {
    if (Fails("CreateGuid")) return std::nullopt;
    return GuidBytes{++guids_};
  }
  std::string Get(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& defaultValue) override {
    if (Fails("GetSetting")) return defaultValue;
    return inner_.settings.Get(application, section, key, defaultValue);
  }
  std::optional<FileTime> SystemTime() override {
    return Fails("SystemTime") ? std::nullopt : inner_.clock.SystemTime();
  }
  std::string LocalDateTimeText() override {
    return Fails("LocalDateTimeText") ? std::string() : inner_.clock.LocalDateTimeText();
  }

 private:
  Platform& inner_;
  std::uint8_t guids_ = 0;
};

// A machine folder whose system calls fail as planned.
class FaultyMachine : public Computer {
 public:
  FaultyMachine(const std::string& folder, FaultPlan& plan)
      : inner_(OpenMachineFolder(folder)),
        registry_(inner_->platform().registry, plan),
        files_(inner_->platform().files, plan),
        profiles_(inner_->platform().profiles, plan),
        processes_(inner_->platform().processes, plan),
        facts_(inner_->platform(), plan),
        platform_{registry_,
                  facts_,
                  files_,
                  profiles_,
                  processes_,
                  facts_,
                  facts_,
                  facts_,
                  inner_->platform().codePage,
                  inner_->platform().strings} {}
  Platform& platform() override { return platform_; }
  std::string ProjectPath(const std::string& project) override { return inner_->ProjectPath(project); }
  std::string HostPath(const std::string& windowsPath) override { return inner_->HostPath(windowsPath); }
  void Save() override { inner_->Save(); }

 private:
  std::unique_ptr<Computer> inner_;
  FaultyRegistry registry_;
  FaultyFiles files_;
  FaultyProfiles profiles_;
  FaultyProcesses processes_;
  FaultyFacts facts_;
  Platform platform_;
};

}  // namespace

std::size_t FaultPlan::Next(const char* name, const std::string& path, std::size_t errors) {
  calls.push_back({name, path, errors});
  if (calls.size() <= failingCall) return 0;
  const SeamCall& first = calls[failingCall];
  const bool isFirst = calls.size() - 1 == failingCall;
  return isFirst || (lasts && first.path == path && std::string(first.name) == name) ? failingWay : 0;
}

std::unique_ptr<Computer> OpenFaultyMachine(const std::string& folder, FaultPlan& plan) {
  return std::make_unique<FaultyMachine>(folder, plan);
}

}  // namespace bxvbwiz
