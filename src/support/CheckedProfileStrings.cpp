#include "support/CheckedProfileStrings.h"

#include "support/basLogging.h"

namespace bxvbwiz {

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
  if (written || !failed_.insert(file).second) return written;
  WriteLog("Cannot write " + file);
  if (user != nullptr) user->NoteIncomplete("The file " + file + " could not be written.");
  return false;
}

}  // namespace bxvbwiz
