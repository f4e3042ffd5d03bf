#include "text/win32/WideText.h"

#include <windows.h>

namespace bxvbwiz {

std::wstring Widen(std::string_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), length);
  return wide;
}

std::string Narrow(std::wstring_view wide) {
  if (wide.empty()) return {};
  const int size = static_cast<int>(wide.size());
  const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), length, nullptr, nullptr);
  return text;
}

}  // namespace bxvbwiz
