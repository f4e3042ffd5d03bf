#include "machine/MachineFiles.h"

#include <algorithm>
#include <utility>

#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kMaximumDirectory = 248;  // MAX_PATH less a name of the form 8.3
constexpr std::size_t kSearchBuffer = 260;

FoundFile Found(const std::string& name, const host::FileStatus& status) {
  const std::uint32_t kind = status.kind == host::FileKind::Folder ? kAttributeDirectory : kAttributeArchive;
  return {name, status.writable ? kind : kind | kAttributeReadOnly,
          static_cast<FileTime>(kUnixEpoch + status.modifiedNanoseconds / kNanosecondsPerUnit)};
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
  using Name = std::pair<const std::string, std::string>;  // in upper case, and as it is
  std::vector<const Name*> matches;
  for (const Name& name : folder.names) {
    if (MatchesPattern(name.first, pattern) && IsPossibleName(name.second)) matches.push_back(&name);
  }
  std::sort(matches.begin(), matches.end(), [](auto left, auto right) { return left->first < right->first; });
  for (const Name* match : matches) {
    DriveTree::Place place;
    if (!tree_.LocateName(folder, match->first, match->second, place)) {
      found.push_back({match->second, kAttributeArchive});  // a link that cannot be followed
    } else if (place.Exists()) {
      found.push_back(Found(match->second, place.status));
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
    found.push_back(Found(place.name, place.status));
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

// ---- names and attributes

SystemError MachineFiles::CheckRename(const DriveTree::Place& from, const WindowsPath& target,
                                      const DriveTree::Place& to) const {
  if (!from.Exists()) return SystemError::FileNotFound;
  if (from.folder == nullptr) return SystemError::AccessDenied;
  // A name may change its case.
  if (to.Exists() && (to.linkPath != from.linkPath || target.IsRoot())) return SystemError::AlreadyExists;
  if (!from.folder->status.writable || !to.folder->status.writable) return SystemError::AccessDenied;
  if (tree_.openFiles.IsLocked(from.linkPath, kShareDelete)) return SystemError::SharingViolation;
  if (!from.IsFolder()) return SystemError::Success;
  if (tree_.openFiles.HasFileBelow(from.linkPath)) return SystemError::AccessDenied;
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
  if (tree_.openFiles.IsLocked(place.hostPath, kShareDelete)) return SystemError::SharingViolation;
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
  // No file is read or written here, so the profile strings need not store what they hold.
  SystemError error = tree_.Parse(path, parsed);
  if (error == SystemError::Success) error = tree_.Locate(parsed, place);
  if (error != SystemError::Success) return error;
  if (!place.Exists()) return SystemError::FileNotFound;
  if (!place.IsFolder()) return SystemError::InvalidDirectory;
  tree_.SetCurrentDirectory(parsed.Text());
  return SystemError::Success;
}

}  // namespace bxvbwiz
