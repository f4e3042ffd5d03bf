#include "support/Conversion.h"

#include <charconv>
#include <cmath>
#include <system_error>

#include "text/Text.h"

namespace bxvbwiz {

std::optional<double> TextToNumber(std::string_view text) {
  std::string_view digits = TrimBlanks(text);
  // from_chars would accept names as well ("inf").
  if (digits.find_first_not_of("0123456789.+-Ee") != std::string_view::npos) return std::nullopt;
  if (StartsWith(digits, "+")) {
    digits.remove_prefix(1);
    if (StartsWith(digits, "-")) return std::nullopt;
  }
  double number = 0;
  const char* const end = digits.data() + digits.size();
  const std::from_chars_result read = std::from_chars(digits.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
  return number;
}

std::optional<long> RoundToInteger(double number, long low, long high) {
  const double rounded = std::nearbyint(number);
  if (rounded < static_cast<double>(low) || rounded > static_cast<double>(high)) return std::nullopt;
  return static_cast<long>(rounded);
}

std::string Hexadecimal(std::uint32_t number) {
  std::string text;
  do {
    text.insert(text.begin(), "0123456789abcdef"[number & 15U]);
    number >>= 4U;
  } while (number != 0);
  return text;
}

}  // namespace bxvbwiz
