#pragma once

#include <string>
#include <string_view>

// Conversion between the wizard's UTF-8 and the UTF-16 of the system's W calls and of automation.
namespace bxvbwiz {

std::wstring Widen(std::string_view text);
// Half of a surrogate pair becomes U+FFFD.
std::string Narrow(std::wstring_view wide);

}  // namespace bxvbwiz
