#include "platform/machine/MachineFiles.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/machine/FileBytes.h"
#include "platform/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::uint32_t kShareWrite = 2;  // FILE_SHARE_WRITE and FILE_SHARE_DELETE of winnt.h
constexpr std::uint32_t kShareDelete = 4;
constexpr std::size_t kMaximumDirectory = 248;  // MAX_PATH less a name of the form 8.3
constexpr std::size_t kSearchBuffer = 260;
constexpr FileTime kUnixEpoch = 116444736000000000;  // 1970-01-01 as FILETIME counts
constexpr std::int64_t kNanosecondsPerUnit = 100;

std::uint32_t AttributesOf(const host::FileStatus& status) {
  const std::uint32_t kind = status.kind == host::FileKind::Folder ? kAttributeDirectory : kAttributeArchive;
  return status.writable ? kind : kind | kAttributeReadOnly;
}

}  // namespace

MachineFiles::MachineFiles(DriveTree& tree, MachineProfileStrings& profiles, const CodePage& codePage,
                           std::vector<std::string> searchFolders)
    : tree_(tree), profiles_(profiles), codePage_(codePage), searchFolders_(std::move(searchFolders)) {}

// ---- finding

SystemError MachineFiles::Locate(const std::string& path, WindowsPath& parsed, DriveTree::Place& place) {
  profiles_.BeforeFileAccess(path);
  const SystemError error = tree_.Parse(path, parsed);
  if (error != SystemError::Success) return error;
  if (IsDeviceName(parsed.Name())) return SystemError::AccessDenied;
  return tree_.Locate(parsed, place);
}

SystemError MachineFiles::LocateFile(const std::string& path, DriveTree::Place& place) {
  WindowsPath parsed;
  const SystemError error = Locate(path, parsed, place);
  if (error != SystemError::Success) return error;
  if (place.IsFolder()) return SystemError::AccessDenied;
  return parsed.EndsWithBackslash() ? SystemError::InvalidName : SystemError::Success;
}

void MachineFiles::FindByPattern(DriveTree::Folder& folder, bool isRoot, std::string_view pattern,
                                 std::vector<FoundFile>& found) {
  if (!isRoot) {
    for (const char* name : {".", ".."}) {
      if (MatchesPattern(name, pattern)) found.push_back({name, kAttributeDirectory});
    }
  }
  std::vector<std::pair<std::string, std::string>> matches;  // the name in upper case, the name
  for (const auto& [key, name] : folder.names) {
    if (MatchesPattern(key, pattern) && IsPossibleName(name)) matches.emplace_back(key, name);
  }
  std::sort(matches.begin(), matches.end());
  for (const auto& [key, name] : matches) {
    DriveTree::Place place;
    if (tree_.LocateName(folder, key, name, place) && place.Exists()) {
      found.push_back({name, AttributesOf(place.status)});
    }
  }
}

SystemError MachineFiles::Find(const std::string& pattern, std::vector<FoundFile>& found) {
  found.clear();
  WindowsPath parsed;
  SystemError error = tree_.Parse(pattern, parsed, WindowsPath::Wildcards::InName);
  if (error != SystemError::Success) return error;
  if (parsed.IsRoot() || parsed.EndsWithBackslash()) return SystemError::FileNotFound;
  const std::string_view name = parsed.NameKey();
  if (name.find_first_of("*?") == std::string_view::npos) {
    profiles_.BeforeFileAccess(pattern);
    DriveTree::Place place;
    error = tree_.Locate(parsed, place);
    if (error != SystemError::Success) return error;
    if (!place.Exists()) return SystemError::FileNotFound;
    found.push_back({place.name, AttributesOf(place.status)});
    return SystemError::Success;
  }
  const WindowsPath parent = parsed.Parent();
  profiles_.BeforeFileAccess(parent.Text());
  DriveTree::Folder* folder = nullptr;
  error = tree_.OpenFolder(parent, folder);
  if (error != SystemError::Success) {
    return error == SystemError::FileNotFound ? SystemError::PathNotFound : error;
  }
  if (!tree_.EnsureListed(*folder)) return SystemError::AccessDenied;
  // A full path has no dot at its end, but "*." means the names without one.
  const bool endsWithDot = pattern.back() == '.';
  FindByPattern(*folder, parent.IsRoot(), endsWithDot ? std::string(name) + '.' : std::string(name), found);
  return found.empty() ? SystemError::FileNotFound : SystemError::Success;
}

// ---- open files

bool MachineFiles::IsLocked(const std::string& hostPath, std::uint32_t shareNeeded) const {
  return std::any_of(openFiles_.begin(), openFiles_.end(), [&](const auto& entry) {
    return entry.second.hostPath == hostPath && (entry.second.share & shareNeeded) != shareNeeded;
  });
}

