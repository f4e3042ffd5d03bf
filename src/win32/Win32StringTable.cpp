#include "win32/Win32StringTable.h"

#include "text/win32/WideText.h"

namespace bxvbwiz {

std::string Win32StringTable::Text(TextId id) const {
  // As LoadString, which is in user32: a resource holds 16 texts, each after its length.
  const unsigned number = NumberOf(id);
  HRSRC const block = FindResourceW(module_, MAKEINTRESOURCEW(number / 16 + 1), RT_STRING);
  if (block == nullptr) return {};
  const auto* text = static_cast<const wchar_t*>(LockResource(LoadResource(module_, block)));
  for (unsigned before = number % 16; before > 0; --before) text += 1 + *text;
  return Narrow({text + 1, *text});
}

}  // namespace bxvbwiz
