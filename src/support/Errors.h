#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SystemError.h"

namespace bxvbwiz {

// Numbers of the run-time errors, as Visual Basic counts them.
constexpr std::int32_t kErrorInvalidCall = 5;
constexpr std::int32_t kErrorOverflow = 6;
constexpr std::int32_t kErrorOutOfMemory = 7;
constexpr std::int32_t kErrorSubscript = 9;
constexpr std::int32_t kErrorTypeMismatch = 13;
constexpr std::int32_t kErrorBadFileName = 52;
constexpr std::int32_t kErrorFileNotFound = 53;
constexpr std::int32_t kErrorDeviceInputOutput = 57;
constexpr std::int32_t kErrorFileExists = 58;
constexpr std::int32_t kErrorDiskFull = 61;
constexpr std::int32_t kErrorInputPastEnd = 62;
constexpr std::int32_t kErrorTooManyFiles = 67;
constexpr std::int32_t kErrorPermissionDenied = 70;
constexpr std::int32_t kErrorDiskNotReady = 71;
constexpr std::int32_t kErrorPathFileAccess = 75;
constexpr std::int32_t kErrorPathNotFound = 76;
constexpr std::int32_t kErrorObjectNotSet = 91;
constexpr std::int32_t kErrorFormShown = 400;
constexpr std::int32_t kErrorDuplicateKey = 457;

// A run-time error. what() is the description; for a file it names the path. It keeps the call stack of where
// it was made, since the routines that it leaves take themselves off the thread's.
class RuntimeError : public std::runtime_error {
 public:
  RuntimeError(std::int32_t number, const std::string& description, std::string source = "Bx6vbwiz");
  std::int32_t Number() const { return number_; }
  const std::string& Source() const { return source_; }
  // The routines that were running, oldest first: the last one failed.
  const std::vector<std::string_view>& Routines() const { return routines_; }

 private:
  std::int32_t number_;
  std::string source_;
  std::vector<std::string_view> routines_;
};

// The run-time error that stands for a failed file call on `path`: number, and "<what failed>: <path>".
[[noreturn]] void RaiseSystemError(SystemError error, const std::string& path);
// Raises unless `error` is Success.
inline void CheckSystem(SystemError error, const std::string& path) {
  if (error != SystemError::Success) RaiseSystemError(error, path);
}

// Thrown when the wizard has ended, to leave everything that is running. It is not an error: no trap catches
// it, only the entry points do.
struct WizardEnded {};

}  // namespace bxvbwiz
