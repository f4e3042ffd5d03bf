#include "win32/AnsiText.h"

#include <windows.h>

#include "text/Utf16Text.h"
#include "text/win32/WideText.h"

namespace bxvbwiz {

std::string FromAnsi(std::string_view bytes) {
  return IsAscii(bytes) ? std::string(bytes) : FromCodePage(CP_ACP, bytes);
}

std::string FromCodePage(unsigned number, std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(number, 0, bytes.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(number, 0, bytes.data(), size, wide.data(), length);
  return Narrow(wide);
}

std::string ToAnsi(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  const std::wstring wide = Widen(text);
  const int size = static_cast<int>(wide.size());
  const int length = WideCharToMultiByte(CP_ACP, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), size, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

}  // namespace bxvbwiz
