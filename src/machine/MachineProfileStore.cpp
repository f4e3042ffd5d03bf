#include "machine/MachineProfileStore.h"

#include "machine/FileBytes.h"

namespace bxvbwiz {
namespace {

FileStamp StampOf(const host::FileStatus& status) {
  FileStamp stamp;
  stamp.size = status.size;
  stamp.modifiedNanoseconds = status.modifiedNanoseconds;
  stamp.inode = status.inode;
  stamp.device = status.device;
  return stamp;
}

}  // namespace

SystemError MachineProfileStore::Locate(const std::string& path, DriveTree::Place& place) {
  WindowsPath parsed;
  const SystemError error = tree_.Parse(path, parsed);
  if (error != SystemError::Success) return error;
  if (parsed.EndsWithBackslash()) return SystemError::InvalidName;
  return tree_.Locate(parsed, place);
}

std::string MachineProfileStore::Key(const std::string& path) {
  WindowsPath parsed;
  return tree_.Parse(path, parsed) == SystemError::Success ? parsed.Key() : std::string();
}

SystemError MachineProfileStore::Load(const std::string& path, std::string& bytes, FileStamp& stamp) {
  DriveTree::Place place;
  SystemError error = Locate(path, place);
  if (error != SystemError::Success) return error;
  if (!place.Exists()) return SystemError::FileNotFound;
  host::FileStatus status;
  error = ReadWholeFile(place.hostPath, bytes, &status);
  stamp = StampOf(status);
  return error;
}

bool MachineProfileStore::Changed(const std::string& path, const FileStamp& stamp) {
  DriveTree::Place place;
  if (Locate(path, place) != SystemError::Success || !place.IsFile()) return true;
  return !(StampOf(place.status) == stamp);
}

SystemError MachineProfileStore::LocateToWrite(const std::string& path, DriveTree::Place& place) {
  SystemError error = Locate(path, place);
  if (error == SystemError::Success) error = tree_.CheckWritable(place);
  const bool locked = error == SystemError::Success && tree_.openFiles.IsLocked(place.hostPath, kShareWrite);
  return locked ? SystemError::SharingViolation : error;
}

SystemError MachineProfileStore::CheckWritable(const std::string& path) {
  DriveTree::Place place;
  return LocateToWrite(path, place);
}

SystemError MachineProfileStore::Replace(const std::string& path, std::string_view bytes, FileStamp& stamp) {
  DriveTree::Place place;
  SystemError error = LocateToWrite(path, place);
  if (error == SystemError::Success) error = tree_.Replace(place, bytes);
  if (error == SystemError::Success) stamp = StampOf(host::StatusOf(place.hostPath));
  return error;
}

}  // namespace bxvbwiz
