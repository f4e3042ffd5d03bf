#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "support/KeyedCollection.h"

namespace bxvbwiz {

class CCmdOptions;

// One piece of the command line.
class CCmdOption {
 public:
  std::string FullText;
  std::uint8_t Position = 0;  // from 1

  CCmdOptions* Parent() const { return parent_; }
  // Ignored once a parent is set.
  void SetParent(CCmdOptions* parent) {
    if (parent_ == nullptr) parent_ = parent;
  }
  // True when the first character is one of the parent's delimiters.
  bool IsDelimited() const;
  // The second character of a delimited piece, otherwise empty.
  std::string Tag() const;
  // A delimited piece from its third character on, otherwise the whole piece.
  std::string Text() const;

 private:
  CCmdOptions* parent_ = nullptr;
};

// The pieces of a command line (the text after the program's name), separated by one blank. Two blanks in a
// row, or a leading one, end the parsing. Raises error 457 when two pieces have the same tag, case ignored.
class CCmdOptions {
 public:
  explicit CCmdOptions(const std::string& commandLine);
  CCmdOptions(const CCmdOptions&) = delete;
  CCmdOptions& operator=(const CCmdOptions&) = delete;

  std::string Delimiters;  // "/-", or empty for an empty command line

  // By position from 1 or by tag; raise as KeyedCollection does.
  CCmdOption& Item(std::size_t index) const { return *options_.Item(index); }
  CCmdOption& Item(const std::string& tag) const { return *options_.Item(tag); }
  std::int32_t Count() const { return static_cast<std::int32_t>(options_.Count()); }
  // Only a tag of one character can exist.
  bool TagExists(const std::string& tag) const;
  // The position of the first piece whose Text is `text`, case ignored; 0 when there is none.
  std::uint8_t TextExists(const std::string& text) const;

 private:
  KeyedCollection<CCmdOption> options_{KeyCase::Ignored};
};

}  // namespace bxvbwiz
