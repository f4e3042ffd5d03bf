#pragma once

#include <string>
#include <string_view>

// Conversion between the wizard's UTF-8 and the ANSI code page of the calls (CP_ACP).
namespace bxvbwiz {

std::string FromAnsi(std::string_view bytes);
// From the code page of that number; empty when the system does not know it.
std::string FromCodePage(unsigned number, std::string_view bytes);
std::string ToAnsi(std::string_view text);

}  // namespace bxvbwiz
