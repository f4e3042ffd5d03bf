#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/FileSystem.h"
#include "platform/Processes.h"
#include "platform/ProfileStrings.h"
#include "platform/Registry.h"
#include "platform/SystemFacts.h"
#include "text/Strings.h"

namespace bxvbwiz {

using GuidBytes = std::array<std::uint8_t, 16>;

class Guids {
 public:
  virtual ~Guids() = default;
  // CoCreateGuid, in the memory order of the GUID structure; nothing when the call fails. `place` is where it
  // will stand, for a system that is to give the same GUID for the same place again.
  virtual std::optional<GuidBytes> Create(std::string_view place) = 0;
};

// The settings that a Visual Basic program keeps per user: HKEY_CURRENT_USER,
// "Software\VB and VBA Program Settings\<application>\<section>".
class Settings {
 public:
  virtual ~Settings() = default;
  virtual std::string Get(const std::string& application, const std::string& section, const std::string& key,
                          const std::string& defaultValue) = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  // GetSystemTime and SystemTimeToFileTime; nothing when the conversion fails.
  virtual std::optional<FileTime> SystemTime() = 0;
  // The present local date and time in the user's default format.
  virtual std::string LocalDateTimeText() = 0;
};

// The ANSI code page: text files, the profile strings and the registry hold text in it.
class CodePage {
 public:
  virtual ~CodePage() = default;
  // To UTF-8. A byte that the code page leaves undefined keeps its value (0x81 in 1252 is U+0081).
  virtual std::string Decode(std::string_view bytes) const = 0;
  // From UTF-8. What the code page cannot hold becomes "?".
  virtual std::string Encode(std::string_view text) const = 0;
  // IsCharAlphaNumericA on the character's code; false for what the code page cannot hold. A double-byte
  // letter counts as a whole.
  virtual bool IsAlphaNumeric(char32_t character) const = 0;
  // GetACP: its number, as 1252.
  virtual int Number() const = 0;
  // MultiByteToWideChar with the code page of that number; empty when the system does not know it.
  virtual std::string DecodeAs(int number, std::string_view bytes) const = 0;
};

// The texts that the user sees (LoadStringA on the module's resources).
class StringTable {
 public:
  virtual ~StringTable() = default;
  // The text; empty when there is none.
  virtual std::string Text(TextId id) const = 0;
};

// What the wizard needs from an operating system, one part for each subject. Code that needs one part takes
// that part. The maker of the platform owns the parts, which outlive their users.
struct Platform {
  Registry& registry;
  SystemFacts& facts;
  FileSystem& files;
  ProfileStrings& profiles;
  Processes& processes;
  Guids& guids;
  Settings& settings;
  Clock& clock;
  CodePage& codePage;
  StringTable& strings;
};

// The last of `parts` that is a Part; without one, `usual`.
template <class Part>
Part& PartOf(Part& usual) {
  return usual;
}
template <class Part, class First, class... Rest>
Part& PartOf(Part& usual, First& first, Rest&... rest) {
  if constexpr (std::is_base_of_v<Part, First>) {
    return PartOf<Part>(first, rest...);
  } else {
    return PartOf<Part>(usual, rest...);
  }
}

// `platform` with `parts` in the place of its own. The kind of a part says which one it replaces; one object
// may be several parts.
template <class... Parts>
Platform WithParts(const Platform& platform, Parts&... parts) {
  return {
      PartOf<Registry>(platform.registry, parts...),   PartOf<SystemFacts>(platform.facts, parts...),
      PartOf<FileSystem>(platform.files, parts...),    PartOf<ProfileStrings>(platform.profiles, parts...),
      PartOf<Processes>(platform.processes, parts...), PartOf<Guids>(platform.guids, parts...),
      PartOf<Settings>(platform.settings, parts...),   PartOf<Clock>(platform.clock, parts...),
      PartOf<CodePage>(platform.codePage, parts...),   PartOf<StringTable>(platform.strings, parts...)};
}

}  // namespace bxvbwiz
