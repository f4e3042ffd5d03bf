#include "project/FileRecord.h"

#include <algorithm>

#include "support/basFile.h"

namespace bxvbwiz {

void FileRecord::AddAsker(const Origin& asker) {
  const bool isKnown = std::any_of(askers.begin(), askers.end(), [&](const Origin& known) {
    return known.id == asker.id && known.values == asker.values;
  });
  if (asker.id != TextId{} && !isKnown) askers.push_back(asker);
}

Origin FileRecord::FirstAskerBeside(const Origin& other) const {
  const auto asker = std::find_if(askers.begin(), askers.end(), [&](const Origin& known) {
    return !other.values.empty() && known.values.front() == other.values.front();
  });
  return asker == askers.end() ? Origin() : *asker;
}

std::string FileRecord::SourceOf(const std::string& name) const {
  return FixPath(FileLinkPath) + GetPathFileName(name);
}

void RaiseKeyTaken(const StringTable& strings, TextId text, const Origin& first) {
  throw RuntimeError(kErrorDuplicateKey,
                     TextOf(strings, {text, {TextOf(strings, first), TextOf(strings, CurrentOrigin())}}));
}

}  // namespace bxvbwiz
