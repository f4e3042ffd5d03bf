#include <windows.h>

#include <atomic>

#include "machine/host/Host.h"
#include "machine/host/win32/HostPaths.h"
#include "platform/FileSystem.h"
#include "platform/win32/OwnedHandle.h"
#include "text/win32/WideText.h"

namespace bxvbwiz::host {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

SystemError LastError() {
  return static_cast<SystemError>(GetLastError());
}
SystemError Result(BOOL succeeded) {
  return succeeded != FALSE ? SystemError::Success : LastError();
}

FILETIME ToFileTime(std::int64_t nanoseconds) {
  const auto ticks = static_cast<std::uint64_t>(nanoseconds / kNanosecondsPerUnit + kUnixEpoch);
  return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

std::uint64_t Join(DWORD high, DWORD low) {
  return static_cast<std::uint64_t>(high) << 32 | low;
}

FileKind KindOf(DWORD attributes) {
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return FileKind::Link;
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileKind::Folder;
  return (attributes & FILE_ATTRIBUTE_DEVICE) != 0 ? FileKind::Other : FileKind::File;
}

// Missing when the handle is not one of a file on a disk.
FileStatus StatusOfHandle(HANDLE file) {
  FileStatus status;
  BY_HANDLE_FILE_INFORMATION facts;
  if (GetFileType(file) != FILE_TYPE_DISK || GetFileInformationByHandle(file, &facts) == FALSE) return status;
  status.kind = KindOf(facts.dwFileAttributes);
  status.writable = (facts.dwFileAttributes & FILE_ATTRIBUTE_READONLY) == 0;
  status.size = Join(facts.nFileSizeHigh, facts.nFileSizeLow);
  status.modifiedNanoseconds = (static_cast<std::int64_t>(Join(facts.ftLastWriteTime.dwHighDateTime,
                                                               facts.ftLastWriteTime.dwLowDateTime)) -
                                kUnixEpoch) *
                               kNanosecondsPerUnit;
  status.inode = Join(facts.nFileIndexHigh, facts.nFileIndexLow);
  status.device = facts.dwVolumeSerialNumber;
  status.permissions = facts.dwFileAttributes & FILE_ATTRIBUTE_READONLY;
  return status;
}

// Opens a file, a folder or a link itself with the rights `access`.
OwnedHandle OpenItself(const std::string& path, DWORD access) {
  return OwnedHandle(CreateFileW(SystemPath(path).c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                                 FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

SystemError WriteAll(HANDLE file, std::string_view bytes) {
  constexpr std::size_t kPiece = 1 << 24;  // a write's size is a DWORD
  while (!bytes.empty()) {
    const std::string_view piece = bytes.substr(0, kPiece);
    DWORD written = 0;
    if (WriteFile(file, piece.data(), static_cast<DWORD>(piece.size()), &written, nullptr) == FALSE)
      return LastError();
    if (written == 0) return SystemError::DiskFull;
    bytes.remove_prefix(written);
  }
  return SystemError::Success;
}

SystemError SetFileModified(HANDLE file, std::int64_t nanoseconds) {
  const FILETIME time = ToFileTime(nanoseconds);
  return Result(SetFileTime(file, nullptr, &time, &time));
}

SystemError FillNewFile(HANDLE file, std::string_view bytes, const ContentOptions& options) {
  SystemError error = WriteAll(file, bytes);
  if (error == SystemError::Success && options.modifiedNanoseconds)
    error = SetFileModified(file, *options.modifiedNanoseconds);
  if (error == SystemError::Success && options.flush) error = Result(FlushFileBuffers(file));
  return error;
}

// A name in the folder of `path` that most likely no other file has; creating the file makes sure.
std::string TemporaryName(const std::string& path) {
  static std::atomic<unsigned> count{0};
  return path.substr(0, path.rfind('/') + 1) + ".bxvbwiz-" + std::to_string(GetCurrentProcessId()) + "-" +
         std::to_string(++count) + ".tmp";
}

}  // namespace

FileStatus StatusOf(const std::string& path) {
  const OwnedHandle file = OpenItself(path, FILE_READ_ATTRIBUTES);
  return file.Valid() ? StatusOfHandle(file.Get()) : FileStatus();
}

std::string RealPath(const std::string& path) {
  // Without FILE_FLAG_OPEN_REPARSE_POINT: links are followed.
  const OwnedHandle file(CreateFileW(SystemPath(path).c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                                     OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!file.Valid()) return {};
  std::wstring real(GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
  const DWORD length = GetFinalPathNameByHandleW(file.Get(), real.data(), static_cast<DWORD>(real.size()),
                                                 FILE_NAME_NORMALIZED);
  if (length == 0 || length > real.size()) return {};
  real.resize(length);
  return HostPath(real);
}

bool IsAbsolutePath(const std::string& path) {
  const bool hasDrive = path.size() > 2 && path[1] == ':' && (path[2] == '/' || path[2] == '\\');
  return hasDrive || path.compare(0, 2, "//") == 0 || path.compare(0, 2, "\\\\") == 0;
}

bool ListNames(const std::string& folder, std::vector<std::string>& names) {
  names.clear();
  WIN32_FIND_DATAW entry;
  const OwnedSearch search(FindFirstFileW(SystemPath(folder + "/*").c_str(), &entry));
  if (!search.Valid()) return false;
  do {
    const std::wstring_view name = entry.cFileName;
    if (name != L"." && name != L"..") names.push_back(Narrow(name));
  } while (FindNextFileW(search.Get(), &entry) != FALSE);
  return GetLastError() == ERROR_NO_MORE_FILES;
}

InputFile::~InputFile() {
  const OwnedHandle closed(reinterpret_cast<HANDLE>(file_));
}

SystemError InputFile::Open(const std::string& path) {
  OwnedHandle file = OpenItself(path, GENERIC_READ);
  if (!file.Valid()) return LastError();
  status_ = StatusOfHandle(file.Get());
  if (status_.kind != FileKind::File) return SystemError::AccessDenied;
  file_ = reinterpret_cast<std::intptr_t>(file.Release());
  return SystemError::Success;
}

SystemError InputFile::ReadAt(std::uint64_t offset, char* buffer, std::size_t size, std::size_t& count) {
  constexpr std::size_t kPiece = 1 << 24;  // a read's size is a DWORD
  count = 0;
  LARGE_INTEGER place;
  place.QuadPart = static_cast<LONGLONG>(offset);
  if (SetFilePointerEx(reinterpret_cast<HANDLE>(file_), place, nullptr, FILE_BEGIN) == FALSE)
    return LastError();
  while (count < size) {
    DWORD got = 0;
    const auto piece = static_cast<DWORD>(size - count < kPiece ? size - count : kPiece);
    if (ReadFile(reinterpret_cast<HANDLE>(file_), buffer + count, piece, &got, nullptr) == FALSE)
      return LastError();
    if (got == 0) break;
    count += got;
  }
  return SystemError::Success;
}

SystemError ReplaceContent(const std::string& path, std::string_view bytes, const ContentOptions& options) {
  const bool readOnly = options.permissions.value_or(0) != 0;
  const std::wstring target = SystemPath(path);
  std::wstring temporary;
  SystemError error = SystemError::Success;
  {
    OwnedHandle file;
    do {
      temporary = SystemPath(TemporaryName(path));
      file = OwnedHandle(CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                     readOnly ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL, nullptr));
    } while (!file.Valid() && GetLastError() == ERROR_FILE_EXISTS);
    if (!file.Valid()) return LastError();
    error = FillNewFile(file.Get(), bytes, options);
  }
  if (error == SystemError::Success)
    error = Result(MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING));
  if (error != SystemError::Success) {
    if (readOnly) SetFileAttributesW(temporary.c_str(), FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(temporary.c_str());
  }
  return error;
}

// Opening the folders only once would save nothing here.
FolderCopy::FolderCopy(const std::string& /*source*/, const std::string& /*target*/) {}
FolderCopy::~FolderCopy() = default;
bool FolderCopy::CopyNew(const std::string& /*name*/, FileStatus& /*target*/) {
  return false;
}

SystemError AppendContent(const std::string& path, std::string_view bytes) {
  const OwnedHandle file(CreateFileW(SystemPath(path).c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES,
                                     kShareAll, nullptr, OPEN_ALWAYS,
                                     FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  if (!file.Valid()) return LastError();
  if (StatusOfHandle(file.Get()).kind != FileKind::File) return SystemError::AccessDenied;
  LARGE_INTEGER end = {};
  if (SetFilePointerEx(file.Get(), {}, &end, FILE_END) == FALSE) return LastError();
  const SystemError error = WriteAll(file.Get(), bytes);
  if (error != SystemError::Success && SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN) != FALSE)
    SetEndOfFile(file.Get());  // otherwise half of the text would remain
  return error;
}

SystemError Rename(const std::string& from, const std::string& to) {
  return Result(MoveFileExW(SystemPath(from).c_str(), SystemPath(to).c_str(), 0));
}

SystemError RemoveFile(const std::string& path) {
  return Result(DeleteFileW(SystemPath(path).c_str()));
}

SystemError MakeFolder(const std::string& path) {
  return Result(CreateDirectoryW(SystemPath(path).c_str(), nullptr));
}

SystemError SetWritable(const std::string& path, bool writable) {
  const std::wstring name = SystemPath(path);
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
  const DWORD wanted = writable ? attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY)
                                : attributes | FILE_ATTRIBUTE_READONLY;
  return wanted == attributes ? SystemError::Success : Result(SetFileAttributesW(name.c_str(), wanted));
}

SystemError SetModified(const std::string& path, std::int64_t nanoseconds) {
  const OwnedHandle file = OpenItself(path, FILE_WRITE_ATTRIBUTES);
  return file.Valid() ? SetFileModified(file.Get(), nanoseconds) : LastError();
}

}  // namespace bxvbwiz::host
