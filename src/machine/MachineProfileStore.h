#pragma once

#include <string>
#include <string_view>

#include "machine/DriveTree.h"
#include "machine/MachineProfileStrings.h"

namespace bxvbwiz {

// The files of a machine folder's profile strings, which lie on its drives.
class MachineProfileStore : public ProfileStore {
 public:
  explicit MachineProfileStore(DriveTree& tree) : tree_(tree) {}

  std::string Key(const std::string& path) override;
  SystemError Load(const std::string& path, std::string& bytes, FileStamp& stamp) override;
  bool Changed(const std::string& path, const FileStamp& stamp) override;
  SystemError CheckWritable(const std::string& path) override;
  SystemError Replace(const std::string& path, std::string_view bytes, FileStamp& stamp) override;

 private:
  SystemError Locate(const std::string& path, DriveTree::Place& place);
  // Like Locate, but also fails when the file may not be written.
  SystemError LocateToWrite(const std::string& path, DriveTree::Place& place);

  DriveTree& tree_;
};

}  // namespace bxvbwiz
