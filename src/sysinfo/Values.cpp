#include "sysinfo/Key.h"

#include <algorithm>

#include "text/Text.h"

namespace bxvbwiz {
namespace {

bool IsText(std::uint32_t type) {
  return type == RegConstants::RegSz || type == RegConstants::RegExpandSz || type == RegConstants::RegMultiSz;
}

// The last character is the terminating NUL.
std::string WithoutLastCharacter(const std::string& text) {
  const std::size_t count = CharacterCount(text);
  return count == 0 ? std::string() : std::string(FirstCharacters(text, count - 1));
}

std::int32_t FromLittleEndian(const std::string& bytes) {
  std::uint32_t number = 0;
  for (std::size_t index = std::min<std::size_t>(bytes.size(), 4); index-- > 0;)
    number = number << 8 | static_cast<std::uint8_t>(bytes[index]);
  return static_cast<std::int32_t>(number);
}

std::string ToLittleEndian(std::int32_t value) {
  std::string bytes;
  auto number = static_cast<std::uint32_t>(value);
  for (int count = 0; count < 4; ++count, number >>= 8) bytes += static_cast<char>(number & 0xFF);
  return bytes;
}

}  // namespace

ValueData Value::Get() {
  const std::uint32_t asked = DataType;
  if (asked != RegConstants::RegSz && asked != RegConstants::RegDWord && asked != RegConstants::RegBinary)
    return {};
  const std::size_t size = asked == RegConstants::RegDWord ? 4 : RegConstants::RegMaxDataSize;
  RegistryData read;
  if (registry_.QueryValue(parent_.Handle(), name_, size, read) != SystemError::Success) return {};
  DataType = read.type;
  // The value may have got another type since it was listed: a text is then no number, nor bytes a text.
  if (IsText(read.type) != (asked == RegConstants::RegSz)) return {};
  if (asked == RegConstants::RegSz) return WithoutLastCharacter(read.data);
  if (asked == RegConstants::RegDWord) return FromLittleEndian(read.data);
  if (read.data.empty()) return {};
  return std::vector<std::uint8_t>(read.data.begin(), read.data.end());
}

bool Value::Set(const ValueData& data) {
  RegistryData written{DataType, {}};
  if (DataType == RegConstants::RegDWord && std::holds_alternative<std::int32_t>(data)) {
    written.data = ToLittleEndian(std::get<std::int32_t>(data));
  } else if (DataType == RegConstants::RegSz && std::holds_alternative<std::string>(data)) {
    written.data = std::get<std::string>(data) + '\0';
  } else if (DataType == RegConstants::RegBinary && std::holds_alternative<std::vector<std::uint8_t>>(data)) {
    const auto& bytes = std::get<std::vector<std::uint8_t>>(data);
    written.data.assign(bytes.begin(), bytes.end());
  } else {
    return false;
  }
  return registry_.SetValue(parent_.Handle(), name_, written) == SystemError::Success;
}

std::string Value::Text() {
  ValueData data = Get();
  return std::holds_alternative<std::string>(data) ? std::get<std::string>(std::move(data)) : std::string();
}

KeyedCollection<Value>& Values::List() {
  if (!isListed_) Refresh();
  return values_;
}

std::shared_ptr<Value> Values::Enter(const std::string& name, std::uint32_t type) {
  auto value = std::make_shared<Value>(registry_, parent_, name, type);
  values_.Replace(value, "N" + name);
  return value;
}

std::shared_ptr<Value> Values::Add(const std::string& name, std::uint32_t type) {
  List();
  return Enter(name, type);
}

std::shared_ptr<Value> Values::Item(const std::string& name) {
  std::shared_ptr<Value> known = values_.FindItem("N" + name);
  if (known || isListed_) return known;
  // A key may have thousands of values.
  RegistryData data;
  const SystemError error = registry_.QueryValue(parent_.Handle(), name, RegConstants::RegMaxDataSize, data);
  if (error == SystemError::Success) return Enter(name, data.type);
  return MeansMissing(error) ? nullptr : List().FindItem("N" + name);
}

std::shared_ptr<Value> Values::Default() {
  // By the list: some systems give an empty default value to a key that has none.
  std::shared_ptr<Value> unnamed = List().FindItem("N");
  return unnamed || Count() == 0 ? unnamed : Item(1);
}

bool Values::Remove(const std::string& name) {
  if (registry_.DeleteValue(parent_.Handle(), name) != SystemError::Success) return false;
  if (Item(name)) values_.Remove("N" + name);
  return true;
}

void Values::Refresh() {
  isListed_ = true;
  values_.Clear();
  constexpr std::size_t kNameSize = 255;
  std::string name;
  std::uint32_t type = 0;
  for (std::uint32_t index = 0;
       registry_.EnumValue(parent_.Handle(), index, kNameSize, name, type) == SystemError::Success; ++index)
    Enter(name, type);
}

}  // namespace bxvbwiz