bool MachineFiles::HasOpenFileBelow(const std::string& hostFolder) const {
  const std::string prefix = hostFolder + "/";
  return std::any_of(openFiles_.begin(), openFiles_.end(),
                     [&](const auto& entry) { return StartsWith(entry.second.hostPath, prefix); });
}

FileHandle MachineFiles::Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                              std::uint32_t disposition, std::uint32_t /*attributes*/) {
  DriveTree::Place place;
  if (disposition != kOpenExisting || LocateFile(path, place) != SystemError::Success || !place.IsFile()) {
    return kInvalidFile;
  }
  const bool writes = (access & kGenericWrite) != 0;
  if (writes && !place.status.writable) return kInvalidFile;
  const std::uint32_t needed = ((access & kGenericRead) != 0 ? kShareRead : 0) | (writes ? kShareWrite : 0);
  if (IsLocked(place.hostPath, needed)) return kInvalidFile;
  for (const auto& [handle, file] : openFiles_) {
    if (file.hostPath != place.hostPath) continue;
    // What was opened before must not do what the new opener does not share.
    if ((file.access & kGenericRead) != 0 && (share & kShareRead) == 0) return kInvalidFile;
    if ((file.access & kGenericWrite) != 0 && (share & kShareWrite) == 0) return kInvalidFile;
  }
  const FileHandle handle = std::exchange(nextHandle_, nextHandle_ + 4);
  openFiles_[handle] = {place.hostPath, access, share};
  return handle;
}

bool MachineFiles::Close(FileHandle file) {
  return openFiles_.erase(file) != 0;
}

bool MachineFiles::SetTimes(FileHandle file, FileTime time) {
  const auto found = openFiles_.find(file);
  if (found == openFiles_.end() || (found->second.access & kGenericWrite) == 0) return false;
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  if (time > static_cast<FileTime>(kMost)) return false;
  const std::int64_t units = static_cast<std::int64_t>(time) - static_cast<std::int64_t>(kUnixEpoch);
  if (units > kMost / kNanosecondsPerUnit || units < -kMost / kNanosecondsPerUnit) return false;
  return host::SetModified(found->second.hostPath, units * kNanosecondsPerUnit) == SystemError::Success;
}

// ---- content

SystemError MachineFiles::Read(const std::string& path, std::string& bytes) {
  DriveTree::Place place;
  const SystemError error = LocateFile(path, place);
  if (error != SystemError::Success) return error;
  if (!place.Exists()) return SystemError::FileNotFound;
  if (IsLocked(place.hostPath, kShareRead)) return SystemError::SharingViolation;
  return ReadWholeFile(place.hostPath, bytes);
}

SystemError MachineFiles::Map(const std::string& path, std::unique_ptr<FileView>& view) {
  DriveTree::Place place;
  const SystemError error = LocateFile(path, place);
  if (error != SystemError::Success) return error;
  if (!place.Exists()) return SystemError::FileNotFound;
  if (IsLocked(place.hostPath, kShareRead)) return SystemError::SharingViolation;
  return ReadWholeFile(place.hostPath, view);
}

SystemError MachineFiles::Write(const std::string& path, std::string_view bytes, WriteMode mode) {
  DriveTree::Place place;
  SystemError error = LocateFile(path, place);
  if (error == SystemError::Success) error = tree_.CheckWritable(place);
  if (error != SystemError::Success) return error;
  if (IsLocked(place.hostPath, kShareWrite)) return SystemError::SharingViolation;
  // A new file appears with its first bytes or not at all, whoever ends us.
  if (mode == WriteMode::Create || !place.Exists()) return tree_.Replace(place, bytes);
  return host::AppendContent(place.hostPath, bytes);
}

SystemError MachineFiles::Copy(const std::string& source, const std::string& target) {
  DriveTree::Place from;
  SystemError error = LocateFile(source, from);
  if (error != SystemError::Success) return error;
  if (!from.Exists()) return SystemError::FileNotFound;
  DriveTree::Place to;
  error = LocateFile(target, to);
  if (error == SystemError::Success) error = tree_.CheckWritable(to);
  if (error != SystemError::Success) return error;
  if (from.hostPath == to.hostPath || IsLocked(from.hostPath, kShareRead) ||
      IsLocked(to.hostPath, kShareWrite)) {
    return SystemError::SharingViolation;
  }
  std::unique_ptr<FileView> view;
  error = ReadWholeFile(from.hostPath, view);
  if (error != SystemError::Success) return error;
  host::ContentOptions options;
  options.permissionsOf = from.hostPath;
  options.modifiedNanoseconds = from.status.modifiedNanoseconds;
  return tree_.Replace(to, view->Bytes(), options);
}

// ---- names and attributes

