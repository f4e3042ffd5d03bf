#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "cli/Computer.h"

namespace bxvbwiz {

// One system call of a run.
struct SeamCall {
  const char* name = "";
  std::string path;  // what it was asked of: a file, a pattern, a registry key; empty where there is none
  std::size_t errors = 0;  // in how many ways the system may refuse it
};

// Counts the calls of a run and tells which are to fail: one of them, and when the fault lasts every later
// one that asks the same of the same.
struct FaultPlan {
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  // Enters a call. Gives the way in which it fails, from 1; 0 when it does not.
  std::size_t Next(const char* name, const std::string& path, std::size_t errors);

  std::vector<SeamCall> calls;
  std::size_t failingCall = kNone;
  std::size_t failingWay = 1;
  bool lasts = false;
  bool together = false;  // the files of a folder are copied in the machine folder's own way; not counted
};

// The computer of a machine folder, whose system calls fail as planned. Its GUIDs are the same in every run.
// String table and code page ask the system nothing; Flush is no call of its own either, what fails behind it
// does so on the disk.
std::unique_ptr<Computer> OpenFaultyMachine(const std::string& folder, FaultPlan& plan);

}  // namespace bxvbwiz
