#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bxvbwiz {

// A string argument of the profile functions that may be NULL.
using ProfileText = std::optional<std::string_view>;

// The three profile-string calls. Files are named by their full path, texts are UTF-8; a text that the code
// page cannot hold is written with "?".
class ProfileStrings {
 public:
  virtual ~ProfileStrings() = default;

  // GetPrivateProfileStringA. `size` is the buffer in bytes of the code page, the NUL included: a longer
  // value is cut to size - 1 bytes, half a character dropped. A NULL key lists the section's keys, a NULL
  // section the sections: each name followed by a NUL, cut to size - 2 bytes. `defaultValue` is copied when
  // the file, section or key is missing.
  virtual std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue,
                                std::size_t size, const std::string& file) = 0;
  // WritePrivateProfileStringA: a NULL value removes the key, a NULL key the section. False when it failed.
  virtual bool WriteString(ProfileText section, ProfileText key, ProfileText value,
                           const std::string& file) = 0;
  // WritePrivateProfileSectionA: `entries` holds "key=value" texts, each ended by a NUL; empty leaves the
  // bare heading, NULL removes the section. False when it failed.
  virtual bool WriteSection(ProfileText section, ProfileText entries, const std::string& file) = 0;

  // The files that GetString gave the default for since the last call because they could not be read, each
  // once. Missing files do not count.
  virtual std::vector<std::string> Unreadable() = 0;

  // Stores what earlier calls have changed, if the platform defers that, and gives the files that could not
  // be stored since the last call, each once.
  virtual std::vector<std::string> Flush() = 0;
};

}  // namespace bxvbwiz
