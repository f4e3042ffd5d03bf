#include "contract/ContractPlatform.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using E = SystemError;
using namespace std::string_literals;

const std::string kRoot = "Software\\VB and VBA Program Settings\\bxvbwiz contract\\Part";

// Keys and values are those of one key of the user's.
class ContractRegistry : public ContractTest {
 protected:
  ContractRegistry() {
    Remove();
    EXPECT_EQ(registry_.CreateKey(kHKeyCurrentUser, kRoot, 0, kKeyAllAccess, key_), E::Success);
  }
  ~ContractRegistry() override {
    registry_.CloseKey(key_);
    Remove();
  }
  void Remove() {
    for (const char* name : {"\\z", "\\A\\b", "\\A", "\\m\u00E4", ""})
      registry_.DeleteKey(kHKeyCurrentUser, kRoot + name);
  }
  // A text is set with the NUL at its end, and read without it.
  std::string Call(const std::string& name, const std::string& a, const std::string& b) override {
    RegistryHandle key = 0;
    if (name == "set") return Answer(registry_.SetValue(key_, a, {kRegSz, b + '\0'}));
    if (name == "number") return Answer(registry_.SetValue(key_, a, {kRegDword, b}));
    if (name == "get") return Value(a, b.empty() ? 255 : std::stoul(b));
    if (name == "remove") return Answer(registry_.DeleteValue(key_, a));
    if (name == "setting") return platform_.settings.Get("BXVBWIZ contract", a, b, "default");
    if (name == "delete") return Answer(registry_.DeleteKey(key_, a));
    if (name == "open") return Answer(registry_.OpenKey(key_, a, kKeyRead, key));
    if (name == "create") {
      const E error = registry_.CreateKey(key_, a, 0, kKeyAllAccess, key);
      return registry_.CloseKey(key), Answer(error);
    }
    std::string text;
    if (name == "key") return Answer(registry_.EnumKey(key_, Index(a), b.empty() ? 255 : 2, text), text);
    std::uint32_t type = 0;
    if (name == "value") {
      const E error = registry_.EnumValue(key_, Index(a), 255, text, type);
      return Answer(error, text + ":" + std::to_string(type));
    }
    return ContractTest::Call(name, a, b);
  }
  static std::uint32_t Index(const std::string& text) { return static_cast<std::uint32_t>(std::stoul(text)); }
  std::string Value(const std::string& name, std::size_t size) {
    RegistryData data;
    const E error = registry_.QueryValue(key_, name, size, data);
    return Answer(error, data.type == kRegSz ? data.data.substr(0, data.data.size() - 1) : data.data);
  }

  Registry& registry_ = platform_.registry;
  RegistryHandle key_ = 0;
};

TEST_F(ContractRegistry, ValuesComeBackAsTheyWereSet) {
  Do({"set , default", "set Name \u00C4, \u20AC 1", "number number, \1\2\3\4", "get  -> default",
      "get NAME \u00E4 -> \u20AC 1", "get number -> \1\2\3\4", "get , 8 -> default", "get , 7 -> 234",
      "get Name \u00C4, 4 -> \u20AC 1", "set NUMBER, new", "get number -> new", "remove Number",
      "remove Number -> 2", "get number -> 2"});
}

TEST_F(ContractRegistry, SubkeysAreListedByNameAndNewOnesAtOnce) {
  Do({"create z", "key 0 -> z", "key 1 -> 259", "create A\\b", "key 1 -> z", "key 2 -> 259", "create m\u00E4",
      "key 0 -> A", "key 1 -> m\u00E4", "key 2 -> z", "key 3 -> 259", "key 1, short -> 234"});
  // Wine lists values by name, Windows as they were stored.
  Do({"set a, x", "number b, \1\2\3\4", "value 0 -> a:1", "value 1 -> b:4", "value 2 -> 259"});
}

TEST_F(ContractRegistry, EachFaultGivesTheCodeOfWindows) {
  RegistryHandle key = 77;
  EXPECT_EQ(registry_.OpenKey(key_, "none", kKeyRead, key), E::FileNotFound);
  EXPECT_EQ(key, 77);
  Do({"create A\\b", "open a\\B"});
  EXPECT_EQ(registry_.OpenKey(kHKeyCurrentUser, UpperCase(kRoot) + "\\a", kKeyRead, key), E::Success);
  EXPECT_EQ(registry_.SetValue(key, "x", {kRegSz, "y\0"s}), E::AccessDenied) << "opened for reading";
  EXPECT_EQ(registry_.DeleteValue(key, "x"), E::AccessDenied);
  EXPECT_EQ(registry_.CloseKey(key), E::Success);
  Do({"delete A -> 5", "delete none -> 2", "delete a\\b", "delete a"});
  EXPECT_EQ(registry_.CloseKey(kHKeyCurrentUser), E::Success) << "a root";
  EXPECT_EQ(registry_.OpenKey(0x12345670, "x", kKeyRead, key), E::InvalidHandle);
}

TEST_F(ContractRegistry, SettingsAreThoseOfAVisualBasicProgram) {
  Do({"set Name, caf\u00E9", "number Number, 1234", "setting part, NAME -> caf\u00E9",
      "setting Part, Number -> default", "setting Part, none -> default", "setting none, Name -> default"});
}

}  // namespace
}  // namespace bxvbwiz
