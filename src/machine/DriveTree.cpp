#include "machine/DriveTree.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::string_view kDrivePrefix = "/drive_";

bool IsSameFolder(const host::FileStatus& left, const host::FileStatus& right) {
  return right.kind == host::FileKind::Folder && left.inode == right.inode && left.device == right.device;
}

}  // namespace

// Empty for a share that no folder stands for.
std::string DriveTree::DriveFolder(std::string_view rootKey) const {
  const auto mapped = mapped_.find(rootKey);
  if (mapped != mapped_.end()) return mapped->second.folder;
  if (StartsWith(rootKey, "\\")) return {};
  return machineFolder_ + std::string(kDrivePrefix) + LowerCase(rootKey.substr(0, 1));
}

// The folder that no link below may lead out of.
const std::string& DriveTree::Cage(const std::string& hostPath) const {
  const std::string* cage = &machineFolder_;
  bool isFound = host::IsBelow(hostPath, machineFolder_);
  for (const auto& [key, drive] : mapped_) {
    if (!host::IsBelow(hostPath, drive.folder)) continue;
    if (!isFound || drive.folder.size() > cage->size()) cage = &drive.folder;
    isFound = true;
  }
  return *cage;
}

void DriveTree::MakeDrive(const WindowsPath& root) {
  const std::string folder = DriveFolder(root.RootKey());
  if (!folder.empty() && host::StatusOf(folder).kind == host::FileKind::Missing) host::MakeFolder(folder);
}

DriveTree::Folder& DriveTree::Remember(const std::string& hostPath, const host::FileStatus& status) {
  std::unique_ptr<Folder>& folder = folders_[hostPath];
  if (!folder) {
    folder = std::make_unique<Folder>();
    folder->hostPath = hostPath;
  }
  if (!IsSameFolder(folder->status, status) ||
      folder->status.modifiedNanoseconds != status.modifiedNanoseconds) {
    folder->listed = false;
  }
  folder->status = status;
  return *folder;
}

bool DriveTree::EnsureListed(Folder& folder) const {
  if (folder.listed) return true;
  // The time is taken before the names are read: a change during the reading shows as a newer time.
  folder.status = host::StatusOf(folder.hostPath);
  std::vector<std::string> names;
  if (!host::ListNames(folder.hostPath, names)) return false;
  std::sort(names.begin(), names.end());
  folder.names.clear();
  folder.hasTwins = false;
  folder.names.reserve(names.size());
  for (std::string& name : names) {
    std::string key = UpperCase(name);
    if (!folder.names.emplace(std::move(key), std::move(name)).second) folder.hasTwins = true;
  }
  folder.listed = true;
  return true;
}

std::string DriveTree::RealName(Folder& folder, std::string_view name, std::string_view nameKey) const {
  if (!EnsureListed(folder)) return std::string(name);
  const auto found = folder.names.find(std::string(nameKey));
  if (found == folder.names.end()) return std::string(name);
  if (folder.hasTwins && found->second != name) {
    const std::string exact = folder.hostPath + "/" + std::string(name);
    if (host::StatusOf(exact).kind != host::FileKind::Missing) return std::string(name);
  }
  return found->second;
}

bool DriveTree::FollowLink(Place& place) const {
  place.hostPath = host::RealPath(place.linkPath);
  if (place.hostPath.empty() || !host::IsBelow(place.hostPath, Cage(place.linkPath))) return false;
  place.status = host::StatusOf(place.hostPath);
  return place.Exists();
}

bool DriveTree::LocateName(Folder& folder, const std::string& nameKey, const std::string& name,
                           Place& place) const {
  place.folder = &folder;
  place.name = name;
  place.nameKey = nameKey;
  place.linkPath = folder.hostPath + "/" + name;
  place.hostPath = place.linkPath;
  place.status = host::StatusOf(place.linkPath);
  return place.status.kind != host::FileKind::Link || FollowLink(place);
}

SystemError DriveTree::OpenFolder(const WindowsPath& path, Folder*& folder) {
  const auto known = found_.find(path.Key());
  if (known != found_.end()) {
    const host::FileStatus status = host::StatusOf(known->second->hostPath);
    if (IsSameFolder(known->second->status, status)) {
      folder = &Remember(known->second->hostPath, status);
      return SystemError::Success;
    }
    Forget();  // it was moved or replaced, and perhaps others were too
  }
  Place place;
  const SystemError error = Locate(path, place);
  if (error != SystemError::Success) return error;
  if (!place.IsFolder()) return SystemError::PathNotFound;
  folder = &Remember(place.hostPath, place.status);
  found_[path.Key()] = folder;
  return SystemError::Success;
}

