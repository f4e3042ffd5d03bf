#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/Platform.h"

namespace bxvbwiz {

// Shows an error by its number when an expectation fails.
inline void PrintTo(SystemError error, std::ostream* out) {
  *out << static_cast<std::uint32_t>(error);
}

// A platform that the contract suite is run against, in a state of its own for every test.
class ContractPlatform {
 public:
  virtual ~ContractPlatform() = default;
  virtual Platform& platform() = 0;
  // An empty folder on the platform (a Windows path without a backslash at its end), which is the current
  // directory.
  virtual std::string Folder() const = 0;
  // Wine in the place of Windows: a few calls are known to answer otherwise there.
  virtual bool IsWine() const { return false; }
  // The program child.exe, in a folder elsewhere whose name has blanks.
  virtual std::string ChildProgram() const = 0;
};

// Made by the program that runs the suite.
std::unique_ptr<ContractPlatform> MakeContractPlatform();

class ContractTest : public testing::Test {
 protected:
  std::string At(const std::string& name) const { return contract_->Folder() + "\\" + name; }
  void Put(const std::string& name, const std::string& bytes = "x") {
    ASSERT_EQ(files_.Write(At(name), bytes, WriteMode::Create), SystemError::Success) << name;
  }
  static std::string Error(SystemError error) {
    return "error " + std::to_string(static_cast<std::uint32_t>(error));
  }
  // A file's bytes, or its error.
  std::string Get(const std::string& path) {
    std::string bytes = "left from before";
    const SystemError error = files_.Read(path, bytes);
    return error == SystemError::Success ? bytes : Error(error);
  }

  std::unique_ptr<ContractPlatform> contract_ = MakeContractPlatform();
  Platform& platform_ = contract_->platform();
  FileSystem& files_ = platform_.files;
};

}  // namespace bxvbwiz
