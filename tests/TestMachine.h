#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "machine/Machine.h"

namespace bxvbwiz {

// A file's bytes; none when it cannot be read.
std::string ReadBytes(const std::filesystem::path& path);

// Every file below a folder with its bytes, and every folder, whose path ends in "/".
using Snapshot = std::map<std::string, std::string>;
Snapshot TakeSnapshot(const std::string& folder);

// A machine folder in a temporary place, removed at the end. Files are laid out first, then the machine is
// opened.
class TestMachine {
 public:
  TestMachine();
  ~TestMachine();
  TestMachine(const TestMachine&) = delete;
  TestMachine& operator=(const TestMachine&) = delete;

  // Writes a file of the folder ("drive_c/x.txt", "machine.ini"), making its folders.
  void Write(const std::string& relativePath, const std::string& bytes);
  // Adds lines to registry.reg (REGEDIT4).
  void Registry(const std::string& lines);
  // The settings of the wizard's log, each a name and a text.
  void LogSettings(const std::map<std::string, std::string>& settings);
  // The product's keys, its template project and an installed Visual Basic 6.
  void InstallProduct();
  std::string Read(const std::string& relativePath) const;
  bool Exists(const std::string& relativePath) const;
  std::string Folder() const { return folder_; }

  // Writes the registry, for another process that opens the folder.
  void Store();
  // The machine; opened by the first call.
  Platform& platform();
  Machine& machine();

 private:
  std::string folder_;
  std::string registry_ = "REGEDIT4\r\n";
  std::unique_ptr<Machine> machine_;
};

}  // namespace bxvbwiz
