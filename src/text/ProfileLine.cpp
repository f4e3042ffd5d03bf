#include "text/ProfileLine.h"

#include <algorithm>

namespace bxvbwiz {
namespace {

constexpr std::string_view kBlanks = " \t\v";
constexpr std::string_view kLineEnds = "\r\n";

}  // namespace

std::string_view TrimProfileText(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view WithoutLineEnd(std::string_view line) {
  return line.substr(0, line.find_last_not_of(kLineEnds) + 1);  // npos + 1 is 0
}

std::size_t ProfileLineLength(std::string_view text) {
  const std::size_t end = text.find_first_of(kLineEnds);
  if (end == std::string_view::npos) return text.size();
  const bool pair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
  return end + (pair ? 2 : 1);
}

std::string_view KeyName(std::string_view line) {
  return TrimProfileText(line.substr(0, line.find('=')));
}

std::string_view KeyValue(std::string_view line) {
  const std::string_view content = WithoutLineEnd(line);
  const std::string_view value = TrimProfileText(content.substr(content.find('=') + 1));
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string WithValue(std::string_view line, std::string_view value) {
  const std::string_view content = WithoutLineEnd(line);
  const std::size_t begin =
      std::min(content.find_first_not_of(kBlanks, content.find('=') + 1), content.size());
  std::string changed(content.substr(0, begin));
  changed.append(value);
  changed.append(line.substr(content.size()));
  return changed;
}

bool IsOddKey(std::string_view key, std::string_view value) {
  const std::string_view name = TrimProfileText(key);
  return name.find_first_of("=\r\n") != std::string_view::npos || name.find_first_of("[;") == 0 ||
         value.find_first_of(kLineEnds) != std::string_view::npos;
}

}  // namespace bxvbwiz
