#include "support/CCmdOptions.h"

#include <limits>

#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {

bool CCmdOption::IsDelimited() const {
  if (parent_ == nullptr || FullText.empty()) return false;
  return parent_->Delimiters.find(FirstCharacters(FullText, 1)) != std::string::npos;
}

std::string CCmdOption::Tag() const {
  if (!IsDelimited()) return {};
  const std::size_t start = FirstCharacters(FullText, 1).size();
  return FullText.substr(start, FirstCharacters(FullText, 2).size() - start);
}

std::string CCmdOption::Text() const {
  return IsDelimited() ? FullText.substr(FirstCharacters(FullText, 2).size()) : FullText;
}

CCmdOptions::CCmdOptions(const std::string& commandLine) {
  if (commandLine.empty()) return;
  Delimiters = "/-";
  for (std::int16_t number = 1;; ++number) {
    const std::string piece = GetToken(commandLine, number, " ");
    if (piece.empty()) return;
    if (number > std::numeric_limits<std::uint8_t>::max()) throw RuntimeError(kErrorOverflow, "Overflow");
    const auto option = std::make_shared<CCmdOption>();
    option->FullText = piece;
    option->Position = static_cast<std::uint8_t>(number);
    option->SetParent(this);
    options_.Insert(option, option->Tag());
  }
}

bool CCmdOptions::TagExists(const std::string& tag) const {
  return CharacterCount(tag) == 1 && options_.FindItem(tag) != nullptr;
}

std::uint8_t CCmdOptions::TextExists(const std::string& text) const {
  for (const CCmdOption& option : options_) {
    if (EqualsIgnoreCase(option.Text(), text)) return option.Position;
  }
  return 0;
}

}  // namespace bxvbwiz
