#pragma once

#include <map>
#include <string>
#include <vector>

#include "machine/DriveTree.h"
#include "platform/Processes.h"

namespace bxvbwiz {

// What has to happen before and after a program that works on the same machine folder.
class ProcessObserver {
 public:
  virtual ~ProcessObserver() = default;
  // Stores everything that was changed, because the program reads it from the disk.
  virtual void BeforeStart() = 0;
  // What is remembered of the disk may no longer be true.
  virtual void AfterEnd() = 0;
};

// The programs of a machine folder: those that machine.ini maps to a host program. No other can be started.
class MachineProcesses : public Processes {
 public:
  // `programs` holds the host programs by Windows path in upper case; a relative one starts at the machine
  // folder. A program without a path is looked for in the current directory and then in `searchFolders`.
  MachineProcesses(DriveTree& tree, std::map<std::string, std::string> programs,
                   std::vector<std::string> searchFolders, ProcessObserver& observer);

  // The host program gets the same arguments, the machine folder in BXVBWIZ_MACHINE, and the machine's
  // current directory as its own. The observer must outlive the process object.
  std::unique_ptr<Process> Start(const std::string& commandLine) override;

  // The host program for a program as a command line names it; empty when there is none.
  std::string HostProgram(const std::string& program) const;

 private:
  DriveTree& tree_;
  std::map<std::string, std::string> programs_;
  std::vector<std::string> searchFolders_;
  ProcessObserver& observer_;
};

}  // namespace bxvbwiz
