#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/ForwardingFileSystem.h"

namespace bxvbwiz {

// Looks up each ordinary file that is there only once. What is missing or hidden is asked for each time,
// because the user may change that and retry.
class RememberedFiles : public ForwardingFileSystem {
 public:
  using ForwardingFileSystem::ForwardingFileSystem;

  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    const auto known = found_.find(pattern);
    if (known != found_.end()) {
      found.push_back(known->second);
      return SystemError::Success;
    }
    std::vector<FoundFile> matches;
    const SystemError error = ForwardingFileSystem::Find(pattern, matches);
    if (error != SystemError::Success) return error;
    found.insert(found.end(), matches.begin(), matches.end());
    constexpr std::uint32_t kOther = kAttributeHidden | kAttributeSystem | kAttributeDirectory;
    if (isOn_ && matches.size() == 1 && (matches[0].attributes & kOther) == 0 &&
        pattern.find_first_of("*?") == std::string::npos)
      found_.emplace(pattern, matches[0]);
    return error;
  }
  // For a time in which nobody removes or changes files, or the current folder. Each call forgets what it
  // knows.
  void Remember(bool on) {
    found_.clear();
    isOn_ = on;
  }

 private:
  bool isOn_ = false;
  std::unordered_map<std::string, FoundFile> found_;  // by pattern
};

}  // namespace bxvbwiz
