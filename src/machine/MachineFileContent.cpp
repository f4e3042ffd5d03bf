#include <limits>
#include <utility>

#include "machine/FileBytes.h"
#include "machine/MachineFiles.h"
#include "text/Text.h"

// Opening, reading, writing and copying of files.
namespace bxvbwiz {
FileHandle MachineFiles::Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                              std::uint32_t disposition, std::uint32_t /*attributes*/) {
  DriveTree::Place place;
  if (disposition != kOpenExisting || LocateFile(path, place) != SystemError::Success || !place.IsFile()) {
    return kInvalidFile;
  }
  if ((access & kGenericWrite) != 0 && !place.status.writable) return kInvalidFile;
  return tree_.openFiles.Open(place.hostPath, access, share);
}

bool MachineFiles::Close(FileHandle file) {
  return tree_.openFiles.Close(file);
}

bool MachineFiles::SetTimes(FileHandle file, FileTime time) {
  const OpenFiles::OpenFile* const open = tree_.openFiles.Find(file);
  if (open == nullptr || (open->access & kGenericWrite) == 0) return false;
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  if (time > static_cast<FileTime>(kMost)) return false;
  const std::int64_t units = static_cast<std::int64_t>(time) - kUnixEpoch;
  if (units > kMost / kNanosecondsPerUnit || units < -kMost / kNanosecondsPerUnit) return false;
  return host::SetModified(open->hostPath, units * kNanosecondsPerUnit) == SystemError::Success;
}

SystemError MachineFiles::Read(const std::string& path, std::string& bytes) {
  DriveTree::Place place;
  const SystemError error = LocateFile(path, place);
  if (error != SystemError::Success) return error;
  if (!place.Exists()) return SystemError::FileNotFound;
  if (tree_.openFiles.IsLocked(place.hostPath, kShareRead)) return SystemError::SharingViolation;
  return ReadWholeFile(place.hostPath, bytes);
}

SystemError MachineFiles::Map(const std::string& path, std::unique_ptr<FileView>& view) {
  DriveTree::Place place;
  const SystemError error = LocateFile(path, place);
  if (error != SystemError::Success) return error;
  if (!place.Exists()) return SystemError::FileNotFound;
  if (tree_.openFiles.IsLocked(place.hostPath, kShareRead)) return SystemError::SharingViolation;
  return ReadWholeFile(place.hostPath, view);
}

SystemError MachineFiles::Write(const std::string& path, std::string_view bytes, WriteMode mode) {
  DriveTree::Place place;
  SystemError error = LocateFile(path, place);
  if (error == SystemError::Success) error = tree_.CheckWritable(place);
  if (error != SystemError::Success) return error;
  if (tree_.openFiles.IsLocked(place.hostPath, kShareWrite)) return SystemError::SharingViolation;
  // A new file appears with its first bytes or not at all, even if this process is killed.
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
  if (from.hostPath == to.hostPath || tree_.openFiles.IsLocked(from.hostPath, kShareRead) ||
      tree_.openFiles.IsLocked(to.hostPath, kShareWrite)) {
    return SystemError::SharingViolation;
  }
  std::unique_ptr<FileView> view;
  error = ReadWholeFile(from.hostPath, view);
  if (error != SystemError::Success) return error;
  host::ContentOptions options;
  options.permissions = from.status.permissions;
  options.modifiedNanoseconds = from.status.modifiedNanoseconds;
  return tree_.Replace(to, view->Bytes(), options);
}

// Most files of a folder are small and new in the target: for them the two folders are checked only once. Any
// other file is copied by Copy, which also gives its error.
void MachineFiles::CopyFiles(const std::string& source, const std::string& target,
                             const std::vector<std::string>& names,
                             const std::function<void(std::size_t, SystemError)>& done) {
  WindowsPath from;
  WindowsPath to;
  DriveTree::Folder* fromFolder = nullptr;
  DriveTree::Folder* toFolder = nullptr;
  profiles_.BeforeFileAccess(source);
  profiles_.BeforeFileAccess(target);
  const bool areUsual = tree_.Parse(source, from) == SystemError::Success &&
                        tree_.Parse(target, to) == SystemError::Success &&
                        tree_.OpenFolder(from, fromFolder) == SystemError::Success &&
                        tree_.OpenFolder(to, toFolder) == SystemError::Success &&
                        tree_.EnsureListed(*toFolder) && toFolder->status.writable;
  if (!areUsual) return FileSystem::CopyFiles(source, target, names, done);
  host::FolderCopy folders(fromFolder->hostPath, toFolder->hostPath);
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string& name = names[i];
    std::string key = UpperCase(name);
    const bool isUsualFile = toFolder->names.count(key) == 0 && from.CanHold(name) && to.CanHold(name) &&
                             tree_.openFiles.IsEmpty();
    if (isUsualFile && folders.CopyNew(name, toFolder->status)) {
      toFolder->names.emplace(std::move(key), name);
      done(i, SystemError::Success);
    } else {
      done(i, Copy(source + name, target + name));
    }
  }
}

}  // namespace bxvbwiz
