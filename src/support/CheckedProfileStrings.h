#pragma once

#include <set>
#include <string>
#include <utility>

#include "platform/Forwarding.h"
#include "text/Strings.h"

namespace bxvbwiz {

// Profile strings whose failures are not lost: each file that could not be read or written is told, once.
class CheckedProfileStrings : public ForwardingProfileStrings {
 public:
  explicit CheckedProfileStrings(ProfileStrings& inner) : ForwardingProfileStrings(inner) {}

  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string& file) override;
  bool WriteString(ProfileText section, ProfileText key, ProfileText value, const std::string& file) override;
  bool WriteSection(ProfileText section, ProfileText entries, const std::string& file) override;
  std::vector<std::string> Flush() override;

 private:
  bool Check(bool written, const std::string& file);
  void Tell(FindingId id, const std::string& file);

  std::set<std::pair<FindingId, std::string>> told_;
};

}  // namespace bxvbwiz
