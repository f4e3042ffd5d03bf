#include "machine/MachineFacts.h"

#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>

#include "machine/host/Host.h"
#include "machine/MachineError.h"
#include "machine/NamedGuid.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kSettingSize = 0x10000;       // bytes; more than a program's settings hold
constexpr std::int64_t kLastSecond = 253402300799;  // the end of the year 9999

}  // namespace

std::optional<GuidBytes> MachineGuids::Create(std::string_view place) {
  // Made once, at random, so that no other program gives the same name the same GUID.
  constexpr GuidBytes kPlaces = {0x5D, 0x0C, 0x9A, 0x3E, 0x71, 0xB4, 0x42, 0xE8,
                                 0x9F, 0x26, 0xD3, 0x1B, 0x60, 0xA7, 0x4C, 0x95};
  if (fromNames_) return NamedGuid(kPlaces, place);
  GuidBytes guid = {};
  if (!host::RandomBytes(guid.data(), guid.size())) return std::nullopt;
  // Version 4 stands in the high byte of Data3, which lies low byte first; the variant in Data4.
  guid[7] = static_cast<std::uint8_t>((guid[7] & 0x0F) | 0x40);
  guid[8] = static_cast<std::uint8_t>((guid[8] & 0x3F) | 0x80);
  return guid;
}

std::string MachineSettings::Get(const std::string& application, const std::string& section,
                                 const std::string& key, const std::string& defaultValue) {
  const std::string path = "Software\\VB and VBA Program Settings\\" + application + "\\" + section;
  RegistryHandle opened = 0;
  if (registry_.OpenKey(kHKeyCurrentUser, path, kKeyRead, opened) != SystemError::Success)
    return defaultValue;
  RegistryData value;
  const SystemError error = registry_.QueryValue(opened, key, kSettingSize, value);
  registry_.CloseKey(opened);
  if (error != SystemError::Success || value.type != kRegSz) return defaultValue;
  return value.data.substr(0, value.data.find('\0'));
}

MachineClock::MachineClock(const char* sourceDateEpoch) {
  if (sourceDateEpoch == nullptr) return;
  std::int64_t seconds = 0;
  const char* end = sourceDateEpoch + std::strlen(sourceDateEpoch);
  const auto [rest, error] = std::from_chars(sourceDateEpoch, end, seconds);
  if (rest == sourceDateEpoch || rest != end || error != std::errc() || seconds < 0 ||
      seconds > kLastSecond) {
    throw MachineError("SOURCE_DATE_EPOCH is \"" + std::string(sourceDateEpoch) +
                       "\", which is not a number of seconds since 1970");
  }
  fixedSeconds_ = seconds;
}

std::optional<FileTime> MachineClock::SystemTime() {
  if (fixedSeconds_) return static_cast<FileTime>(*fixedSeconds_ * kUnitsPerSecond + kUnixEpoch);
  using Units = std::chrono::duration<std::int64_t, std::ratio<1, kUnitsPerSecond>>;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return static_cast<FileTime>(std::chrono::duration_cast<Units>(now).count() + kUnixEpoch);
}

std::string MachineClock::LocalDateTimeText() {
  using std::chrono::system_clock;
  const std::int64_t seconds = fixedSeconds_.value_or(system_clock::to_time_t(system_clock::now()));
  const host::DateTime now = host::DateTimeOf(seconds, fixedSeconds_.has_value());
  char text[96];
  std::snprintf(text, sizeof(text), "%d/%d/%d %d:%02d:%02d %s", now.month, now.day, now.year,
                (now.hour + 11) % 12 + 1, now.minute, now.second, now.hour < 12 ? "AM" : "PM");
  return text;
}

}  // namespace bxvbwiz
