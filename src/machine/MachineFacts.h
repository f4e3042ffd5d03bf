#pragma once

#include <string>
#include <utility>

#include "machine/MachineIni.h"
#include "platform/Platform.h"

namespace bxvbwiz {

// The system facts of a machine folder, as machine.ini gives them.
class MachineFacts : public SystemFacts {
 public:
  MachineFacts(const MachineIni& ini, const CodePage& codePage) : ini_(ini), codePage_(codePage) {}
  VersionInfo Version() override { return ini_.version; }
  std::string WindowsDirectory(std::size_t size) override { return Fitting(ini_.windowsFolder, size); }
  std::string SystemDirectory(std::size_t size) override { return Fitting(ini_.systemFolder, size); }
  std::uint32_t UserLanguage() override { return ini_.userLanguage; }

 private:
  std::string Fitting(const std::string& folder, std::size_t size) const {
    return codePage_.Encode(folder).size() < size ? folder : std::string();
  }

  const MachineIni& ini_;
  const CodePage& codePage_;
};

// Random GUIDs, or those that the places' names give, so that two runs can write the same bytes.
class MachineGuids : public Guids {
 public:
  explicit MachineGuids(bool fromNames) : fromNames_(fromNames) {}
  std::optional<GuidBytes> Create(std::string_view place) override;

 private:
  const bool fromNames_;
};

// The settings that Visual Basic programs keep in the machine's registry.
class MachineSettings : public Settings {
 public:
  explicit MachineSettings(Registry& registry) : registry_(registry) {}
  std::string Get(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& defaultValue) override;

 private:
  Registry& registry_;
};

// This computer's clock, or the fixed time that SOURCE_DATE_EPOCH gives (seconds since 1970, shown in UTC),
// so that two runs can write the same bytes.
class MachineClock : public Clock {
 public:
  // `sourceDateEpoch` is the variable's value, null when it is not set. Throws MachineError when it is not a
  // number.
  explicit MachineClock(const char* sourceDateEpoch);
  std::optional<FileTime> SystemTime() override;
  // "1/5/2004 3:07:09 PM"
  std::string LocalDateTimeText() override;

 private:
  std::optional<std::int64_t> fixedSeconds_;
};

}  // namespace bxvbwiz
