#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "support/Errors.h"
#include "text/Text.h"

namespace bxvbwiz {

enum class KeyCase { Exact, Ignored };

// Elements in the order in which they were added, found by position (from 1) or by key. Elements are shared:
// the same one may be in several collections.
template <class Element>
class KeyedCollection {
 public:
  using Pointer = std::shared_ptr<Element>;

  explicit KeyedCollection(KeyCase keyCase = KeyCase::Exact) : keyCase_(keyCase) {}

  // Entries point into the index, which can be moved but not copied.
  KeyedCollection(const KeyedCollection&) = delete;
  KeyedCollection& operator=(const KeyedCollection&) = delete;
  KeyedCollection(KeyedCollection&&) noexcept = default;
  KeyedCollection& operator=(KeyedCollection&&) noexcept = default;
  ~KeyedCollection() = default;

  // Adds an element; an empty key adds it without one. Raises error 457 when the key is taken.
  void Insert(const Pointer& element, const std::string& key) {
    const std::string* folded = nullptr;
    if (!key.empty()) {
      const auto [place, isNew] = byKey_.emplace(Folded(key), element);
      if (!isNew) {
        throw RuntimeError(kErrorDuplicateKey,
                           "This key is already associated with an element of this collection: " + key);
      }
      folded = &place->first;
    }
    elements_.push_back({element, folded});
  }
  // Adds what `make` gives under a key (not empty), unless the key is taken.
  template <class Make>
  void InsertNew(const std::string& key, const Make& make) {
    const auto [place, isNew] = byKey_.try_emplace(Folded(key));
    if (!isNew) return;
    place->second = make();
    elements_.push_back({place->second, &place->first});
  }
  // Replaces the element with that key, or adds this one when there is none.
  void Replace(const Pointer& element, const std::string& key) {
    const auto found = byKey_.find(Folded(key));
    if (found == byKey_.end()) return Insert(element, key);
    for (Entry& entry : elements_) {
      if (entry.key == &found->first) entry.element = element;
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
  // Makes room for that many elements.
  void Reserve(std::size_t count) {
    elements_.reserve(count);
    byKey_.reserve(count);
  }
  std::size_t Count() const { return elements_.size(); }
  // Raise like Item.
  void Remove(std::size_t position) {
    Item(position);
    if (const std::string* key = elements_[position - 1].key) byKey_.erase(byKey_.find(*key));
    elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(position - 1));
  }
  void Remove(const std::string& key) {
    Item(key);
    const std::string* folded = &byKey_.find(Folded(key))->first;
    for (std::size_t position = 1; position <= elements_.size(); ++position) {
      if (elements_[position - 1].key == folded) return Remove(position);
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
    const std::string* key;  // folded, that of byKey_; null without one
  };
  std::string Folded(const std::string& key) const {
    return keyCase_ == KeyCase::Exact ? key : UpperCase(key);
  }

  KeyCase keyCase_;
  std::vector<Entry> elements_;
  std::unordered_map<std::string, Pointer> byKey_;
};

}  // namespace bxvbwiz
