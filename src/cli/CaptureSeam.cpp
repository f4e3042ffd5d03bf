#include "cli/CaptureSeam.h"

#include <algorithm>

#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::uint32_t kKeyAllAccess = 0xF003F;  // KEY_ALL_ACCESS of winnt.h
constexpr std::size_t kLongestValue = 1 << 20;    // far more than any caller's buffer

bool IsFolder(const std::vector<FoundFile>& found) {
  return found.size() == 1 && (found[0].attributes & kAttributeDirectory) != 0;
}

std::string FolderOf(const std::string& path) {
  return path.substr(0, path.rfind('\\'));
}

}  // namespace

// ---- registry

SystemError CaptureRegistry::OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                                     RegistryHandle& opened) {
  const SystemError error = ForwardingRegistry::OpenKey(key, path, access, opened);
  return Opened(error, key, path, opened);
}

SystemError CaptureRegistry::CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                                       std::uint32_t access, RegistryHandle& opened) {
  const SystemError error = ForwardingRegistry::CreateKey(key, path, options, access, opened);
  return Opened(error, key, path, opened);
}

SystemError CaptureRegistry::Opened(SystemError error, RegistryHandle key, const std::string& path,
                                    RegistryHandle opened) {
  RegistryHandle captured = 0;
  if (error == SystemError::Success &&
      captured_.CreateKey(InCaptured(key), path, 0, kKeyAllAccess, captured) == SystemError::Success) {
    keys_[opened] = captured;
  }
  return error;
}

SystemError CaptureRegistry::CloseKey(RegistryHandle key) {
  if (const auto found = keys_.find(key); found != keys_.end()) {
    captured_.CloseKey(found->second);
    keys_.erase(found);
  }
  return ForwardingRegistry::CloseKey(key);
}

SystemError CaptureRegistry::EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size,
                                     std::string& name) {
  const SystemError error = ForwardingRegistry::EnumKey(key, index, size, name);
  RegistryHandle child = 0;
  if (error == SystemError::Success &&
      captured_.CreateKey(InCaptured(key), name, 0, kKeyAllAccess, child) == SystemError::Success) {
    captured_.CloseKey(child);
  }
  return error;
}

SystemError CaptureRegistry::EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size,
                                       std::string& name, std::uint32_t& type) {
  const SystemError error = ForwardingRegistry::EnumValue(key, index, size, name, type);
  if (error == SystemError::Success) TakeValue(key, name);
  return error;
}

SystemError CaptureRegistry::QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                                        RegistryData& data) {
  const SystemError error = ForwardingRegistry::QueryValue(key, name, size, data);
  if (error == SystemError::Success || error == SystemError::MoreData) TakeValue(key, name);
  return error;
}

// The predefined keys are the same everywhere.
RegistryHandle CaptureRegistry::InCaptured(RegistryHandle key) const {
  const auto found = keys_.find(key);
  return found == keys_.end() ? key : found->second;
}

void CaptureRegistry::TakeValue(RegistryHandle key, const std::string& name) {
  RegistryData data;
  if (ForwardingRegistry::QueryValue(key, name, kLongestValue, data) == SystemError::Success)
    captured_.SetValue(InCaptured(key), name, data);
}

// ---- files

std::string CaptureFiles::Full(const std::string& path) {
  std::string full;
  return FullPath(path, full) == SystemError::Success ? full : path;
}

bool CaptureFiles::IsMade(const std::string& path) {
  const std::string full = UpperCase(Full(path));
  return std::any_of(made_.begin(), made_.end(), [&](const std::string& folder) {
    return StartsWith(full, folder) && (full.size() == folder.size() || full[folder.size()] == '\\');
  });
}

void CaptureFiles::Take(const std::string& path) {
  std::string bytes;
  const std::string full = Full(path);
  if (!captured_.HasContent(full) && ForwardingFileSystem::Read(path, bytes) == SystemError::Success)
    captured_.AddContent(full, bytes);
}

SystemError CaptureFiles::Find(const std::string& pattern, std::vector<FoundFile>& found) {
  if (IsMade(pattern)) return Scratch().Find(pattern, found);
  const std::size_t before = found.size();
  const SystemError error = ForwardingFileSystem::Find(pattern, found);
  const std::string folder = FolderOf(Full(pattern)) + "\\";
  for (std::size_t i = before; i < found.size(); ++i) {
    const FoundFile& file = found[i];
    if (file.name == "." || file.name == "..") {
      captured_.AddFolder(FolderOf(folder));
    } else if ((file.attributes & kAttributeDirectory) != 0) {
      captured_.AddFolder(folder + file.name);
    } else {
      captured_.AddName(folder + file.name);
      if ((file.attributes & kAttributeReadOnly) != 0) captured_.AddReadOnly(folder + file.name);
    }
  }
  return error;
}

FileHandle CaptureFiles::Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                              std::uint32_t disposition, std::uint32_t attributes) {
  if (!IsMade(path)) {
    const FileHandle file = ForwardingFileSystem::Open(path, access, share, disposition, attributes);
    if (file != kInvalidFile) captured_.AddName(Full(path));
    return file;
  }
  const FileHandle file = Scratch().Open(path, access, share, disposition, attributes);
  if (file == kInvalidFile) return file;
  open_[next_] = file;
  return next_--;
}

