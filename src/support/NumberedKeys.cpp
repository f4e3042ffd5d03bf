#include "support/NumberedKeys.h"

#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr const char* kNoEntry = "NONE";  // what a missing key reads as

// True for what the key after the last entry reads: "NONE" or a blank value.
bool EndsNumberedList(std::string_view value) {
  return value == kNoEntry || TrimBlanks(value).empty();
}

std::string KeyName(const NumberedKeys::List& list, int number) {
  const std::string digits = std::to_string(number);
  return list.spelling == NumberedKeys::Spelling::NameThenNumber ? list.name + digits : digits + list.name;
}

// Profile strings ignore the case of all three names.
std::string SectionId(const std::string& file, const std::string& section) {
  return UpperCase(file) + '\n' + UpperCase(section);
}

std::string KeyId(const NumberedKeys::List& list) {
  return (list.spelling == NumberedKeys::Spelling::NameThenNumber ? "0" : "1") + UpperCase(list.name);
}

}  // namespace

void NumberedKeys::ReadOn(const List& list, Known& known) {
  for (;;) {
    const int number = list.first + static_cast<int>(known.entries.size());
    std::string value =
        profiles_.GetString(list.section, KeyName(list, number), kNoEntry, list.size, list.file);
    if (EndsNumberedList(value)) return;
    known.firstNumber.emplace(value, number);
    known.entries.push_back(std::move(value));
  }
}

NumberedKeys::Known& NumberedKeys::Read(const List& list) {
  const auto [place, isNew] = sections_[SectionId(list.file, list.section)].try_emplace(KeyId(list));
  Known& known = place->second;
  if (isNew || known.size != list.size || known.first != list.first) {
    known = Known{list.size, list.first, {}, {}};
    ReadOn(list, known);
  }
  return known;
}

bool NumberedKeys::Find(const List& list, const std::string& value, int& number) {
  const Known& known = Read(list);
  const auto found = known.firstNumber.find(value);
  const bool isThere = found != known.firstNumber.end();
  number = isThere ? found->second : list.first + static_cast<int>(known.entries.size());
  return isThere;
}

int NumberedKeys::Append(const List& list, const std::string& value) {
  Known& known = Read(list);
  const int number = list.first + static_cast<int>(known.entries.size());
  profiles_.WriteString(list.section, KeyName(list, number), value, list.file);
  if (value.find_first_of("\r\n") == std::string::npos)
    ReadOn(list, known);
  else
    Forget();  // the value's further lines may be entries of any list
  return number;
}

bool NumberedKeys::AppendIfMissing(const List& list, const std::string& value) {
  int number = 0;
  if (Find(list, value, number)) return true;
  Append(list, value);
  return false;
}

const std::vector<std::string>& NumberedKeys::Entries(const List& list) {
  return Read(list).entries;
}

void NumberedKeys::EmptySection(const std::string& file, const std::string& section) {
  profiles_.WriteSection(section, std::string_view(), file);
  sections_.erase(SectionId(file, section));
}

}  // namespace bxvbwiz
