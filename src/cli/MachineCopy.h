#pragma once

#include <filesystem>
#include <memory>
#include <set>
#include <string>

#include "machine/Machine.h"

namespace bxvbwiz {

constexpr std::size_t kPathBuffer = 260;  // bytes; MAX_PATH

// The folder that a Windows path lies in, without a backslash at its end.
inline std::string FolderOf(const std::string& path) {
  return path.substr(0, path.rfind('\\'));
}

// A new machine folder with the facts of another machine, and nothing else at first. Paths are full Windows
// paths.
class MachineCopy {
 public:
  // Throws MachineError when the folder exists and is not empty, or cannot be made.
  MachineCopy(const std::filesystem::path& folder, Platform& source);

  Platform& platform() { return machine_->platform(); }
  // Adds a folder, with those above it and its drive or share.
  void AddFolder(const std::string& path);
  // Stores everything. Throws MachineError.
  void Save();

 private:
  void AddShare(const std::string& path);

  std::filesystem::path folder_;
  std::string ini_;
  std::set<std::string> shares_;  // in upper case
  std::unique_ptr<Machine> machine_;
};

}  // namespace bxvbwiz
