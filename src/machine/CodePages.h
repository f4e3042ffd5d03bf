#pragma once

#include <memory>

#include "platform/Platform.h"

namespace bxvbwiz {

// A Windows ANSI code page by its number: 874, 932, 936, 949, 950, 1250 to 1258, or UTF-8 (65001). Null when
// it is none of these, or a double-byte one that this computer does not know. A byte that is no part of a
// character becomes the character of its value, which becomes the byte again (but for UTF-8); in the
// double-byte pages that holds up to 0xA0, and a private character stands for a higher byte.
std::unique_ptr<CodePage> MakeCodePage(int number);

}  // namespace bxvbwiz
