#include "project/CFiles.h"

#include "support/basFile.h"
#include "support/basStr.h"
#include "support/CallStack.h"

namespace bxvbwiz {

std::string CFiles::KeyOf(const std::string& fileName) const {
  return MakeCollectionKey(codePage_, GetPathFileName(fileName));
}

std::shared_ptr<CFile> CFiles::Add(const std::string& fileName) {
  const CallStackEntry entry("CFiles:Add");
  auto file = std::make_shared<CFile>();
  file->Key = KeyOf(fileName);
  file->FileName = fileName;
  Insert(file, file->Key);
  return file;
}

}  // namespace bxvbwiz
