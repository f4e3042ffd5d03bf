#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "machine/Machine.h"

namespace bxvbwiz {

// The folder that a Windows path lies in, without a backslash at its end.
inline std::string FolderOf(const std::string& path) {
  return path.substr(0, path.rfind('\\'));
}

// A machine folder that is filled with what a run asks another machine for. Paths are full Windows paths.
class CapturedMachine {
 public:
  // Makes the folder, with the facts of `source` and nothing else. Throws MachineError when it exists and is
  // not empty, or cannot be made.
  CapturedMachine(const std::filesystem::path& folder, Platform& source);

  Platform& platform() { return machine_->platform(); }
  // Adds a folder, with those above it and its drive or share.
  void AddFolder(const std::string& path);
  // Adds an empty file in place of one whose content was not read.
  void AddName(const std::string& path);
  // Adds a file as it was when it was first read.
  void AddContent(const std::string& path, std::string_view bytes);
  void AddReadOnly(const std::string& path) { readOnly_.push_back(path); }
  bool HasContent(const std::string& path) const;

  // Stores everything. Throws MachineError.
  void Save();
  std::size_t FileCount() const { return files_.size(); }
  // Files that could not be captured, because their path is none or the disk is full, each once.
  const std::vector<std::string>& NotCaptured() const { return notCaptured_; }

 private:
  enum class Held { Name, Content, Nothing };
  void Write(const std::string& path, std::string_view bytes, Held held);
  void AddShare(const std::string& path);

  std::filesystem::path folder_;
  std::string ini_;
  std::set<std::string> shares_;  // in upper case
  std::unique_ptr<Machine> machine_;
  std::map<std::string, Held> files_;  // by path in upper case
  std::vector<std::string> readOnly_;
  std::vector<std::string> notCaptured_;
};

}  // namespace bxvbwiz
