#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/ForwardingFileSystem.h"
#include "platform/ForwardingRegistry.h"
#include "platform/Platform.h"

// The forwarding class of each part of the seam, and of all together.
namespace bxvbwiz {

class ForwardingFacts : public SystemFacts, protected Hooked {
 public:
  explicit ForwardingFacts(SystemFacts& inner, CallHook& hook = NoHook()) : Hooked(hook), inner_(inner) {}
  VersionInfo Version() override {
    VersionInfo version;
    Pass({"Version"}, [&] { return version = inner_.Version(), SystemError::Success; });
    return version;
  }
  std::string WindowsDirectory(std::size_t size) override {
    return Ask({"WindowsDirectory"}, std::string(), [&] { return inner_.WindowsDirectory(size); });
  }
  std::string SystemDirectory(std::size_t size) override {
    return Ask({"SystemDirectory"}, std::string(), [&] { return inner_.SystemDirectory(size); });
  }
  std::uint32_t UserLanguage() override { return inner_.UserLanguage(); }  // cannot fail

 private:
  SystemFacts& inner_;
};

class ForwardingProfileStrings : public ProfileStrings, protected Hooked {
 public:
  explicit ForwardingProfileStrings(ProfileStrings& inner, CallHook& hook = NoHook())
      : Hooked(hook), inner_(inner) {}
  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string& file) override {
    std::string value(defaultValue);
    std::string unreadable = file;
    SeamCall call{"GetString", file};
    const SystemError error = Pass(call, [&] {
      value = For(file).GetString(section, key, defaultValue, size, file);
      const std::vector<std::string> files = For(file).Unreadable();
      if (files.empty()) return SystemError::Success;
      call.subject = unreadable = files.back();
      return SystemError::AccessDenied;
    });
    if (error != SystemError::Success) unreadable_.insert(unreadable);
    return value;
  }
  bool WriteString(ProfileText section, ProfileText key, ProfileText value,
                   const std::string& file) override {
    return Ask({"WriteString", file}, false,
               [&] { return For(file).WriteString(section, key, value, file); });
  }
  bool WriteSection(ProfileText section, ProfileText entries, const std::string& file) override {
    return Ask({"WriteSection", file}, false, [&] { return For(file).WriteSection(section, entries, file); });
  }
  std::vector<std::string> Unreadable() override {
    std::vector<std::string> files(unreadable_.begin(), unreadable_.end());
    unreadable_.clear();
    return files;
  }
  std::vector<std::string> Flush() override {
    std::vector<std::string> failed = inner_.Flush();
    for (const std::string& file : failed) hook_.After({"Flush", file}, SystemError::GeneralFailure);
    return failed;
  }

 protected:
  // Where this file is.
  virtual ProfileStrings& For(const std::string& /*file*/) { return inner_; }

 private:
  ProfileStrings& inner_;
  std::set<std::string> unreadable_;
};

class ForwardingProcess : public Process, protected Hooked {
 public:
  ForwardingProcess(std::unique_ptr<Process> inner, CallHook& hook)
      : Hooked(hook), inner_(std::move(inner)) {}
  WaitResult Wait(std::uint32_t milliseconds) override {
    return Ask({"Wait"}, WaitResult::Failed, [&] { return inner_->Wait(milliseconds); });
  }

 private:
  std::unique_ptr<Process> inner_;
};

// What else the system is asked for.
class ForwardingServices : public Processes, public Guids, public Settings, public Clock, protected Hooked {
 public:
  ForwardingServices(const Platform& inner, CallHook& hook) : Hooked(hook), inner_(inner) {}
  std::unique_ptr<Process> Start(const std::string& commandLine) override {
    std::unique_ptr<Process> process =
        Ask({"Start"}, std::unique_ptr<Process>(), [&] { return inner_.processes.Start(commandLine); });
    if (process == nullptr) return process;
    return std::make_unique<ForwardingProcess>(std::move(process), hook_);
  }
  std::optional<GuidBytes> Create(std::string_view place) override {
    return Ask({"CreateGuid"}, std::optional<GuidBytes>(), [&] { return inner_.guids.Create(place); });
  }
  std::string Get(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& defaultValue) override {
    std::string value = defaultValue;
    Pass({"GetSetting"}, [&] {
      value = inner_.settings.Get(application, section, key, defaultValue);
      return SystemError::Success;
    });
    return value;
  }
  std::optional<FileTime> SystemTime() override {
    return Ask({"SystemTime"}, std::optional<FileTime>(), [&] { return inner_.clock.SystemTime(); });
  }
  std::string LocalDateTimeText() override {
    return Ask({"LocalDateTimeText"}, std::string(), [&] { return inner_.clock.LocalDateTimeText(); });
  }

 private:
  Platform inner_;
};

// A whole platform past a hook. Code page and string table are the inner one's: they ask the system nothing.
class ForwardingPlatform {
 public:
  ForwardingPlatform(const Platform& inner, CallHook& hook)
      : registry_(inner.registry, hook),
        facts_(inner.facts, hook),
        files_(inner.files, hook),
        profiles_(inner.profiles, hook),
        services_(inner, hook),
        platform_(WithParts(inner, registry_, facts_, files_, profiles_, services_)) {}
  ForwardingPlatform(const ForwardingPlatform&) = delete;
  ForwardingPlatform& operator=(const ForwardingPlatform&) = delete;

  Platform& platform() { return platform_; }

 private:
  ForwardingRegistry registry_;
  ForwardingFacts facts_;
  ForwardingFileSystem files_;
  ForwardingProfileStrings profiles_;
  ForwardingServices services_;
  Platform platform_;
};

}  // namespace bxvbwiz