bool CaptureFiles::Close(FileHandle file) {
  const auto found = open_.find(file);
  if (found == open_.end()) return ForwardingFileSystem::Close(file);
  const bool closed = Scratch().Close(found->second);
  open_.erase(found);
  return closed;
}

bool CaptureFiles::SetTimes(FileHandle file, FileTime time) {
  const auto found = open_.find(file);
  return found == open_.end() ? ForwardingFileSystem::SetTimes(file, time)
                              : Scratch().SetTimes(found->second, time);
}

SystemError CaptureFiles::Read(const std::string& path, std::string& bytes) {
  if (IsMade(path)) return Scratch().Read(path, bytes);
  const SystemError error = ForwardingFileSystem::Read(path, bytes);
  if (error == SystemError::Success) captured_.AddContent(Full(path), bytes);
  return error;
}

SystemError CaptureFiles::Write(const std::string& path, std::string_view bytes, WriteMode mode) {
  return IsMade(path) ? Scratch().Write(path, bytes, mode) : ForwardingFileSystem::Write(path, bytes, mode);
}

SystemError CaptureFiles::Map(const std::string& path, std::unique_ptr<FileView>& view) {
  if (IsMade(path)) return Scratch().Map(path, view);
  const SystemError error = ForwardingFileSystem::Map(path, view);
  if (error == SystemError::Success) captured_.AddContent(Full(path), view->Bytes());
  return error;
}

SystemError CaptureFiles::Copy(const std::string& source, const std::string& target) {
  if (!IsMade(target)) return ForwardingFileSystem::Copy(source, target);
  std::string bytes;
  SystemError error = Read(source, bytes);
  if (error == SystemError::Success) error = Scratch().Write(target, bytes, WriteMode::Create);
  std::vector<FoundFile> found;
  const bool readOnly = error == SystemError::Success && Find(source, found) == SystemError::Success &&
                        (found[0].attributes & kAttributeReadOnly) != 0;
  return readOnly ? Scratch().SetAttributes(target, kAttributeReadOnly) : error;
}

SystemError CaptureFiles::Rename(const std::string& source, const std::string& target) {
  return IsMade(source) ? Scratch().Rename(source, target) : ForwardingFileSystem::Rename(source, target);
}

SystemError CaptureFiles::Delete(const std::string& path) {
  return IsMade(path) ? Scratch().Delete(path) : ForwardingFileSystem::Delete(path);
}

SystemError CaptureFiles::MakeDirectory(const std::string& path) {
  const std::string full = Full(path.back() == '\\' ? FolderOf(path) : path);
  if (!IsMade(full)) {
    // What the machine would say, without asking it to make the folder.
    std::vector<FoundFile> found;
    if (Find(full, found) == SystemError::Success) return SystemError::AlreadyExists;
    const std::string parent = FolderOf(full);
    const bool isRoot = parent.size() == 2;
    if (!isRoot && (Find(parent, found) != SystemError::Success || !IsFolder(found)))
      return SystemError::PathNotFound;
    scratch_.AddFolder(parent);
    made_.push_back(UpperCase(full));
  }
  return Scratch().MakeDirectory(full);
}

SystemError CaptureFiles::SetAttributes(const std::string& path, std::uint32_t attributes) {
  return IsMade(path) ? Scratch().SetAttributes(path, attributes)
                      : ForwardingFileSystem::SetAttributes(path, attributes);
}

std::string CaptureFiles::Search(const std::string& name) {
  std::string path = ForwardingFileSystem::Search(name);
  if (!path.empty()) captured_.AddName(path);
  return path;
}

SystemError CaptureFiles::ChangeDirectory(const std::string& path) {
  const SystemError error = ForwardingFileSystem::ChangeDirectory(path);
  if (error == SystemError::Success) captured_.AddFolder(CurrentDirectory());
  return error;
}

// ---- profile strings

std::string CaptureProfileStrings::GetString(ProfileText section, ProfileText key,
                                             std::string_view defaultValue, std::size_t size,
                                             const std::string& file) {
  if (files_.IsMade(file)) return scratch_.GetString(section, key, defaultValue, size, file);
  constexpr std::size_t kPathBuffer = 260;  // MAX_PATH
  const bool bare = file.find_first_of("\\/:") == std::string::npos;
  files_.Take(bare ? facts_.WindowsDirectory(kPathBuffer) + "\\" + file : file);
  return ForwardingProfileStrings::GetString(section, key, defaultValue, size, file);
}

bool CaptureProfileStrings::WriteString(ProfileText section, ProfileText key, ProfileText value,
                                        const std::string& file) {
  return files_.IsMade(file) ? scratch_.WriteString(section, key, value, file)
                             : ForwardingProfileStrings::WriteString(section, key, value, file);
}

bool CaptureProfileStrings::WriteSection(ProfileText section, ProfileText entries, const std::string& file) {
  return files_.IsMade(file) ? scratch_.WriteSection(section, entries, file)
                             : ForwardingProfileStrings::WriteSection(section, entries, file);
}

std::vector<std::string> CaptureProfileStrings::Unreadable() {
  std::vector<std::string> files = ForwardingProfileStrings::Unreadable();
  for (std::string& file : scratch_.Unreadable()) files.push_back(std::move(file));
  return files;
}

std::vector<std::string> CaptureProfileStrings::Flush() {
  std::vector<std::string> files = ForwardingProfileStrings::Flush();
  for (std::string& file : scratch_.Flush()) files.push_back(std::move(file));
  return files;
}

}  // namespace bxvbwiz
