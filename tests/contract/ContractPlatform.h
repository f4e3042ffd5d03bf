#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

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

  // What stands before a separator and after it; all and nothing without one.
  static std::pair<std::string, std::string> Parted(const std::string& text, const std::string& separator) {
    const std::size_t at = text.find(separator);
    if (at == std::string::npos) return {text, ""};
    return {text.substr(0, at), text.substr(at + separator.size())};
  }
  // Makes calls one after the other: "rename a, b -> 183". Without an answer they succeed.
  void Do(std::initializer_list<std::string> steps) {
    for (const std::string& step : steps) {
      const auto [call, answer] = Parted(step, " -> ");
      const auto [name, arguments] = Parted(call, " ");
      const auto [a, b] = Parted(arguments, ", ");
      EXPECT_EQ(Call(name, a, b), call.size() == step.size() ? "ok" : answer) << step;
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
