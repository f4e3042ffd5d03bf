#include "machine/host/posix/HostErrors.h"

#include <cerrno>

namespace bxvbwiz::host {

SystemError ErrorOf(int error) {
  switch (error) {
    case 0:
      return SystemError::Success;
    case ENOENT:
      return SystemError::FileNotFound;
    case ENOTDIR:
      return SystemError::PathNotFound;
    case EACCES:
    case EPERM:
    case EISDIR:
    case ELOOP:
    case ENXIO:
      return SystemError::AccessDenied;
    case EROFS:
      return SystemError::WriteProtect;
    case EEXIST:
      return SystemError::AlreadyExists;
    case ENOTEMPTY:
      return SystemError::DirectoryNotEmpty;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return SystemError::DiskFull;
    case EMFILE:
    case ENFILE:
      return SystemError::TooManyOpenFiles;
    case ENAMETOOLONG:
      return SystemError::FilenameTooLong;
    case ENOMEM:
      return SystemError::NotEnoughMemory;
    case EBUSY:
    case ETXTBSY:
    case EINVAL:  // a folder renamed into itself
      return SystemError::SharingViolation;
    default:
      return SystemError::GeneralFailure;
  }
}

}  // namespace bxvbwiz::host
