#pragma once

#include <string>
#include <string_view>

// Conversion between the wizard's UTF-8 and the ANSI code page of the calls (CP_ACP).
namespace bxvbwiz {

std::string FromAnsi(std::string_view bytes);
std::string ToAnsi(std::string_view text);

}  // namespace bxvbwiz
