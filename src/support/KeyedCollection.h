#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/Text.h"
#include "support/Errors.h"

namespace bxvbwiz {

enum class KeyCase { Exact, Ignored };

// Elements in the order in which they were added, found by position (from 1) or by key. Elements are shared:
// the same one may be in several collections.
template <class Element>
class KeyedCollection {
 public:
  using Pointer = std::shared_ptr<Element>;

  explicit KeyedCollection(KeyCase keyCase = KeyCase::Exact) : keyCase_(keyCase) {}

  // Adds an element; an empty key adds it without one. Raises error 457 when the key is taken.
  void Insert(const Pointer& element, const std::string& key) {
    if (!key.empty() && !byKey_.emplace(Folded(key), element).second) {
      throw RuntimeError(kErrorDuplicateKey,
                         "This key is already associated with an element of this collection: " + key);
    }
    elements_.push_back({element, key});
  }
  // Puts an element in the place of the one with that key, or adds it when there is none.
  void Replace(const Pointer& element, const std::string& key) {
    const auto found = byKey_.find(Folded(key));
    if (found == byKey_.end()) return Insert(element, key);
    for (Entry& entry : elements_) {
      if (entry.element == found->second && Folded(entry.key) == found->first) entry = {element, key};
    }
    found->second = element;
  }
  // By position from 1; raises error 9 outside.
  const Pointer& Item(std::size_t position) const {
    if (position < 1 || position > elements_.size())
      throw RuntimeError(kErrorSubscript, "Subscript out of range");
    return elements_[position - 1].element;
  }
  // By key; raises error 5 when there is none.
  const Pointer& Item(const std::string& key) const {
    const auto found = byKey_.find(Folded(key));
    if (found == byKey_.end())
      throw RuntimeError(kErrorInvalidCall, "Invalid procedure call or argument: " + key);
    return found->second;
  }
  // By key; null when there is none.
  Pointer FindItem(const std::string& key) const {
    const auto found = byKey_.find(Folded(key));
    return found == byKey_.end() ? nullptr : found->second;
  }
  std::size_t Count() const { return elements_.size(); }
  // Raise like Item.
  void Remove(std::size_t position) {
    Item(position);
    byKey_.erase(Folded(elements_[position - 1].key));
    elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(position - 1));
  }
  void Remove(const std::string& key) {
    Item(key);
    for (std::size_t position = 1; position <= elements_.size(); ++position) {
      if (Folded(elements_[position - 1].key) == Folded(key)) return Remove(position);
    }
  }
  void Clear() {
    elements_.clear();
    byKey_.clear();
  }

  // Enumeration gives references to the elements.
  class Iterator {
   public:
    Iterator(const KeyedCollection* owner, std::size_t index) : owner_(owner), index_(index) {}
    Element& operator*() const { return *owner_->elements_[index_].element; }
    Iterator& operator++() {
      ++index_;
      return *this;
    }
    bool operator!=(const Iterator& other) const { return index_ != other.index_; }

   private:
    const KeyedCollection* owner_;
    std::size_t index_;
  };
  Iterator begin() const { return Iterator(this, 0); }
  Iterator end() const { return Iterator(this, elements_.size()); }

 private:
  struct Entry {
    Pointer element;
    std::string key;
  };
  std::string Folded(const std::string& key) const {
    return keyCase_ == KeyCase::Exact ? key : UpperCase(key);
  }

  KeyCase keyCase_;
  std::vector<Entry> elements_;
  std::unordered_map<std::string, Pointer> byKey_;
};

}  // namespace bxvbwiz
