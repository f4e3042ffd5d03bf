#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "machine/MachineError.h"
#include "platform/Platform.h"

namespace bxvbwiz {

struct SkippedRegValue;

// A folder that stands for a Windows machine: drives, registry and facts (see docs/machine-folder.md).
class Machine {
 public:
  // The folders of this computer that stand for drives, by letter in upper case.
  using Drives = std::map<char, std::string>;

  // Reads machine.ini and registry.reg of `folder`, a path of this computer. `drives` count before those that
  // machine.ini gives. Throws MachineError.
  explicit Machine(const std::string& folder, const Drives& drives = {});
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  // Throws MachineError when the drives lack the Windows folder or the system folder. Nothing can be analysed
  // then.
  void RequireSystemFolders();

  // The seam, answered from the folder. It lives as long as this object.
  Platform& platform();

  // The Windows path of a path of this computer, which need not exist; empty when it lies in no drive.
  std::string WindowsPath(const std::string& hostPath) const;
  // Where a Windows path lies on this computer; empty when it names no drive of this machine.
  std::string HostPath(const std::string& windowsPath) const;

  // The program of this computer that runs in place of a Windows program; empty when machine.ini names none.
  std::string HostProgram(const std::string& windowsPath) const;

  // Makes a folder of the machine that is missing, with those above it and its drive.
  void MakeFolder(const std::string& windowsPath);
  // Lets a folder of this computer stand for a share, "\\server\share".
  void AddShare(const std::string& share, const std::string& folder);

  // Stores what was changed: profile files, then the registry, each atomically. Nothing is written when
  // nothing was changed. Throws MachineError when something cannot be stored.
  void Save();

  // Registry values of registry.reg that could not be read and were left out.
  std::size_t SkippedRegistryValues() const;
  // The first of them.
  const std::vector<SkippedRegValue>& SkippedValues() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace bxvbwiz
