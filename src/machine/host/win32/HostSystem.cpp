#include <windows.h>
// after windows.h
#include <wincrypt.h>

#include "machine/host/Host.h"
#include "platform/FileSystem.h"

namespace bxvbwiz::host {
namespace {

// 0 unless exactly these bytes are a character.
char16_t Character(UINT codePage, std::array<char, 2> bytes, int count) {
  wchar_t units[2] = {};
  const int length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), count, units, 2);
  return length == 1 ? static_cast<char16_t>(units[0]) : u'\0';
}

}  // namespace

std::vector<char16_t> DoubleByteCharacters(int codePage) {
  const auto page = static_cast<UINT>(codePage);
  CPINFO facts;
  if (GetCPInfo(page, &facts) == FALSE || facts.MaxCharSize != 2) return {};
  std::vector<char16_t> characters(0x10000);
  for (unsigned lead = 0; lead < 0x100; ++lead) {
    if (IsDBCSLeadByteEx(page, static_cast<BYTE>(lead)) == FALSE) {
      characters[lead] = Character(page, {static_cast<char>(lead), 0}, 1);
      continue;
    }
    for (unsigned trail = 0x40; trail < 0xFF; ++trail) {
      characters[lead << 8 | trail] = Character(page, {static_cast<char>(lead), static_cast<char>(trail)}, 2);
    }
  }
  return characters;
}

bool IsLetterOrDigit(char32_t character) {
  if (character > 0xFFFF) return true;  // beyond the first plane: ideographs, which no code page holds anyway
  const auto unit = static_cast<wchar_t>(character);
  WORD type = 0;
  return GetStringTypeW(CT_CTYPE1, &unit, 1, &type) != FALSE && (type & (C1_ALPHA | C1_DIGIT)) != 0;
}

bool RandomBytes(unsigned char* bytes, std::size_t count) {
  HCRYPTPROV provider = 0;
  if (CryptAcquireContextW(&provider, nullptr, nullptr, PROV_RSA_FULL, CRYPT_VERIFYCONTEXT | CRYPT_SILENT) ==
      FALSE)
    return false;
  const bool filled = CryptGenRandom(provider, static_cast<DWORD>(count), bytes) != FALSE;
  CryptReleaseContext(provider, 0);
  return filled;
}

DateTime DateTimeOf(std::int64_t seconds, bool utc) {
  const auto ticks = static_cast<std::uint64_t>(seconds * kUnitsPerSecond + kUnixEpoch);
  const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  SYSTEMTIME parts = {};
  if (FileTimeToSystemTime(&time, &parts) == FALSE) return {};
  if (!utc) {
    SYSTEMTIME local = {};
    if (SystemTimeToTzSpecificLocalTime(nullptr, &parts, &local) == FALSE) return {};
    parts = local;
  }
  return {parts.wYear, parts.wMonth, parts.wDay, parts.wHour, parts.wMinute, parts.wSecond};
}

}  // namespace bxvbwiz::host
