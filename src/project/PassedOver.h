#pragma once

#include <map>
#include <string>

#include "project/FileRecord.h"
#include "text/Text.h"

namespace bxvbwiz {

// The files that the walk over dependencies leaves out because Windows has them, and who asks for each.
class PassedOver {
 public:
  // More would cost memory and tell no more: every program asks for some of these files.
  static constexpr std::size_t kMostAskers = 20;

  void Add(const std::string& name, const Origin& asker) {
    FileRecord& file = files_[UpperCase(name)];
    if (file.askers.size() < kMostAskers) file.AddAsker(asker);
  }
  // By name in upper case.
  const std::map<std::string, FileRecord>& Files() const { return files_; }

 private:
  std::map<std::string, FileRecord> files_;
};

}  // namespace bxvbwiz
