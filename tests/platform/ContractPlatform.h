#pragma once

#include <memory>
#include <string>

#include "platform/Platform.h"

namespace bxvbwiz {

// A platform that the contract suite is run against, in a state of its own for every test.
class ContractPlatform {
 public:
  virtual ~ContractPlatform() = default;
  virtual Platform& platform() = 0;
  // An empty folder on the platform (a Windows path without a backslash at its end), which is the current
  // directory.
  virtual std::string Folder() const = 0;
};

// Made by the program that runs the suite.
std::unique_ptr<ContractPlatform> MakeContractPlatform();

}  // namespace bxvbwiz
