#pragma once

#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/Platform.h"

namespace bxvbwiz {

// One profile file in memory, as GetPrivateProfileStringA, WritePrivateProfileStringA and
// WritePrivateProfileSectionA see it. Only the first heading of a name is searched, and in it only the first
// key of a name. All texts that go in and out are bytes of the code page; a file that begins with FF FE is
// UTF-16 and stays so. What a change does not touch keeps its bytes: comments, blank lines, spacing, line
// ends, spelling.
class ProfileEngine {
 public:
  // `bytes` is the file, and may be anything; empty for a new one. `codePage` must outlive the engine.
  ProfileEngine(const CodePage& codePage, std::string_view bytes);
  ProfileEngine(const ProfileEngine&) = delete;
  ProfileEngine& operator=(const ProfileEngine&) = delete;
  ProfileEngine(ProfileEngine&&) = default;
  ProfileEngine& operator=(ProfileEngine&&) = default;

  // The value without blanks and quotes around it; nothing when the section or the key is missing.
  std::optional<std::string> Value(std::string_view section, std::string_view key) const;
  // The names of the section's keys in the file's order; nothing when the section is missing.
  std::optional<std::vector<std::string>> Keys(std::string_view section) const;
  std::vector<std::string> Sections() const;

  // The changes. Each gives whether the file's bytes changed.
  bool SetValue(std::string_view section, std::string_view key, std::string_view value);
  bool RemoveKey(std::string_view section, std::string_view key);
  bool RemoveSection(std::string_view section);
  // Replaces the section's keys. `entries` are "key=value" texts, each ended by a NUL; the last may end
  // without one. Texts without "=" are dropped.
  bool SetSection(std::string_view section, std::string_view entries);

  // The file's bytes.
  std::string Bytes() const;

 private:
  // Texts of lines are bytes of the code page, or UTF-8 in a UTF-16 file.
  struct Line {
    enum class Kind { Heading, Key, Other };
    Kind kind = Kind::Other;
    std::string text;  // with its line end
  };
  using Lines = std::list<Line>;
  using LineIndex = std::unordered_map<std::string, Lines::iterator>;

  struct Section {
    Lines::iterator heading;
    Lines::iterator lastKey;  // the heading while there is no key
    LineIndex keys;           // by folded name, the first of each
    bool repeatsKeys = false;
  };

  void Read(std::string_view text);
  void Index(Lines::iterator line, Section*& current);
  std::string Text() const;

  std::string FromCodePage(std::string_view bytes) const;
  std::string ToCodePage(std::string_view text) const;
  std::string Fold(std::string_view text) const;
  std::string HeadingName(const Line& line) const;

  Section* Find(std::string_view section);
  const Section* Find(std::string_view section) const;
  Section& Append(std::string_view section, bool& odd);
  void AppendKey(Section& section, std::string_view name, std::string text);
  std::vector<Lines::iterator> KeyLines(const Section& section) const;
  void RemoveKeys(Section& section);
  bool EndWithLineBreak();

  const CodePage* codePage_;
  bool utf16_ = false;
  Lines lines_;
  std::unordered_map<std::string, Section> sections_;  // by folded name, the first of each
  bool repeatsSections_ = false;
};

}  // namespace bxvbwiz
