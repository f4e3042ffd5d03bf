#include "cli/Computer.h"

#include <filesystem>
#include <iostream>

#include "machine/Machine.h"
#include "machine/MachineRegistryTree.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

bool IsWindowsPath(const std::string& path) {
  return (path.size() > 2 && path[1] == ':') || StartsWith(path, "\\\\");
}

class MachineFolder : public Computer {
 public:
  MachineFolder(const std::string& folder, const Machine::Drives& drives) : machine_(folder, drives) {
    machine_.RequireSystemFolders();
    if (const std::size_t skipped = machine_.SkippedRegistryValues(); skipped > 0) {
      std::cerr << "bxvbwiz: " << skipped << " values of registry.reg could not be read and were left out.\n";
    }
  }

  Platform& platform() override { return machine_.platform(); }
  std::string ProjectPath(const std::string& project) override {
    // On Windows both kinds of path look alike. One inside a drive is a path of this computer.
    std::error_code ignored;
    const std::filesystem::path full = std::filesystem::absolute(std::filesystem::u8path(project), ignored);
    std::string inside = machine_.WindowsPath(full.lexically_normal().u8string());
    // "\Src\Demo.vbp" starts at the root of the machine's current drive.
    const bool isRooted = StartsWith(project, "\\") && !StartsWith(project, "\\\\");
    if (inside.empty() && isRooted) machine_.platform().files.FullPath(project, inside);
    return inside.empty() && IsWindowsPath(project) ? project : inside;
  }
  void MakeFolder(const std::string& windowsPath) override { machine_.MakeFolder(windowsPath); }
  std::string HostPath(const std::string& windowsPath) override { return machine_.HostPath(windowsPath); }
  void RegisterProgram(const std::string& path) override { EnterForThisRun(platform(), path); }
  void Save() override { machine_.Save(); }
  std::vector<Finding> Found() const override {
    std::vector<Finding> found;
    for (const SkippedRegValue& value : machine_.SkippedValues()) {
      found.push_back({FindingId::RegistryValueSkipped, {value.key, std::to_string(value.line)}, {}});
    }
    return found;
  }

 private:
  Machine machine_;
};

}  // namespace

Sentence WhyNotThere(const std::string& path, const std::string& machineFolder) {
  std::error_code ignored;
  const bool isThere = std::filesystem::exists(std::filesystem::u8path(path), ignored);
  return {isThere ? TextId::OutsideTheDrives : TextId::NoSuchFile, {path, machineFolder}};
}

std::unique_ptr<Computer> OpenMachineFolder(const std::string& folder,
                                            const std::map<char, std::string>& drives) {
  return std::make_unique<MachineFolder>(folder, drives);
}

}  // namespace bxvbwiz
