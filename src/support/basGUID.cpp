#include "support/basGUID.h"

#include <cstddef>

#include "support/basLogging.h"
#include "support/Findings.h"

namespace bxvbwiz {

std::string CreateGUID(Guids& guids, const std::string& place, bool stripBraces) {
  const CallStackEntry entry("CreateGUID");
  const std::optional<GuidBytes> guid = guids.Create(place);
  if (!guid) {
    AddFinding(FindingId::NoIdentifier);
    return {};
  }
  return GuidText(*guid, stripBraces);
}

std::string GuidText(const GuidBytes& guid, bool stripBraces) {
  // The first three parts of a GUID are numbers, which lie in memory with the low byte first.
  constexpr std::size_t kOrder[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const std::size_t index : kOrder) {
    text += kDigits[guid[index] >> 4];
    text += kDigits[guid[index] & 15];
  }
  constexpr std::size_t kHyphens[] = {20, 16, 12, 8};
  for (const std::size_t hyphen : kHyphens) text.insert(hyphen, 1, '-');
  return stripBraces ? text : "{" + text + "}";
}

}  // namespace bxvbwiz
