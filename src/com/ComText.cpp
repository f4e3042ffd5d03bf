#include "com/ComText.h"

#include <new>

#include "text/win32/WideText.h"

namespace bxvbwiz {

std::string FromBstr(BSTR text) {
  return Narrow({text == nullptr ? L"" : text, SysStringLen(text)});
}

BSTR ToBstr(const std::string& text) {
  const std::wstring wide = Widen(text);
  BSTR result = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (result == nullptr) throw std::bad_alloc();
  return result;
}

}  // namespace bxvbwiz
