#include "support/basMisc.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/Text.h"
#include "support/basFile.h"
#include "support/basLogging.h"

namespace bxvbwiz {
namespace {

constexpr char kCopyFileTree[] = "CopyFileTree";

using Listing = std::vector<FoundFile>;

// What stands in `folder` and is to be copied: neither "." and ".." nor any other name with a dot in front.
// Empty as well when the folder cannot be listed.
Listing ListFolder(FileSystem& files, const std::string& folder) {
  Listing found;
  if (files.Find(folder + "*.*", found) != SystemError::Success) return {};
  const auto isDotted = [](const FoundFile& entry) { return StartsWith(entry.name, "."); };
  found.erase(std::remove_if(found.begin(), found.end(), isDotted), found.end());
  return found;
}

// Shows the hourglass while it lives; it is taken away again when the wizard ends half-way, too.
class HourglassPointer {
 public:
  explicit HourglassPointer(User& user) : user_(user) { user_.SetPointer(Pointer::Hourglass); }
  ~HourglassPointer() { user_.SetPointer(Pointer::Default); }
  HourglassPointer(const HourglassPointer&) = delete;
  HourglassPointer& operator=(const HourglassPointer&) = delete;

 private:
  User& user_;
};

void CopyOneFile(FileSystem& files, const FoundFile& file, const std::string& source,
                 const std::string& target) {
  const std::string from = source + file.name;
  const std::string to = target + file.name;
  Reporting(kCopyFileTree, [&] { CheckSystem(files.Copy(from, to), from + " to " + to); });
  if ((file.attributes & kAttributeReadOnly) == 0) return;
  const std::uint32_t writable = file.attributes & ~kAttributeReadOnly;
  Reporting(kCopyFileTree,
            [&] { CheckSystem(files.SetAttributes(to, writable == 0 ? kAttributeNormal : writable), to); });
}

// Both paths end in a backslash. A folder is listed before its copy is made: were the target inside the
// source, the copy would otherwise find itself and never end.
void CopyListing(FileSystem& files, User& user, const Listing& listing, const std::string& source,
                 const std::string& target) {
  if (listing.empty()) return;
  constexpr int kFilesOfOneStep = 5;
  const HourglassPointer hourglass(user);
  int copied = 0;
  for (const FoundFile& entry : listing) {
    if ((entry.attributes & kAttributeDirectory) != 0) {
      const std::string folder = source + entry.name + "\\";
      const std::string copy = target + entry.name;
      const Listing inside = ListFolder(files, folder);
      Reporting(kCopyFileTree, [&] { CheckSystem(files.MakeDirectory(copy), copy); });
      const CallStackEntry nested(kCopyFileTree);
      CopyListing(files, user, inside, folder, copy + "\\");
    } else {
      CopyOneFile(files, entry, source, target);
      if (++copied == kFilesOfOneStep) user.AdvanceProgress();
    }
  }
}

}  // namespace

void CopyFileTree(FileSystem& files, User& user, std::string& source, std::string& target) {
  const CallStackEntry entry(kCopyFileTree);
  source = FixPath(source);
  target = FixPath(target);
  CopyListing(files, user, ListFolder(files, source), source, target);
}

void SetFileTimesToNow(FileSystem& files, Clock& clock, const std::string& path) {
  const FileHandle file = files.Open(path, kGenericWrite, kShareRead, kOpenExisting, kAttributeNormal);
  bool isSet = false;
  if (file != kInvalidFile) {
    const std::optional<FileTime> now = clock.SystemTime();
    isSet = now && files.SetTimes(file, *now);
  }
  if (!isSet) TellFailure("The times of the file " + path + " could not be set.");
  // A failed open gives a handle of all ones, which is not zero and has always been closed as well.
  if (file != 0) files.Close(file);
}

}  // namespace bxvbwiz
