#include "win32/Win32StringTable.h"

#include "text/win32/WideText.h"

namespace bxvbwiz {

std::string Win32StringTable::Text(TextId id) const {
  // With a size of 0 the call gives the text itself, in the mapped resource and without a NUL.
  const wchar_t* text = nullptr;
  const int length = LoadStringW(module_, NumberOf(id), reinterpret_cast<wchar_t*>(&text), 0);
  return length <= 0 ? std::string() : Narrow({text, static_cast<std::size_t>(length)});
}

}  // namespace bxvbwiz