SystemError DriveTree::Locate(const WindowsPath& path, Place& place) {
  if (path.IsRoot()) {
    place = Place();
    place.linkPath = place.hostPath = DriveFolder(path.RootKey());
    place.status = host::StatusOf(place.hostPath);
    if (place.status.kind == host::FileKind::Link && !FollowLink(place)) return SystemError::PathNotFound;
    return place.IsFolder() ? SystemError::Success : SystemError::PathNotFound;
  }
  Folder* folder = nullptr;
  SystemError error = OpenFolder(path.Parent(), folder);
  if (error == SystemError::FileNotFound) error = SystemError::PathNotFound;
  if (error != SystemError::Success) return error;
  const std::string nameKey(path.NameKey());
  bool reached = LocateName(*folder, nameKey, RealName(*folder, path.Name(), nameKey), place);
  if (!place.Exists() && folder->names.count(nameKey) != 0) {
    // It was removed after the names were read, within one tick of the file system's clock.
    folder->listed = false;
    reached = LocateName(*folder, nameKey, RealName(*folder, path.Name(), nameKey), place);
  }
  // A name that was not seen, or whose file was not, in a folder that may not be read is not known to be
  // missing.
  const bool isDenied = !place.Exists() && (!folder->listed || folder->names.count(nameKey) != 0);
  return reached && !isDenied ? SystemError::Success : SystemError::AccessDenied;
}

SystemError DriveTree::CheckWritable(const Place& place) const {
  if (place.folder == nullptr || IsDeviceName(place.name)) return SystemError::AccessDenied;
  if (place.Exists() && (!place.IsFile() || !place.status.writable)) return SystemError::AccessDenied;
  return place.folder->status.writable ? SystemError::Success : SystemError::AccessDenied;
}

SystemError DriveTree::Replace(const Place& place, std::string_view bytes, host::ContentOptions options) {
  if (!options.permissions && place.Exists()) options.permissions = place.status.permissions;
  options.flush = place.Exists();
  const SystemError error = host::ReplaceContent(place.hostPath, bytes, options);
  if (error == SystemError::Success) Created(place);
  return error;
}

void DriveTree::Created(const Place& place) {
  Folder& folder = *place.folder;
  if (folder.listed) folder.names.emplace(place.nameKey, place.name);
  folder.status = host::StatusOf(folder.hostPath);
}

void DriveTree::Removed(const Place& place) {
  Folder& folder = *place.folder;
  if (folder.hasTwins) folder.listed = false;
  folder.names.erase(place.nameKey);
  folder.status = host::StatusOf(folder.hostPath);
  if (place.status.kind == host::FileKind::Folder) Forget();
}

void DriveTree::Forget() {
  found_.clear();
  for (auto& [path, folder] : folders_) folder->listed = false;
}

std::string DriveTree::WindowsPathOf(const std::string& hostPath) const {
  std::error_code error;
  std::filesystem::path full = std::filesystem::absolute(std::filesystem::u8path(hostPath), error);
  if (!error) full = std::filesystem::weakly_canonical(full, error);
  if (error) return {};
  std::string text = full.generic_u8string();
  while (text.size() > 1 && text.back() == '/') text.pop_back();
  std::string root;
  std::size_t folder = 0;  // the size of the path of the root's folder
  const std::string prefix = machineFolder_ + std::string(kDrivePrefix);
  if (StartsWith(text, prefix) && text.size() > prefix.size() && text[prefix.size()] >= 'a' &&
      text[prefix.size()] <= 'z') {
    folder = prefix.size() + 1;
    if (text.size() == folder || text[folder] == '/') root = UpperCase(text.substr(folder - 1, 1)) + ":";
  }
  for (const auto& [key, drive] : mapped_) {
    if (text != drive.folder && !host::IsBelow(text, drive.folder)) continue;
    if (!root.empty() && drive.folder.size() <= folder) continue;
    root = drive.root;
    folder = drive.folder == "/" ? 0 : drive.folder.size();
  }
  std::string rest = text.substr(std::min(folder, text.size()));
  if (root.empty() || rest.find_first_of("\\:") != std::string::npos) return {};
  if (rest.empty()) rest = "/";
  std::replace(rest.begin(), rest.end(), '/', '\\');
  return root + rest;
}

std::string DriveTree::HostPathOf(const std::string& windowsPath) {
  WindowsPath path;
  if (Parse(windowsPath, path) != SystemError::Success) return {};
  std::string missing;
  for (;;) {
    Place place;
    const SystemError error = Locate(path, place);
    if (error == SystemError::Success) return place.hostPath + missing;
    if (error != SystemError::PathNotFound || path.IsRoot()) return {};
    missing.insert(0, path.Name()).insert(0, "/");
    path = path.Parent();
  }
}

}  // namespace bxvbwiz
