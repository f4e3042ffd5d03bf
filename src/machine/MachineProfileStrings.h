#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "machine/ProfileEngine.h"
#include "platform/Platform.h"

namespace bxvbwiz {

// Distinguishes one state of a file from another without reading it.
struct FileStamp {
  std::uint64_t size = 0;
  std::int64_t modifiedNanoseconds = 0;  // since 1970
  std::uint64_t inode = 0;
  std::uint64_t device = 0;
};

inline bool operator==(const FileStamp& left, const FileStamp& right) {
  return left.size == right.size && left.modifiedNanoseconds == right.modifiedNanoseconds &&
         left.inode == right.inode && left.device == right.device;
}

// What the profile strings need of the disk. Paths are Windows paths in UTF-8, as FileSystem takes them. An
// implementation must not call back into the profile strings.
class ProfileStore {
 public:
  virtual ~ProfileStore() = default;

  // The same text for every spelling of one path: full, case folded, "\" between the names and none at the
  // end. Empty when no file can have the path. Must not look at the disk: every call of the profile strings
  // asks for it.
  virtual std::string Key(const std::string& path) = 0;
  // The whole file and its stamp, taken before the bytes are read. FileNotFound or PathNotFound when there is
  // no such file, any other error when it cannot be read (a folder, no permission).
  virtual SystemError Load(const std::string& path, std::string& bytes, FileStamp& stamp) = 0;
  // True when the file has changed since `stamp` was taken, or is missing.
  virtual bool Changed(const std::string& path, const FileStamp& stamp) = 0;
  // Success when Replace should work: the folder exists and can be written to, and the file is missing or a
  // regular file that is not read-only. Changes nothing on the disk.
  virtual SystemError CheckWritable(const std::string& path) = 0;
  // Makes `bytes` the content of the file, creating it when it is missing: a temporary file in the same
  // folder is flushed and renamed over it, so that a reader sees the old content or the new. The file keeps
  // its spelling and permissions. Gives the new stamp; a failure leaves no trace.
  virtual SystemError Replace(const std::string& path, std::string_view bytes, FileStamp& stamp) = 0;
};

// The profile strings of a machine folder. A file that was read or written is held in memory; Flush, StoreAll
// and BeforeFileAccess store what was changed. A file that another program has changed is read again, and our
// own changes that are not stored yet are made on top of it.
class MachineProfileStrings : public ProfileStrings {
 public:
  // `windowsFolder` is where file names without a path are looked for.
  MachineProfileStrings(const CodePage& codePage, ProfileStore& store, std::string windowsFolder);

  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string& file) override;
  bool WriteString(ProfileText section, ProfileText key, ProfileText value, const std::string& file) override;
  bool WriteSection(ProfileText section, ProfileText entries, const std::string& file) override;
  std::vector<std::string> Unreadable() override;
  // What cannot be stored is lost, like a failed write on Windows. Each file is given once.
  std::vector<std::string> Flush() override;

  // To be called before anything else reads, writes, lists, renames or deletes `path`, which is a file or a
  // folder with all the files below it. Stores what was changed there; what the access changes is noticed by
  // the stamp.
  void BeforeFileAccess(const std::string& path);
  // To be called before a process starts. The next Flush gives the files that cannot be stored.
  void StoreAll();

 private:
  // One change that is not on the disk yet, in bytes of the code page.
  struct Edit {
    enum class Kind { SetValue, RemoveKey, RemoveSection, SetSection } kind;
    std::string section;
    std::string key;
    std::string text;
  };

  struct File {
    std::string path;
    ProfileEngine engine;
    bool onDisk = false;
    FileStamp stamp;
    std::vector<Edit> unsaved;
  };

  using Files = std::map<std::string, File>;

  enum class Use { Read, Write };
  std::string FullPath(const std::string& file) const;
  SystemError Open(const std::string& file, Use use, Files::iterator& found);
  bool Apply(const std::string& file, Edit edit);
  static bool Make(ProfileEngine& engine, const Edit& edit);
  SystemError Refresh(File& file);
  bool Store(File& file);
  std::string CutList(const std::vector<std::string>& names, std::size_t size) const;
  std::string Cut(std::string_view bytes, std::size_t limit) const;

  const CodePage& codePage_;
  ProfileStore& store_;
  std::string windowsFolder_;
  Files files_;                       // by ProfileStore::Key
  std::set<std::string> failed_;      // paths that could not be stored since the last Flush
  std::set<std::string> unreadable_;  // paths that could not be read since the last Unreadable
};

}  // namespace bxvbwiz
