#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "platform/Platform.h"

namespace bxvbwiz {

// A machine folder that cannot be used; the text names the file and the reason.
class MachineError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A folder that stands for a Windows machine: drives, registry and facts (see docs/machine-folder.md).
class Machine {
 public:
  // Reads machine.ini and registry.reg of `folder` (a path of this computer). Throws MachineError.
  explicit Machine(const std::string& folder);
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  // The seam, answered from the folder; it lives as long as this object.
  Platform& platform();

  // The Windows path of a path of this computer, which need not exist; empty when it lies outside the drives.
  std::string WindowsPath(const std::string& hostPath) const;
  // Where a Windows path lies on this computer; empty when it names no drive of this machine.
  std::string HostPath(const std::string& windowsPath) const;

  // Stores what changed: profile files, then the registry, each atomically. Throws MachineError; nothing is
  // written when nothing changed.
  void Save();

  // Registry values of registry.reg that could not be read and were left out.
  std::size_t SkippedRegistryValues() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace bxvbwiz
