#pragma once

#include <cstdint>

namespace bxvbwiz {

// The error codes of the calls of the seam, with the values of winerror.h. A machine folder
// gives the code that Windows gives in the same situation.
enum class SystemError : std::uint32_t {
  Success = 0,
  FileNotFound = 2,
  PathNotFound = 3,
  TooManyOpenFiles = 4,
  AccessDenied = 5,
  InvalidHandle = 6,
  NotEnoughMemory = 8,
  WriteProtect = 19,
  NotReady = 21,
  GeneralFailure = 31,
  SharingViolation = 32,
  HandleEof = 38,
  BadNetworkPath = 53,
  BadNetworkName = 67,
  FileExists = 80,
  DiskFull = 112,
  InvalidName = 123,
  DirectoryNotEmpty = 145,
  AlreadyExists = 183,
  FilenameTooLong = 206,
  MoreData = 234,
  NoMoreItems = 259,
  InvalidDirectory = 267,
};

// True for the errors that say that there is no such file or key: that is an answer, while the others leave
// open whether there is one.
constexpr bool MeansMissing(SystemError error) {
  switch (error) {
    case SystemError::FileNotFound:
    case SystemError::PathNotFound:
    case SystemError::BadNetworkPath:
    case SystemError::BadNetworkName:
    case SystemError::InvalidName:
    case SystemError::FilenameTooLong:
    case SystemError::InvalidDirectory:
      return true;
    default:
      return false;
  }
}

}  // namespace bxvbwiz
