#pragma once

#include <memory>

#include "platform/Platform.h"

namespace bxvbwiz {

constexpr int kUtf8CodePage = 65001;  // CP_UTF8 of winnls.h

// A Windows ANSI code page by its number: 874, 932, 936, 949, 950, 1250 to 1258, or UTF-8. Null for any other
// number, and for a double-byte page that this computer does not know. A byte that belongs to no character is
// decoded as the character of its value; in a double-byte page a private character stands for such a byte
// above 0xA0. Encoding gives the byte back, except in UTF-8.
std::unique_ptr<CodePage> MakeCodePage(int number);

}  // namespace bxvbwiz
