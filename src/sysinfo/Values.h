#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "support/KeyedCollection.h"
#include "sysinfo/Key.h"

namespace bxvbwiz {

// The data of a value: nothing, a REG_DWORD, a REG_SZ or a REG_BINARY.
using ValueData = std::variant<std::monostate, std::int32_t, std::string, std::vector<std::uint8_t>>;

// One named value of a key.
class Value {
 public:
  Value(Registry& registry, const Key& parent, std::string name, std::uint32_t type)
      : DataType(type), registry_(registry), parent_(parent), name_(std::move(name)) {}

  std::uint32_t DataType;  // a Reg... type of RegConstants; a successful read updates it

  const std::string& Name() const { return name_; }
  const Key& Parent() const { return parent_; }
  // The data; empty for other types, data over RegMaxDataSize and whatever the registry refuses. Strings are
  // not expanded.
  ValueData Get();
  // Writes data of this value's type; other types and alternatives are not written. False when nothing was.
  bool Set(const ValueData& data);
  // Get as text; empty unless the value is a REG_SZ.
  std::string Text();

 private:
  Registry& registry_;
  const Key& parent_;  // outlives its values
  std::string name_;
};

// The values of a key, found by position (from 1) or by name (case ignored).
class Values {
 public:
  Values(Registry& registry, Key& parent) : registry_(registry), parent_(parent) {}

  // Adds a value of that name and type to the collection (writing it is Value::Set); one of that name is
  // replaced in its place.
  std::shared_ptr<Value> Add(const std::string& name, std::uint32_t type);
  std::shared_ptr<Value> Item(std::size_t position) const { return values_.Item(position); }
  // Null when there is none.
  std::shared_ptr<Value> Item(const std::string& name) const { return values_.FindItem("N" + name); }
  // The value without a name, or the first one; null when there is none.
  std::shared_ptr<Value> Default() const;
  std::size_t Count() const { return values_.Count(); }
  // Deletes the value in the registry and drops it. False when the registry refuses.
  bool Remove(const std::string& name);
  void Refresh();
  Key& Parent() const { return parent_; }

 private:
  Registry& registry_;
  Key& parent_;                                      // owns this
  KeyedCollection<Value> values_{KeyCase::Ignored};  // keyed by "N" + name: the default value has no name
};

}  // namespace bxvbwiz
