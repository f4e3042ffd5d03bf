#pragma once

#include <memory>
#include <string>

#include "platform/Platform.h"

namespace bxvbwiz {

// The Windows machine that a run works on: a machine folder, or this computer where it runs Windows.
class Computer {
 public:
  virtual ~Computer() = default;

  // The seam; it lives as long as this object.
  virtual Platform& platform() = 0;
  // The project's path on the machine, from a Windows path there or a path of this computer; empty when it
  // lies elsewhere.
  virtual std::string ProjectPath(const std::string& project) = 0;
  // Where a Windows path of the machine lies on this computer.
  virtual std::string HostPath(const std::string& windowsPath) = 0;
  // Stores what a run changed. Throws MachineError.
  virtual void Save() = 0;
};

// A machine folder; what was odd in it is told on standard error. Throws MachineError.
std::unique_ptr<Computer> OpenMachineFolder(const std::string& folder);

// Null where this computer does not run Windows. One implementation a system.
std::unique_ptr<Computer> OpenThisComputer();

}  // namespace bxvbwiz
