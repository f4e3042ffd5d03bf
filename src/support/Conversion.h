#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bxvbwiz {

// The decimal number that `text` stands for, as the CInt family reads it: blanks around it, a sign, a
// fraction with a point and an exponent are allowed. Nothing when anything else stands in the text, a NUL
// included.
std::optional<double> TextToNumber(std::string_view text);

// A number as the CInt family rounds it (halves to the even neighbour); nothing outside of [low, high].
std::optional<long> RoundToInteger(double number, long low, long high);

// The number in hexadecimal digits, in lower case and without leading zeros.
std::string Hexadecimal(std::uint32_t number);

}  // namespace bxvbwiz