SystemError MachineFiles::CheckRename(const DriveTree::Place& from, const WindowsPath& target,
                                      const DriveTree::Place& to) const {
  if (!from.Exists()) return SystemError::FileNotFound;
  if (from.folder == nullptr) return SystemError::AccessDenied;
  // A name may change its case.
  if (to.Exists() && (to.linkPath != from.linkPath || target.IsRoot())) return SystemError::AlreadyExists;
  if (!from.folder->status.writable || !to.folder->status.writable) return SystemError::AccessDenied;
  if (IsLocked(from.linkPath, kShareDelete)) return SystemError::SharingViolation;
  if (!from.IsFolder()) return SystemError::Success;
  if (HasOpenFileBelow(from.linkPath)) return SystemError::AccessDenied;
  const bool tooLong = Utf16Length(target.Text()) >= kMaximumDirectory;
  return tooLong ? SystemError::FilenameTooLong : SystemError::Success;
}

SystemError MachineFiles::Rename(const std::string& source, const std::string& target) {
  WindowsPath path;
  DriveTree::Place from;
  SystemError error = Locate(source, path, from);
  if (error != SystemError::Success) return error;
  DriveTree::Place to;
  error = Locate(target, path, to);
  if (error == SystemError::Success) error = CheckRename(from, path, to);
  if (error != SystemError::Success) return error;
  to.name = std::string(path.Name());
  const std::string newPath = to.folder->hostPath + "/" + to.name;
  if (newPath == from.linkPath) return SystemError::Success;
  error = host::Rename(from.linkPath, newPath);
  if (error != SystemError::Success) return error;
  tree_.Removed(from);
  tree_.Created(to);
  return SystemError::Success;
}

SystemError MachineFiles::Delete(const std::string& path) {
  DriveTree::Place place;
  SystemError error = LocateFile(path, place);
  if (error != SystemError::Success) return error;
  if (!place.Exists()) return SystemError::FileNotFound;
  if (!place.status.writable || !place.folder->status.writable) return SystemError::AccessDenied;
  if (IsLocked(place.hostPath, kShareDelete)) return SystemError::SharingViolation;
  error = host::RemoveFile(place.linkPath);
  if (error == SystemError::Success) tree_.Removed(place);
  return error;
}

SystemError MachineFiles::MakeDirectory(const std::string& path) {
  WindowsPath parsed;
  DriveTree::Place place;
  SystemError error = Locate(path, parsed, place);
  if (error != SystemError::Success) return error;
  if (place.Exists()) return SystemError::AlreadyExists;
  if (Utf16Length(parsed.Text()) >= kMaximumDirectory) return SystemError::FilenameTooLong;
  if (!place.folder->status.writable) return SystemError::AccessDenied;
  error = host::MakeFolder(place.hostPath);
  if (error == SystemError::Success) tree_.Created(place);
  return error;
}

SystemError MachineFiles::SetAttributes(const std::string& path, std::uint32_t attributes) {
  WindowsPath parsed;
  DriveTree::Place place;
  const SystemError error = Locate(path, parsed, place);
  if (error != SystemError::Success) return error;
  if (!place.Exists()) return SystemError::FileNotFound;
  if (!place.IsFile()) return SystemError::Success;  // a folder's attribute protects nothing on Windows
  return host::SetWritable(place.hostPath, (attributes & kAttributeReadOnly) == 0);
}

// ---- directories

std::string MachineFiles::Search(const std::string& name) {
  std::vector<std::string> candidates;
  if (name.find_first_of("\\/:") != std::string::npos) {
    candidates.push_back(name);
  } else {
    candidates.push_back(JoinPath(tree_.CurrentDirectory(), name));
    for (const std::string& folder : searchFolders_) candidates.push_back(JoinPath(folder, name));
  }
  for (const std::string& candidate : candidates) {
    WindowsPath path;
    DriveTree::Place place;
    if (Locate(candidate, path, place) != SystemError::Success || !place.Exists()) continue;
    return codePage_.Encode(path.Text()).size() < kSearchBuffer ? path.Text() : std::string();
  }
  return {};
}

SystemError MachineFiles::FullPath(const std::string& path, std::string& full) {
  if (path.empty() || path.find('\0') != std::string::npos) return SystemError::InvalidName;
  full = FullWindowsPath(path, tree_.CurrentDirectory());
  return SystemError::Success;
}

SystemError MachineFiles::ChangeDirectory(const std::string& path) {
  WindowsPath parsed;
  DriveTree::Place place;
  // Looks at no file's content, so that what the profile strings hold need not be stored.
  SystemError error = tree_.Parse(path, parsed);
  if (error == SystemError::Success) error = tree_.Locate(parsed, place);
  if (error != SystemError::Success) return error;
  if (!place.Exists()) return SystemError::FileNotFound;
  if (!place.IsFolder()) return SystemError::InvalidDirectory;
  tree_.SetCurrentDirectory(parsed.Text());
  return SystemError::Success;
}

}  // namespace bxvbwiz
