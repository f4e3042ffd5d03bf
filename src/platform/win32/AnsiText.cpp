#include "platform/win32/AnsiText.h"

#include <windows.h>

namespace bxvbwiz {

namespace {

std::wstring Widen(std::string_view bytes, UINT codePage) {
  if (bytes.empty()) return {};
  const int size = static_cast<int>(bytes.size());
  std::wstring wide(
      static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(codePage, 0, bytes.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string Narrow(const std::wstring& wide, UINT codePage) {
  if (wide.empty()) return {};
  const int size = static_cast<int>(wide.size());
  std::string bytes(static_cast<std::size_t>(
                        WideCharToMultiByte(codePage, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)),
                    '\0');
  WideCharToMultiByte(codePage, 0, wide.data(), size, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                      nullptr);
  return bytes;
}

bool IsAscii(std::string_view text) {
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

}  // namespace

std::string FromAnsi(std::string_view bytes) {
  return IsAscii(bytes) ? std::string(bytes) : Narrow(Widen(bytes, CP_ACP), CP_UTF8);
}

std::string ToAnsi(std::string_view text) {
  return IsAscii(text) ? std::string(text) : Narrow(Widen(text, CP_UTF8), CP_ACP);
}

}  // namespace bxvbwiz
