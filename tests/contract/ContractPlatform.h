#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <regex>
#include <string>

#include "platform/Platform.h"

namespace bxvbwiz {

// A platform that the contract suite runs against; each test has its own.
class ContractPlatform {
 public:
  virtual ~ContractPlatform() = default;
  virtual Platform& platform() = 0;
  // An empty folder on the platform (a Windows path without a backslash at its end), which is the current
  // directory.
  virtual std::string Folder() const = 0;
  // Whether this is Wine, where a few calls are known to answer differently.
  virtual bool IsWine() const { return false; }
  // The program child.exe, in another folder whose name has blanks.
  std::string ChildProgram() const { return "C:\\My Tools\\child.exe"; }
};

// Made by the program that runs the suite.
std::unique_ptr<ContractPlatform> MakeContractPlatform();

class ContractTest : public testing::Test {
 protected:
  std::string At(const std::string& name) const { return contract_->Folder() + "\\" + name; }
  void Put(const std::string& name, const std::string& bytes = "x") {
    ASSERT_EQ(files_.Write(At(name), bytes, WriteMode::Create), SystemError::Success) << name;
  }
  // "ok", or the system's number of the error.
  static std::string Answer(SystemError error) {
    return error == SystemError::Success ? "ok" : std::to_string(static_cast<std::uint32_t>(error));
  }
  static std::string Answer(SystemError error, const std::string& text) {
    return error == SystemError::Success ? text : Answer(error);
  }
  // A file's bytes, or the number of its error.
  std::string Get(const std::string& path) {
    std::string bytes = "left from before";
    const SystemError error = files_.Read(path, bytes);
    return Answer(error, bytes);
  }

  // Makes calls one after the other: "rename a, b -> 183". Without an answer they succeed.
  void Do(std::initializer_list<std::string> steps) {
    static const std::regex kStep("(\\w+)(?: (.*?)){0,1}?(?:, (.*?))?(?: -> (.*))?");
    for (const std::string& step : steps) {
      std::smatch parts;
      ASSERT_TRUE(std::regex_match(step, parts, kStep)) << step;
      EXPECT_EQ(Call(parts[1], parts[2], parts[3]), parts[4].matched ? parts[4] : std::string("ok")) << step;
    }
  }
  virtual std::string Call(const std::string& /*name*/, const std::string& /*a*/, const std::string& /*b*/) {
    return "no such call";
  }

  std::unique_ptr<ContractPlatform> contract_ = MakeContractPlatform();
  Platform& platform_ = contract_->platform();
  FileSystem& files_ = platform_.files;
};

}  // namespace bxvbwiz
