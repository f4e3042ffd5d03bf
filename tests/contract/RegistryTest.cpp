#include "contract/ContractPlatform.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using E = SystemError;
using namespace std::string_literals;

constexpr auto kUser = static_cast<RegistryHandle>(0x80000001U);  // HKEY_CURRENT_USER
constexpr std::uint32_t kRead = 0x20019;                          // KEY_READ
constexpr std::uint32_t kAll = 0xF003F;                           // KEY_ALL_ACCESS
constexpr std::uint32_t kString = 1;                              // REG_SZ
constexpr std::uint32_t kDword = 4;                               // REG_DWORD
const std::string kRoot = "Software\\VB and VBA Program Settings\\bxvbwiz contract";

class ContractRegistry : public ContractTest {
 protected:
  ContractRegistry() {
    Remove();
    key_ = Create("");
  }
  ~ContractRegistry() override {
    registry_.CloseKey(key_);
    Remove();
  }
  void Remove() {
    for (const char* name : {"\\z", "\\A\\b", "\\A", "\\m\u00E4", "\\Part", ""})
      registry_.DeleteKey(kUser, kRoot + name);
  }
  RegistryHandle Create(const std::string& path) {
    RegistryHandle key = 0;
    EXPECT_EQ(registry_.CreateKey(kUser, kRoot + path, 0, kAll, key), E::Success) << path;
    return key;
  }
  std::string Text(const std::string& name, std::size_t size = 255) {
    RegistryData data;
    const E error = registry_.QueryValue(key_, name, size, data);
    return error == E::Success ? data.data : Error(error);
  }

  Registry& registry_ = platform_.registry;
  RegistryHandle key_ = 0;
};

TEST_F(ContractRegistry, ValuesComeBackAsTheyWereSet) {
  ASSERT_EQ(registry_.SetValue(key_, "", {kString, "default\0"s}), E::Success);
  ASSERT_EQ(registry_.SetValue(key_, "Name \u00C4", {kString, "\u20AC 1\0"s}), E::Success);
  ASSERT_EQ(registry_.SetValue(key_, "number", {kDword, "\1\2\3\4"s}), E::Success);
  EXPECT_EQ(Text(""), "default\0"s);
  EXPECT_EQ(Text("NAME \u00E4"), "\u20AC 1\0"s);
  EXPECT_EQ(Text("number"), "\1\2\3\4"s);
  EXPECT_EQ(Text("", 8), "default\0"s) << "just large enough";
  EXPECT_EQ(Text("", 7), "error 234");
  EXPECT_EQ(Text("Name \u00C4", 4), "\u20AC 1\0"s) << "a buffer counts bytes of the code page";
  ASSERT_EQ(registry_.SetValue(key_, "NUMBER", {kString, "new\0"s}), E::Success);
  EXPECT_EQ(Text("number"), "new\0"s);
  ASSERT_EQ(registry_.DeleteValue(key_, "Number"), E::Success);
  EXPECT_EQ(registry_.DeleteValue(key_, "Number"), E::FileNotFound);
  EXPECT_EQ(Text("number"), "error 2");
}

TEST_F(ContractRegistry, SubkeysAreListedByNameAndValuesAreAllListed) {
  std::string names;
  std::string name;
  std::uint32_t index = 0;
  for (const char* path : {"\\z", "\\A\\b", "\\m\u00E4"}) {
    registry_.CloseKey(Create(path));
    EXPECT_EQ(registry_.EnumKey(key_, index, 255, name), E::Success) << "a new key is listed";
    EXPECT_EQ(registry_.EnumKey(key_, ++index, 255, name), E::NoMoreItems);
  }
  for (index = 0; registry_.EnumKey(key_, index, 255, name) == E::Success; ++index) names += name + ' ';
  EXPECT_EQ(names, "A m\u00E4 z ");
  EXPECT_EQ(registry_.EnumKey(key_, 1, 2, name), E::MoreData);
  for (const char* value : {"b", "a"}) registry_.SetValue(key_, value, {kString, "x\0"s});
  std::uint32_t type = 0;
  std::size_t length = 0;  // Wine lists values by name, Windows as they were stored
  for (index = 0; registry_.EnumValue(key_, index, 255, name, type) == E::Success; ++index) {
    EXPECT_EQ(type, kString);
    length += name.size();
  }
  EXPECT_EQ(index, 2u);
  EXPECT_EQ(length, 2u);
  EXPECT_EQ(registry_.EnumValue(key_, index, 255, name, type), E::NoMoreItems);
}

TEST_F(ContractRegistry, EachFaultGivesTheCodeOfWindows) {
  registry_.CloseKey(Create("\\A\\b"));
  RegistryHandle key = 77;
  EXPECT_EQ(registry_.OpenKey(kUser, kRoot + "\\none", kRead, key), E::FileNotFound);
  EXPECT_EQ(key, 77);
  EXPECT_EQ(registry_.OpenKey(kUser, UpperCase(kRoot) + "\\a\\B", kRead, key), E::Success);
  EXPECT_EQ(registry_.SetValue(key, "x", {kString, "y\0"s}), E::AccessDenied) << "opened for reading";
  EXPECT_EQ(registry_.DeleteValue(key, "x"), E::AccessDenied);
  EXPECT_EQ(registry_.CloseKey(key), E::Success);
  EXPECT_EQ(registry_.DeleteKey(key_, "A"), E::AccessDenied) << "has a subkey";
  EXPECT_EQ(registry_.DeleteKey(key_, "none"), E::FileNotFound);
  EXPECT_EQ(registry_.DeleteKey(key_, "a\\b"), E::Success);
  EXPECT_EQ(registry_.DeleteKey(key_, "a"), E::Success);
  EXPECT_EQ(registry_.CloseKey(kUser), E::Success) << "a root";
  EXPECT_EQ(registry_.OpenKey(0x12345670, "x", kRead, key), E::InvalidHandle);
}

TEST_F(ContractRegistry, SettingsAreThoseOfAVisualBasicProgram) {
  const RegistryHandle key = Create("\\Part");
  ASSERT_EQ(registry_.SetValue(key, "Name", {kString, "caf\u00E9\0"s}), E::Success);
  ASSERT_EQ(registry_.SetValue(key, "Number", {kDword, "\1\0\0\0"s}), E::Success);
  registry_.CloseKey(key);
  Settings& settings = platform_.settings;
  EXPECT_EQ(settings.Get("BXVBWIZ contract", "part", "NAME", "default"), "caf\u00E9");
  EXPECT_EQ(settings.Get("bxvbwiz contract", "Part", "Number", "default"), "default");
  EXPECT_EQ(settings.Get("bxvbwiz contract", "Part", "none", "default"), "default");
  EXPECT_EQ(settings.Get("bxvbwiz contract", "none", "Name", "default"), "default");
}

}  // namespace
}  // namespace bxvbwiz
