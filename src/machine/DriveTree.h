#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "machine/host/Host.h"
#include "machine/MachineIni.h"
#include "machine/OpenFiles.h"
#include "machine/WindowsPath.h"
#include "platform/SystemError.h"

namespace bxvbwiz {

// The drives of a machine folder ("drive_c", "drive_d", ..., and the folders of this computer that stand for
// drives and shares) and the current directory. It finds a Windows path without regard to case, and never
// outside the machine folder or the folder that stands for its drive. The names in a folder are remembered
// until the folder's time of modification changes. Code that creates or removes a file calls Created or
// Removed, so that the folder need not be read again.
class DriveTree {
 public:
  // A folder of a drive.
  struct Folder {
    std::string hostPath;
    host::FileStatus status;
    bool listed = false;                                 // `names` is complete
    bool hasTwins = false;                               // some names differ in case only
    std::unordered_map<std::string, std::string> names;  // by name in upper case
  };

  // Where a path lies.
  struct Place {
    Folder* folder = nullptr;  // the folder that holds it; null for a drive's root
    std::string name;          // as spelled on the disk, or as given when there is no such file
    std::string nameKey;
    std::string linkPath;     // the name in its folder, a link not followed
    std::string hostPath;     // the same with a link followed
    host::FileStatus status;  // of hostPath
    bool Exists() const { return status.kind != host::FileKind::Missing; }
    bool IsFolder() const { return status.kind == host::FileKind::Folder; }
    bool IsFile() const { return status.kind == host::FileKind::File; }
  };

  using Drives = std::map<std::string, MappedDrive, std::less<>>;  // by root in upper case

  // `machineFolder` and the folders of `mapped` are absolute paths of this computer without links.
  DriveTree(std::string machineFolder, Drives mapped)
      : machineFolder_(std::move(machineFolder)), mapped_(std::move(mapped)) {}
  DriveTree(const DriveTree&) = delete;
  DriveTree& operator=(const DriveTree&) = delete;

  // The current directory, without "\" at its end unless it is a root.
  const std::string& CurrentDirectory() const { return current_; }
  void SetCurrentDirectory(std::string path) { current_ = std::move(path); }

  SystemError Parse(std::string_view path, WindowsPath& parsed,
                    WindowsPath::Wildcards wildcards = WindowsPath::Wildcards::Refused) const {
    return WindowsPath::Parse(path, current_, wildcards, parsed);
  }

  // Finds a path. Success also when only its last name is missing; PathNotFound when its folder is missing;
  // AccessDenied for a link that leads nowhere or out of the folder that holds the drive.
  SystemError Locate(const WindowsPath& path, Place& place);
  // Finds a folder, to list it. Fails like Locate, and with PathNotFound for a file.
  SystemError OpenFolder(const WindowsPath& path, Folder*& folder);
  // The place of a name, spelled as on the disk, in a folder that was just opened. False for a link that
  // leads nowhere or out of the folder that holds the drive.
  bool LocateName(Folder& folder, const std::string& nameKey, const std::string& name, Place& place) const;
  // Reads the names in a folder unless they are known. False when it cannot be read.
  bool EnsureListed(Folder& folder) const;

  // Success when a file may be created or replaced at `place`; AccessDenied for a folder, a device or a
  // read-only file, and in a folder that may not be written to.
  SystemError CheckWritable(const Place& place) const;
  // Makes `bytes` the whole content of the file, atomically. A new file gets default permissions and an
  // existing one keeps its own, unless `options` says otherwise.
  SystemError Replace(const Place& place, std::string_view bytes, host::ContentOptions options = {});

  // To be called after creating, replacing or removing what `place` names.
  void Created(const Place& place);
  void Removed(const Place& place);
  // Forgets all names, because another program may have changed the folders.
  void Forget();

  // Makes the folder of a drive of the machine folder that is missing.
  void MakeDrive(const WindowsPath& root);
  // Lets a folder, an absolute path without links, stand for a drive or a share.
  void Map(const WindowsPath& root, MappedDrive drive) { mapped_[root.Key()] = std::move(drive); }

  // The Windows path of a path of this computer, in the drive whose folder is the longest; empty when it lies
  // outside the drives.
  std::string WindowsPathOf(const std::string& hostPath) const;
  // Where a Windows path lies, or would lie if it existed; empty when it names no drive of the machine.
  std::string HostPathOf(const std::string& windowsPath);
  const std::string& MachineFolder() const { return machineFolder_; }

  OpenFiles openFiles;

 private:
  std::string DriveFolder(std::string_view rootKey) const;
  const std::string& Cage(const std::string& hostPath) const;
  Folder& Remember(const std::string& hostPath, const host::FileStatus& status);
  bool FollowLink(Place& place) const;
  std::string RealName(Folder& folder, std::string_view name, std::string_view nameKey) const;
  void LookUp(Folder& folder, const WindowsPath& path, Place& place) const;

  std::string machineFolder_;
  Drives mapped_;
  std::string current_ = "C:\\";
  std::unordered_map<std::string, std::unique_ptr<Folder>> folders_;  // by host path
  std::map<std::string, Folder*, std::less<>> found_;                 // by Windows path in upper case
};

}  // namespace bxvbwiz
