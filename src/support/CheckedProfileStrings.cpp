#include "support/CheckedProfileStrings.h"

#include "support/Findings.h"

namespace bxvbwiz {

std::string CheckedProfileStrings::GetString(ProfileText section, ProfileText key,
                                             std::string_view defaultValue, std::size_t size,
                                             const std::string& file) {
  std::string value = ForwardingProfileStrings::GetString(section, key, defaultValue, size, file);
  for (const std::string& unread : Unreadable()) Tell(FindingId::ProfileUnreadable, unread);
  return value;
}

bool CheckedProfileStrings::WriteString(ProfileText section, ProfileText key, ProfileText value,
                                        const std::string& file) {
  return Check(ForwardingProfileStrings::WriteString(section, key, value, file), file);
}

bool CheckedProfileStrings::WriteSection(ProfileText section, ProfileText entries, const std::string& file) {
  return Check(ForwardingProfileStrings::WriteSection(section, entries, file), file);
}

std::vector<std::string> CheckedProfileStrings::Flush() {
  std::vector<std::string> failed = ForwardingProfileStrings::Flush();
  for (const std::string& file : failed) Check(false, file);
  return failed;
}

bool CheckedProfileStrings::Check(bool written, const std::string& file) {
  if (!written) Tell(FindingId::FileNotWritten, file);
  return written;
}

void CheckedProfileStrings::Tell(FindingId id, const std::string& file) {
  if (told_.emplace(id, file).second) AddFinding(id, {file});
}

}  // namespace bxvbwiz
