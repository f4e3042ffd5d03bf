#include "project/FileRecord.h"

#include <algorithm>

namespace bxvbwiz {

void FileRecord::AddAsker(const Origin& asker) {
  const bool isKnown = std::any_of(askers.begin(), askers.end(), [&](const Origin& known) {
    return known.id == asker.id && known.values == asker.values;
  });
  if (asker.id != TextId{} && !isKnown) askers.push_back(asker);
}

}  // namespace bxvbwiz
