#include "win32/Win32FileSystem.h"

#include <windows.h>

#include "platform/win32/OwnedHandle.h"
#include "win32/AnsiText.h"

namespace bxvbwiz {

namespace {

SystemError LastError() {
  return static_cast<SystemError>(GetLastError());
}
SystemError Result(BOOL succeeded) {
  return succeeded != FALSE ? SystemError::Success : LastError();
}

class MappedView : public FileView {
 public:
  MappedView(const void* base, std::size_t size) : base_(base), size_(size) {}
  ~MappedView() override {
    if (base_ != nullptr) UnmapViewOfFile(base_);
  }
  MappedView(const MappedView&) = delete;
  MappedView& operator=(const MappedView&) = delete;
  std::string_view Bytes() const override { return {static_cast<const char*>(base_), size_}; }

 private:
  const void* base_;
  std::size_t size_;
};

HANDLE OpenForReading(const std::string& path) {
  return CreateFileA(ToAnsi(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Calls that fill a buffer give its needed size when it is too small.
template <class Call>
SystemError FillText(Call call, std::string& text) {
  std::string buffer(MAX_PATH, '\0');
  DWORD length = call(static_cast<DWORD>(buffer.size()), buffer.data());
  if (length >= buffer.size()) {
    buffer.resize(length);
    length = call(static_cast<DWORD>(buffer.size()), buffer.data());
  }
  if (length == 0) return LastError();
  text = FromAnsi(std::string_view(buffer.data(), length));
  return SystemError::Success;
}

}  // namespace

SystemError Win32FileSystem::Find(const std::string& pattern, std::vector<FoundFile>& found) {
  const std::string ansi = ToAnsi(pattern);
  // Half of all look-ups are for what is not there. To ask for attributes opens no folder.
  if (pattern.find_first_of("*?") == std::string::npos &&
      GetFileAttributesA(ansi.c_str()) == INVALID_FILE_ATTRIBUTES) {
    const SystemError error = LastError();
    // A search may show the name of a file that is closed to this user.
    if (error != SystemError::AccessDenied && error != SystemError::SharingViolation) return error;
  }
  WIN32_FIND_DATAA entry;
  const OwnedSearch search(FindFirstFileA(ansi.c_str(), &entry));
  if (!search.Valid()) return LastError();
  do {
    const FileTime written = static_cast<FileTime>(entry.ftLastWriteTime.dwHighDateTime) << 32 |
                             entry.ftLastWriteTime.dwLowDateTime;
    found.push_back({FromAnsi(entry.cFileName), entry.dwFileAttributes, written});
  } while (FindNextFileA(search.Get(), &entry) != FALSE);
  return SystemError::Success;
}

FileHandle Win32FileSystem::Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                                 std::uint32_t disposition, std::uint32_t attributes) {
  return reinterpret_cast<FileHandle>(
      CreateFileA(ToAnsi(path).c_str(), access, share, nullptr, disposition, attributes, nullptr));
}

bool Win32FileSystem::Close(FileHandle file) {
  return CloseHandle(reinterpret_cast<HANDLE>(file)) != FALSE;
}

bool Win32FileSystem::SetTimes(FileHandle file, FileTime time) {
  const FILETIME value{static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
  return SetFileTime(reinterpret_cast<HANDLE>(file), &value, &value, &value) != FALSE;
}

SystemError Win32FileSystem::Read(const std::string& path, std::string& bytes) {
  const OwnedHandle file(OpenForReading(path));
  if (!file.Valid()) return LastError();
  if (GetFileType(file.Get()) != FILE_TYPE_DISK) return SystemError::AccessDenied;
  const DWORD size = GetFileSize(file.Get(), nullptr);
  if (size == INVALID_FILE_SIZE) return LastError();
  bytes.resize(size);
  DWORD read = 0;
  if (ReadFile(file.Get(), bytes.data(), size, &read, nullptr) == FALSE) return LastError();
  bytes.resize(read);
  return SystemError::Success;
}

SystemError Win32FileSystem::Write(const std::string& path, std::string_view bytes, WriteMode mode) {
  const bool append = mode == WriteMode::Append;
  const OwnedHandle file(CreateFileA(ToAnsi(path).c_str(), append ? FILE_APPEND_DATA : GENERIC_WRITE,
                                     FILE_SHARE_READ, nullptr, append ? OPEN_ALWAYS : CREATE_ALWAYS,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.Valid()) return LastError();
  DWORD written = 0;
  return Result(WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
}

SystemError Win32FileSystem::Map(const std::string& path, std::unique_ptr<FileView>& view) {
  const OwnedHandle file(OpenForReading(path));
  if (!file.Valid()) return LastError();
  const DWORD size = GetFileSize(file.Get(), nullptr);
  if (size == INVALID_FILE_SIZE) return LastError();
  if (size == 0) {
    view = std::make_unique<MappedView>(nullptr, 0);
    return SystemError::Success;
  }
  const OwnedHandle mapping(CreateFileMappingA(file.Get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
  if (!mapping.Valid()) return LastError();
  const void* base = MapViewOfFile(mapping.Get(), FILE_MAP_READ, 0, 0, 0);
  if (base == nullptr) return LastError();
  view = std::make_unique<MappedView>(base, size);
  return SystemError::Success;
}

SystemError Win32FileSystem::Copy(const std::string& source, const std::string& target) {
  return Result(CopyFileA(ToAnsi(source).c_str(), ToAnsi(target).c_str(), FALSE));
}

SystemError Win32FileSystem::Rename(const std::string& source, const std::string& target) {
  return Result(MoveFileA(ToAnsi(source).c_str(), ToAnsi(target).c_str()));
}

SystemError Win32FileSystem::Delete(const std::string& path) {
  return Result(DeleteFileA(ToAnsi(path).c_str()));
}

SystemError Win32FileSystem::MakeDirectory(const std::string& path) {
  return Result(CreateDirectoryA(ToAnsi(path).c_str(), nullptr));
}

SystemError Win32FileSystem::SetAttributes(const std::string& path, std::uint32_t attributes) {
  return Result(SetFileAttributesA(ToAnsi(path).c_str(), attributes));
}

std::string Win32FileSystem::Search(const std::string& name) {
  char buffer[MAX_PATH];
  const DWORD length = SearchPathA(nullptr, ToAnsi(name).c_str(), nullptr, sizeof buffer, buffer, nullptr);
  return length == 0 || length >= sizeof buffer ? std::string() : FromAnsi(std::string_view(buffer, length));
}

SystemError Win32FileSystem::FullPath(const std::string& path, std::string& full) {
  const std::string ansi = ToAnsi(path);
  return FillText(
      [&](DWORD size, char* buffer) { return GetFullPathNameA(ansi.c_str(), size, buffer, nullptr); }, full);
}

std::string Win32FileSystem::CurrentDirectory() {
  std::string folder;
  FillText([](DWORD size, char* buffer) { return GetCurrentDirectoryA(size, buffer); }, folder);
  return folder;
}

SystemError Win32FileSystem::ChangeDirectory(const std::string& path) {
  return Result(SetCurrentDirectoryA(ToAnsi(path).c_str()));
}

}  // namespace bxvbwiz
