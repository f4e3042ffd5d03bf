#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "project/FileRecord.h"
#include "support/KeyedCollection.h"

namespace bxvbwiz {

// One file that the setup installs.
struct CFile : FileRecord {
  CFile() : FileRecord(RecordKind::File) {}

  std::string Source() const { return SourceOf(FileName); }

  std::string FileName;  // as given when it was added: a name or a path
  std::string Key;
  // Other records of the same file that give other facts: the first record decides.
  std::vector<FileRecord> rivals;
};

// Files keyed by their name without the folder: two of the same name cannot both be in it.
class CFiles : public KeyedCollection<CFile> {
 public:
  explicit CFiles(const CodePage& codePage) : codePage_(codePage) {}

  // Adds a record for a file; its facts stay empty. Raises error 457 when the key is taken.
  std::shared_ptr<CFile> Add(const std::string& fileName);
  // The key of a file name or path.
  std::string KeyOf(const std::string& fileName) const;

 private:
  const CodePage& codePage_;
};

}  // namespace bxvbwiz
