#pragma once

#include <map>
#include <string>
#include <vector>

#include "machine/DriveTree.h"
#include "platform/Processes.h"

namespace bxvbwiz {

// What has to happen around a program that works on the machine folder as well.
class ProcessObserver {
 public:
  virtual ~ProcessObserver() = default;
  // Everything that was changed must be on the disk before the program starts.
  virtual void BeforeStart() = 0;
  // What is remembered of the disk may be wrong.
  virtual void AfterEnd() = 0;
};

// The programs of a machine folder: those that machine.ini maps to a host program. No other can be started.
class MachineProcesses : public Processes {
 public:
  // `programs` holds the host programs (relative ones to the machine folder) by Windows path in upper case;
  // `searchFolders` is where a program without a path is looked for after the current directory.
  MachineProcesses(DriveTree& tree, std::map<std::string, std::string> programs,
                   std::vector<std::string> searchFolders, ProcessObserver& observer);

  // The host program gets the arguments as its own, BXVBWIZ_MACHINE names the machine folder for it, and its
  // current folder is the machine's. The observer must outlive the process object.
  std::unique_ptr<Process> Start(const std::string& commandLine) override;

 private:
  // The host program for a program's path as a command line gives it; empty when there is none.
  std::string HostProgram(const std::string& program) const;

  DriveTree& tree_;
  std::map<std::string, std::string> programs_;
  std::vector<std::string> searchFolders_;
  ProcessObserver& observer_;
};

}  // namespace bxvbwiz
