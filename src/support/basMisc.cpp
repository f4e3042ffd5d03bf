#include "support/basMisc.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/Findings.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr char kCopyFileTree[] = "CopyFileTree";
// Each folder with as many files moves the progress bar, once.
constexpr int kFilesOfOneStep = 5;

using Listing = std::vector<FoundFile>;

// The entries of `folder` that are to be copied: all whose name does not begin with a dot. Empty also when
// the folder cannot be listed.
Listing ListFolder(FileSystem& files, const std::string& folder) {
  Listing found;
  if (files.Find(folder + "*.*", found) != SystemError::Success) return {};
  const auto isDotted = [](const FoundFile& entry) { return StartsWith(entry.name, "."); };
  found.erase(std::remove_if(found.begin(), found.end(), isDotted), found.end());
  return found;
}

// Shows the hourglass while it lives, and removes it also when the wizard ends half-way.
class HourglassPointer {
 public:
  explicit HourglassPointer(User& user) : user_(user) { user_.SetPointer(Pointer::Hourglass); }
  ~HourglassPointer() { user_.SetPointer(Pointer::Default); }
  HourglassPointer(const HourglassPointer&) = delete;
  HourglassPointer& operator=(const HourglassPointer&) = delete;

 private:
  User& user_;
};

bool IsFolder(const FoundFile& entry) {
  return (entry.attributes & kAttributeDirectory) != 0;
}

// A copy of the tree: both paths end in a backslash.
class TreeCopy {
 public:
  TreeCopy(FileSystem& files, User& user) : files_(files), user_(user) {}

  // A folder is listed before its copy is made. Otherwise, with the target inside the source, the copy would
  // find itself and never end.
  void Copy(const Listing& listing, const std::string& source, const std::string& target) {
    if (listing.empty()) return;
    const HourglassPointer hourglass(user_);
    int copied = 0;
    for (auto entry = listing.begin(); entry != listing.end();) {
      const auto folder = std::find_if(entry, listing.end(), IsFolder);
      CopyFiles({entry, folder}, source, target, copied);
      entry = folder;
      if (entry == listing.end()) return;
      CopyFolder(source + entry->name + "\\", target + entry->name);
      ++entry;
    }
  }

 private:
  void CopyFolder(const std::string& folder, const std::string& copy) {
    const Listing inside = ListFolder(files_, folder);
    RetryOrCancel(kCopyFileTree, [&] { CheckSystem(files_.MakeDirectory(copy), copy); });
    const CallStackEntry nested(kCopyFileTree);
    Copy(inside, folder, copy + "\\");
  }

  // `copied` counts the files of one folder.
  void CopyFiles(const Listing& listing, const std::string& source, const std::string& target, int& copied) {
    if (listing.empty()) return;
    std::vector<std::string> names;
    for (const FoundFile& file : listing) names.push_back(file.name);
    files_.CopyFiles(source, target, names, [&](std::size_t i, SystemError error) {
      if (error != SystemError::Success) CopyAgain(source + names[i], target + names[i], error);
      MakeWritable(target + names[i], listing[i].attributes);
      if (++copied == kFilesOfOneStep) user_.AdvanceProgress();
    });
  }

  // After a copy that failed: each Retry copies once more.
  void CopyAgain(const std::string& source, const std::string& target, SystemError error) {
    RetryOrCancel(kCopyFileTree, [&] {
      const SystemError now = std::exchange(error, SystemError::Success);
      CheckSystem(now != SystemError::Success ? now : files_.Copy(source, target), source + " to " + target);
    });
  }

  void MakeWritable(const std::string& copy, std::uint32_t attributes) {
    if ((attributes & kAttributeReadOnly) == 0) return;
    const std::uint32_t writable = attributes & ~kAttributeReadOnly;
    RetryOrCancel(kCopyFileTree, [&] {
      CheckSystem(files_.SetAttributes(copy, writable == 0 ? kAttributeNormal : writable), copy);
    });
  }

  FileSystem& files_;
  User& user_;
};

}  // namespace

void CopyFileTree(FileSystem& files, User& user, std::string& source, std::string& target) {
  const CallStackEntry entry(kCopyFileTree);
  source = FixPath(source);
  target = FixPath(target);
  TreeCopy(files, user).Copy(ListFolder(files, source), source, target);
}

int StepsOfCopy(FileSystem& files, const std::string& source) {
  int steps = 0;
  int copied = 0;
  for (const FoundFile& entry : ListFolder(files, source)) {
    if (IsFolder(entry)) {
      steps += StepsOfCopy(files, source + entry.name + "\\");
    } else if (++copied == kFilesOfOneStep) {
      ++steps;
    }
  }
  return steps;
}

void SetFileTimesToNow(FileSystem& files, Clock& clock, const std::string& path) {
  const FileHandle file = files.Open(path, kGenericWrite, kShareRead, kOpenExisting, kAttributeNormal);
  bool isSet = false;
  if (file != kInvalidFile) {
    const std::optional<FileTime> now = clock.SystemTime();
    isSet = now && files.SetTimes(file, *now);
  }
  if (!isSet) AddFinding(FindingId::FileTimesNotSet, {path});
  // A failed open gives a handle of all ones, which is not zero and is closed too.
  if (file != 0) files.Close(file);
}

}  // namespace bxvbwiz
