#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/Findings.h"

namespace bxvbwiz {

struct Options;

// The Windows machine that a run works on: a machine folder, or this computer if it runs Windows.
class Computer {
 public:
  virtual ~Computer() = default;

  // The seam; it lives as long as this object.
  virtual Platform& platform() = 0;
  // The project's path on the machine, from a Windows path there or a path of this computer; empty when it is
  // not on the machine.
  virtual std::string ProjectPath(const std::string& project) = 0;
  // Makes a folder that a run needs and version control drops when it is empty. A real machine stays as it
  // is.
  virtual void MakeFolder(const std::string& windowsPath) = 0;
  // The path on this computer of a Windows path of the machine.
  virtual std::string HostPath(const std::string& windowsPath) = 0;
  // Makes the libraries of a program known to the runs that follow, and stores nothing. On a real machine the
  // compiler has registered them. Throws MachineError.
  virtual void RegisterProgram(const std::string& /*windowsPath*/) {}
  // Stores what a run changed. Throws MachineError.
  virtual void Save() = 0;
  // The program's exit code after a run that ended with `code`.
  virtual int ExitCode(int code) const { return code; }
  // What was found wrong with it when it was opened.
  virtual std::vector<Finding> Found() const { return {}; }
};

// Runs the wizard on a computer and gives the exit code.
using WizardRun = std::function<int(const Options&, Computer&)>;

// Why a path is not one of the machine: there is no such file, or it lies outside the drives.
Sentence WhyNotThere(const std::string& path, const std::string& machineFolder);

// Opens a machine folder and reports what is odd in it on standard error. `drives` are folders of this
// computer that stand for drives. Throws MachineError.
std::unique_ptr<Computer> OpenMachineFolder(const std::string& folder,
                                            const std::map<char, std::string>& drives);

// Enters the type libraries of the file `path` into the registry of a machine folder until the folder is
// opened again. Keys that are there stay. Throws MachineError.
void EnterForThisRun(Platform& platform, const std::string& path);

// Null when this computer does not run Windows. Each system has its own implementation.
std::unique_ptr<Computer> OpenThisComputer();

}  // namespace bxvbwiz
