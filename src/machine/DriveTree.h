#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "machine/host/Host.h"
#include "machine/OpenFiles.h"
#include "machine/WindowsPath.h"
#include "platform/SystemError.h"

namespace bxvbwiz {

// The drives of a machine folder ("drive_c", "drive_d", ...) and the current directory. It finds a Windows
// path without regard to case, and never outside the machine folder. The names in a folder are remembered as
// long as the folder's time of modification stays; whoever creates or removes a file says so, and they stay
// right without another look.
class DriveTree {
 public:
  // A folder of a drive.
  struct Folder {
    std::string hostPath;
    host::FileStatus status;
    bool listed = false;                                 // `names` holds all that there is
    bool hasTwins = false;                               // names that differ in case only
    std::unordered_map<std::string, std::string> names;  // by name in upper case
  };

  // Where a path lies.
  struct Place {
    Folder* folder = nullptr;  // the folder that holds it; null for a drive's root
    std::string name;          // as it is spelled on the disk, or as given when there is no such file
    std::string nameKey;
    std::string linkPath;     // of the name itself in its folder
    std::string hostPath;     // the same, or where a link leads
    host::FileStatus status;  // of hostPath
    bool Exists() const { return status.kind != host::FileKind::Missing; }
    bool IsFolder() const { return status.kind == host::FileKind::Folder; }
    bool IsFile() const { return status.kind == host::FileKind::File; }
  };

  // `machineFolder` is an absolute path of this computer without links.
  explicit DriveTree(std::string machineFolder) : machineFolder_(std::move(machineFolder)) {}
  DriveTree(const DriveTree&) = delete;
  DriveTree& operator=(const DriveTree&) = delete;

  // The current directory, without "\" at its end (but for a root).
  const std::string& CurrentDirectory() const { return current_; }
  void SetCurrentDirectory(std::string path) { current_ = std::move(path); }

  SystemError Parse(std::string_view path, WindowsPath& parsed,
                    WindowsPath::Wildcards wildcards = WindowsPath::Wildcards::Refused) const {
    return WindowsPath::Parse(path, current_, wildcards, parsed);
  }

  // Finds a path; Success too when only its last name is missing. PathNotFound when its folder is missing,
  // AccessDenied for a link that leads nowhere or out of the machine folder.
  SystemError Locate(const WindowsPath& path, Place& place);
  // Opens a folder to list it.
  SystemError OpenFolder(const WindowsPath& path, Folder*& folder);
  // The place of a name (as it is on the disk) in a folder that was just opened; false when it cannot be
  // reached.
  bool LocateName(Folder& folder, const std::string& nameKey, const std::string& name, Place& place) const;
  // The names in a folder, read when they have to be. False when it cannot be read.
  bool EnsureListed(Folder& folder) const;

  // Whether a file may be created or replaced at `place`: AccessDenied for a folder, a device, a read-only
  // file and in a folder without the permission to write.
  SystemError CheckWritable(const Place& place) const;
  // Makes `bytes` the whole content of the file, atomically. A new file has default permissions, an existing
  // one keeps its own, unless `options` says otherwise.
  SystemError Replace(const Place& place, std::string_view bytes, host::ContentOptions options = {});

  // To be called after the caller has created, replaced or removed what `place` names.
  void Created(const Place& place);
  void Removed(const Place& place);
  // Forgets everything: somebody else has been at work.
  void Forget();

  // The Windows path of a path of this computer; empty when it lies outside the drives.
  std::string WindowsPathOf(const std::string& hostPath) const;
  // Where a Windows path lies, as far as it exists, and would lie beyond that; empty when it names no drive.
  std::string HostPathOf(const std::string& windowsPath);
  const std::string& MachineFolder() const { return machineFolder_; }

  OpenFiles openFiles;

 private:
  std::string DriveFolder(char drive) const;
  bool IsInside(const std::string& hostPath) const;
  Folder& Remember(const std::string& hostPath, const host::FileStatus& status);
  bool FollowLink(Place& place) const;
  std::string RealName(Folder& folder, std::string_view name, std::string_view nameKey) const;
  void LookUp(Folder& folder, const WindowsPath& path, Place& place) const;

  std::string machineFolder_;
  std::string current_ = "C:\\";
  std::unordered_map<std::string, std::unique_ptr<Folder>> folders_;  // by host path
  std::map<std::string, Folder*, std::less<>> found_;                 // by Windows path in upper case
};

}  // namespace bxvbwiz
