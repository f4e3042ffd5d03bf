#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/DriveTree.h"
#include "machine/MachineProfileStrings.h"
#include "platform/Platform.h"

namespace bxvbwiz {

// The files and folders of a machine folder's drives. A file is read-only when its owner may not write it,
// for the superuser too; no other attribute can be set. Whole files are written atomically. Names that
// Windows cannot have are not listed. Links that lead nowhere or out of the machine folder are listed as
// files that cannot be opened.
class MachineFiles : public FileSystem {
 public:
  // Search looks in the current directory and then in `searchFolders`, in this order.
  MachineFiles(DriveTree& tree, MachineProfileStrings& profiles, const CodePage& codePage,
               std::vector<std::string> searchFolders);

  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override;
  FileHandle Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                  std::uint32_t disposition, std::uint32_t attributes) override;
  bool Close(FileHandle file) override;
  bool SetTimes(FileHandle file, FileTime time) override;
  SystemError Read(const std::string& path, std::string& bytes) override;
  SystemError Write(const std::string& path, std::string_view bytes, WriteMode mode) override;
  // Reads the file into memory, so that a file that shrinks later does no harm.
  SystemError Map(const std::string& path, std::unique_ptr<FileView>& view) override;
  SystemError Copy(const std::string& source, const std::string& target) override;
  void CopyFiles(const std::string& source, const std::string& target, const std::vector<std::string>& names,
                 const std::function<void(std::size_t, SystemError)>& done) override;
  SystemError Rename(const std::string& source, const std::string& target) override;
  SystemError Delete(const std::string& path) override;
  SystemError MakeDirectory(const std::string& path) override;
  SystemError SetAttributes(const std::string& path, std::uint32_t attributes) override;
  std::string Search(const std::string& name) override;
  SystemError FullPath(const std::string& path, std::string& full) override;
  std::string CurrentDirectory() override { return tree_.CurrentDirectory(); }
  SystemError ChangeDirectory(const std::string& path) override;

 private:
  SystemError Locate(const std::string& path, WindowsPath& parsed, DriveTree::Place& place);
  SystemError LocateFile(const std::string& path, DriveTree::Place& place);
  SystemError CheckRename(const DriveTree::Place& from, const WindowsPath& target,
                          const DriveTree::Place& to) const;
  void FindByPattern(DriveTree::Folder& folder, bool isRoot, std::string_view pattern,
                     std::vector<FoundFile>& found);

  DriveTree& tree_;
  MachineProfileStrings& profiles_;
  const CodePage& codePage_;
  std::vector<std::string> searchFolders_;
};

}  // namespace bxvbwiz
