#pragma once

#include <set>
#include <string>
#include <vector>

#include "platform/Platform.h"

// The smaller subjects of the seam on the system itself.
namespace bxvbwiz {

class Win32ProfileStrings : public ProfileStrings {
 public:
  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string& file) override;
  bool WriteString(ProfileText section, ProfileText key, ProfileText value, const std::string& file) override;
  bool WriteSection(ProfileText section, ProfileText entries, const std::string& file) override;
  std::vector<std::string> Unreadable() override;
  std::vector<std::string> Flush() override { return {}; }  // the system stores every write at once

 private:
  std::set<std::string> unreadable_;
};

class Win32SystemFacts : public SystemFacts {
 public:
  VersionInfo Version() override;
  std::string WindowsDirectory(std::size_t size) override;
  std::string SystemDirectory(std::size_t size) override;
  std::uint32_t UserLanguage() override;
};

class Win32Processes : public Processes {
 public:
  std::unique_ptr<Process> Start(const std::string& commandLine) override;
};

class Win32Guids : public Guids {
 public:
  std::optional<GuidBytes> Create(std::string_view place) override;
};

class Win32Settings : public Settings {
 public:
  std::string Get(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& defaultValue) override;
};

class Win32Clock : public Clock {
 public:
  std::optional<FileTime> SystemTime() override;
  std::string LocalDateTimeText() override;
};

class Win32CodePage : public CodePage {
 public:
  std::string Decode(std::string_view bytes) const override;
  std::string Encode(std::string_view text) const override;
  bool IsAlphaNumeric(char32_t character) const override;
  int Number() const override;
  std::string DecodeAs(int number, std::string_view bytes) const override;
};

}  // namespace bxvbwiz
