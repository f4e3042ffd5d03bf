#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "machine/Machine.h"

namespace bxvbwiz {

// The folder that a Windows path lies in, without a backslash at its end.
inline std::string FolderOf(const std::string& path) {
  return path.substr(0, path.rfind('\\'));
}

// A machine folder that is being filled with what a run asked another machine for. Paths are full Windows
// paths.
class CapturedMachine {
 public:
  // Makes the folder, with the facts of `source` and nothing else. It must not exist, or be empty; throws
  // MachineError.
  CapturedMachine(const std::filesystem::path& folder, Platform& source);

  Platform& platform() { return machine_->platform(); }
  // A folder, with those above it.
  void AddFolder(const std::string& path);
  // A file whose content was not read: an empty one stands for it.
  void AddName(const std::string& path);
  // A file as it was when it was read first.
  void AddContent(const std::string& path, std::string_view bytes);
  void AddReadOnly(const std::string& path) { readOnly_.push_back(path); }
  bool HasContent(const std::string& path) const;

  // Stores everything. Throws MachineError.
  void Save();
  std::size_t FileCount() const { return files_.size(); }
  // Files that a machine folder cannot hold (on a network path, or the disk is full), each once.
  const std::vector<std::string>& NotCaptured() const { return notCaptured_; }

 private:
  enum class Held { Name, Content, Nothing };
  void Write(const std::string& path, std::string_view bytes, Held held);

  std::unique_ptr<Machine> machine_;
  std::map<std::string, Held> files_;  // by path in upper case
  std::vector<std::string> readOnly_;
  std::vector<std::string> notCaptured_;
};

}  // namespace bxvbwiz
