#pragma once

#include <set>
#include <string>

#include "platform/Forwarding.h"
#include "support/User.h"

namespace bxvbwiz {

// Profile strings whose failed writes are not lost: each file that could not be written is logged and told to
// the user as incomplete, once.
class CheckedProfileStrings : public ForwardingProfileStrings {
 public:
  explicit CheckedProfileStrings(ProfileStrings& inner) : ForwardingProfileStrings(inner) {}

  User* user = nullptr;  // whom a failure is told; null: it is only logged

  bool WriteString(ProfileText section, ProfileText key, ProfileText value, const std::string& file) override;
  bool WriteSection(ProfileText section, ProfileText entries, const std::string& file) override;
  std::vector<std::string> Flush() override;

 private:
  bool Check(bool written, const std::string& file);

  std::set<std::string> failed_;
};

}  // namespace bxvbwiz
