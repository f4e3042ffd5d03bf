#pragma once

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/ForwardingFileSystem.h"
#include "support/User.h"

namespace bxvbwiz {

// Looks up each ordinary file only once, and one that is missing once between two messages: the user may put
// it in its place and retry. What is hidden is asked for each time.
class RememberedFiles : public ForwardingFileSystem {
 public:
  RememberedFiles(FileSystem& inner, const User& user) : ForwardingFileSystem(inner), user_(user) {}

  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    const auto known = found_.find(pattern);
    if (known != found_.end()) {
      found.push_back(known->second);
      return SystemError::Success;
    }
    if (std::exchange(messages_, user_.Messages()) != user_.Messages()) missing_.clear();
    const auto missed = missing_.find(pattern);
    if (missed != missing_.end()) return missed->second;
    std::vector<FoundFile> matches;
    const SystemError error = ForwardingFileSystem::Find(pattern, matches);
    if (isOn_ && (error == SystemError::FileNotFound || error == SystemError::PathNotFound))
      missing_.emplace(pattern, error);
    if (error != SystemError::Success) return error;
    found.insert(found.end(), matches.begin(), matches.end());
    constexpr std::uint32_t kOther = kAttributeHidden | kAttributeSystem | kAttributeDirectory;
    if (isOn_ && matches.size() == 1 && (matches[0].attributes & kOther) == 0 &&
        pattern.find_first_of("*?") == std::string::npos)
      found_.emplace(pattern, matches[0]);
    return error;
  }
  // For a time in which nobody changes or removes files, or adds any but while a message is shown, and the
  // current folder stays. Each call forgets what it knows.
  void Remember(bool on) {
    found_.clear();
    missing_.clear();
    isOn_ = on;
  }

 private:
  const User& user_;
  unsigned messages_ = 0;  // that had been shown at the last look-up
  bool isOn_ = false;
  std::unordered_map<std::string, FoundFile> found_;  // by pattern
  std::unordered_map<std::string, SystemError> missing_;
};

}  // namespace bxvbwiz
