#include "support/Errors.h"

#include <utility>

#include "support/CallStack.h"

namespace bxvbwiz {
namespace {

struct RunTimeError {
  std::int32_t number;
  const char* description;
};

// The run-time error by which a Visual Basic file statement reports a system error.
RunTimeError FromSystem(SystemError error) {
  switch (error) {
    case SystemError::FileNotFound:
      return {kErrorFileNotFound, "File not found"};
    case SystemError::PathNotFound:
    case SystemError::FilenameTooLong:
    case SystemError::InvalidDirectory:
      return {kErrorPathNotFound, "Path not found"};
    case SystemError::AccessDenied:
    case SystemError::DirectoryNotEmpty:
      return {kErrorPathFileAccess, "Path/File access error"};
    case SystemError::WriteProtect:
    case SystemError::SharingViolation:
      return {kErrorPermissionDenied, "Permission denied"};
    case SystemError::FileExists:
    case SystemError::AlreadyExists:
      return {kErrorFileExists, "File already exists"};
    case SystemError::InvalidName:
    case SystemError::InvalidHandle:
      return {kErrorBadFileName, "Bad file name or number"};
    case SystemError::TooManyOpenFiles:
      return {kErrorTooManyFiles, "Too many files"};
    case SystemError::NotEnoughMemory:
      return {kErrorOutOfMemory, "Out of memory"};
    case SystemError::NotReady:
      return {kErrorDiskNotReady, "Disk not ready"};
    case SystemError::HandleEof:
      return {kErrorInputPastEnd, "Input past end of file"};
    case SystemError::DiskFull:
      return {kErrorDiskFull, "Disk full"};
    default:
      return {kErrorDeviceInputOutput, "Device I/O error"};
  }
}

}  // namespace

RuntimeError::RuntimeError(std::int32_t number, const std::string& description, std::string source)
    : std::runtime_error(description),
      number_(number),
      source_(std::move(source)),
      routines_(RunningRoutines()) {}

void RaiseSystemError(SystemError error, const std::string& path) {
  const RunTimeError raised = FromSystem(error);
  throw RuntimeError(raised.number, std::string(raised.description) + ": " + path);
}

}  // namespace bxvbwiz
