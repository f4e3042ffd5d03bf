#include "support/basParse.h"

#include "support/CallStack.h"
#include "text/Text.h"

namespace bxvbwiz {

std::int32_t FindItemPos(const std::optional<std::string>& list, std::string_view name, bool caseSensitive) {
  const CallStackEntry entry("FindItemPos");
  if (!list || name.empty()) return 0;
  // With the ";" in front, the first item matches like every other, and no name matches the end of a longer
  // one.
  std::string searched = ";" + *list;
  std::string item = ";" + std::string(name) + "=";
  if (!caseSensitive) {
    searched = UpperCase(searched);
    item = UpperCase(item);
  }
  const std::size_t hit = searched.find(item);
  if (hit == std::string::npos) return 0;
  return static_cast<std::int32_t>(CharacterCount(std::string_view(searched).substr(0, hit))) + 1;
}

std::optional<std::string> GetItem(const std::optional<std::string>& list, std::string_view name, bool& found,
                                   bool caseSensitive) {
  const CallStackEntry entry("GetItem");
  const std::int32_t position = FindItemPos(list, name, caseSensitive);
  found = position >= 1;
  if (!found) return std::nullopt;
  const std::size_t before = static_cast<std::size_t>(position) - 1 + CharacterCount(name) + 1;
  const std::size_t start = FirstCharacters(*list, before).size();
  const std::size_t end = list->find(';', start);
  if (end == start) return std::nullopt;
  return list->substr(start, end == std::string::npos ? end : end - start);
}

}  // namespace bxvbwiz
