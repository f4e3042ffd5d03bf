#pragma once

#include <string>

#include "project/FileRecord.h"

namespace bxvbwiz {

// Decides the installation facts of every file that the readers of a project find.
class FileGroupBuilder {
 public:
  virtual ~FileGroupBuilder() = default;

  // Fills the facts of `target` for the file `filePath` (a name or a path). `destination` is a macro or a
  // folder, empty when the .dep file or the search decides; `depFile` is the .dep file that describes the
  // file, or empty. With `existing` its facts are copied and nothing is searched. A missing product key ends
  // the wizard.
  virtual void GetFileGroupInfo(const std::string& destination, const std::string& filePath,
                                const std::string& depFile, const FileRecord* existing,
                                FileRecord& target) = 0;
};

}  // namespace bxvbwiz
