#include <set>

#include "platform/Forwarding.h"
#include "sysinfo/CSystemInfo.h"
#include "sysinfo/Key.h"
#include "TestSession.h"

namespace bxvbwiz {
namespace {

constexpr RegistryHandle kMachine = RegConstants::HKeyLocalMachine;
constexpr char kCurrentVersion[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion";

// Counts the open handles; keys of the names in `readOnly` open for reading only.
class WatchedRegistry : public ForwardingRegistry {
 public:
  using ForwardingRegistry::ForwardingRegistry;
  std::set<std::string> readOnly;
  int open = 0;

  SystemError OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                      RegistryHandle& opened) override {
    if (Refused(path, access)) return SystemError::AccessDenied;
    return Counted(ForwardingRegistry::OpenKey(key, path, access, opened));
  }
  SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                        std::uint32_t access, RegistryHandle& opened) override {
    if (Refused(path, access)) return SystemError::AccessDenied;
    return Counted(ForwardingRegistry::CreateKey(key, path, options, access, opened));
  }
  SystemError CloseKey(RegistryHandle key) override { return --open, ForwardingRegistry::CloseKey(key); }

 private:
  bool Refused(const std::string& path, std::uint32_t access) const {
    constexpr std::uint32_t kSetValue = 2;  // KEY_SET_VALUE of winnt.h
    return (access & kSetValue) != 0 && readOnly.count(path.substr(path.rfind('\\') + 1)) != 0;
  }
  SystemError Counted(SystemError result) { return open += result == SystemError::Success, result; }
};

RegistryData Text(const std::string& text, std::uint32_t type = RegConstants::RegSz) {
  return {type, text + '\0'};
}

void Store(Registry& registry, const std::string& path,
           const std::vector<std::pair<std::string, RegistryData>>& values = {}) {
  RegistryHandle opened = 0;
  ASSERT_EQ(registry.CreateKey(kMachine, path, 0, RegConstants::KeyAllAccess, opened), SystemError::Success);
  for (const auto& [name, data] : values) registry.SetValue(opened, name, data);
  registry.CloseKey(opened);
}

std::shared_ptr<Key> OpenForWriting(Registry& registry, const std::string& path) {
  std::uint32_t access = 0;
  return Key::Root(registry, kMachine)->OpenSubKey(path, access);
}

struct RegistryKeys : TestSession {
  WatchedRegistry registry{platform().registry};
};

TEST_F(RegistryKeys, OpensListsAndClosesEveryHandle) {
  const auto root = Key::Make(registry);
  root->SetName("HKEY_LOCAL_MACHINE");
  root->SetHandle(RegConstants::HKeyCurrentUser);
  EXPECT_EQ(root->Handle(), kMachine) << "a handle stays";
  Store(registry, "A\\B\\One");
  Store(registry, "A\\B\\Two\\Deep", {{"v", Text("x")}});
  Store(registry, "A\\B", {{"Name", Text("n")}, {"", Text("unnamed")}});
  registry.readOnly = {"Two"};
  EXPECT_FALSE(root->SubKeyExists("A\\B\\Two"));
  EXPECT_TRUE(root->SubKeyExists("a\\b"));
  EXPECT_EQ(registry.open, 0);
  auto key = OpenForWriting(registry, "A\\B");
  ASSERT_EQ(key->SubKeys().Count(), 2U);
  EXPECT_FALSE(key->DeleteSubkeys());
  EXPECT_EQ(key->Values().Default()->Text(), "unnamed");
  EXPECT_EQ(key->Values().Item("NAME")->Text(), "n");
  EXPECT_TRUE(key->SubKeys().Remove("ONE") && key->Values().Remove("NAME"));
  EXPECT_FALSE(key->SubKeys().Remove("one") || key->Values().Remove("name"));
  key->SubKeys().Refresh();
  key->Values().Refresh();
  EXPECT_EQ(key->SubKeys().Count() + key->Values().Count(), 2U);
  const auto deep = key->SubKeys().Item("two")->OpenSubKeyForReading("Deep");
  EXPECT_EQ(deep->FullPath(), "HKEY_LOCAL_MACHINE\\A\\B\\Two\\Deep");
  EXPECT_EQ(deep->Values().Default()->Name(), "v");
  key.reset();
  EXPECT_EQ(registry.open, 2);  // Deep, and Two, which it keeps as its parent
}

TEST_F(RegistryKeys, AddingASubkeyReplacesTheOneThatIsThere) {
  Store(registry, "A\\Old", {{"v", Text("x")}});
  const auto key = OpenForWriting(registry, "A");
  EXPECT_EQ(key->SubKeys().Add("OLD")->Values().Count(), 1U);
  EXPECT_EQ(key->SubKeys().Item(1)->Name(), "OLD");
  registry.readOnly = {"Locked"};
  EXPECT_EQ(key->SubKeys().Add("Locked"), nullptr);
  EXPECT_TRUE(key->SubKeys().Remove(1U));
  EXPECT_FALSE(key->SubKeys().Remove(1U));
}

TEST_F(RegistryKeys, ValuesAreReadByTheirTypeAndNeverExpanded) {
  const std::tuple<RegistryData, ValueData> cases[] = {
      {Text("abc"), std::string("abc")},
      {Text(""), std::string()},
      {{RegConstants::RegSz, "ab\u00E4"}, std::string("ab")},
      {Text(std::string(2047, 'x')), std::string(2047, 'x')},
      {Text(std::string(2048, 'x')), {}},
      {Text("%x%", RegConstants::RegExpandSz), {}},
      {{RegConstants::RegDWord, "\xFE\xFF\xFF\xFF"}, -2},
      {{RegConstants::RegBinary, "\1\xFF"}, std::vector<std::uint8_t>{1, 255}},
      {{RegConstants::RegBinary, ""}, {}},
  };
  for (const auto& [stored, expected] : cases) {
    Store(registry, "A", {{"v", stored}});
    const auto key = OpenForWriting(registry, "A");
    const auto value = key->Values().Item("V");
    EXPECT_EQ(value->Get(), expected) << stored.type << " " << stored.data;
    EXPECT_FALSE(value->Set(std::vector<std::uint8_t>{}) && stored.type != RegConstants::RegBinary);
    if (expected == ValueData{} || stored.data.empty() || stored.data == "ab\u00E4") continue;
    EXPECT_TRUE(key->Values().Add("copy", stored.type)->Set(expected));
    RegistryData written;
    registry.QueryValue(key->Handle(), "copy", 4096, written);
    EXPECT_EQ(written.data, stored.data);
    // A changed type of the value counts from the next read on.
    registry.SetValue(key->Handle(), "v", {RegConstants::RegDWord, std::string("\7\0\0\0", 4)});
    value->Get();
    EXPECT_EQ(value->Get(), ValueData{7});
  }
}

TEST(CSystemInfo, FlagsTestFamilyAndOneNumber) {
  const std::pair<const char*, std::string> cases[] = {
      {"1\nMajorVersion=4\nMinorVersion=0", "10000"},  {"1\nMajorVersion=4\nMinorVersion=10", "01000"},
      {"1\nMajorVersion=4\nMinorVersion=90", "00000"}, {"2\nMajorVersion=3\nMinorVersion=51", "00100"},
      {"2\nMajorVersion=4\nMinorVersion=0", "00010"},  {"2\nMajorVersion=5\nMinorVersion=1", "00001"},
      {"2\nMajorVersion=6\nMinorVersion=1", "00000"}};
  for (const auto& [version, expected] : cases) {
    TestMachine disk;
    disk.Write("machine.ini", std::string("[Version]\nPlatformId=") + version + "\n");
    const CSystemInfo info(disk.platform());
    std::string flags;
    for (const bool flag : {info.IsWindows95(), info.IsWindows98(), info.IsWindowsNT351(),
                            info.IsWindowsNT4(), info.IsWindowsNT5()})
      flags += flag ? '1' : '0';
    EXPECT_EQ(flags, expected) << version;
  }
}

TEST(CSystemInfo, ConvertsOnlyATextThatFillsTheServicePackBuffer) {
  const std::pair<std::string, std::int32_t> cases[] = {
      {"3", -kErrorTypeMismatch}, {"3" + std::string(127, ' '), 3}, {std::string(128, '9'), -kErrorOverflow}};
  for (const auto& [text, result] : cases) {
    TestMachine disk;
    disk.Write("machine.ini", "[Version]\nCSDVersion=\"" + text + "\"\n");
    const CSystemInfo info(disk.platform());
    std::int32_t number = 0;
    try {
      number = info.WinCSDVersion();
    } catch (const RuntimeError& error) {
      number = -error.Number();
    }
    EXPECT_EQ(number, result) << text;
  }
}

TEST(CSystemInfo, FindsFoldersInTheRegistryOrUnderWindows) {
  TestMachine disk;
  Store(disk.platform().registry, kCurrentVersion,
        {{"CommonFilesDir", Text("C:\\PF\\Common\\")}, {"ProgramFilesDir", Text("C:\\PF")}});
  CSystemInfo info(disk.platform());
  EXPECT_EQ(info.WinDir() + info.WinSysDir(), "C:\\windows\\C:\\windows\\system32\\");
  EXPECT_EQ(info.CommonFilesSysPath() + info.ProgramFilesPath(), "C:\\PF\\Common\\System\\C:\\PF\\");
  EXPECT_EQ(info.MSDAOPath(), "C:\\PF\\Common\\Microsoft Shared\\DAO\\");

  Store(disk.platform().registry, "SOFTWARE\\Microsoft\\Shared Tools\\DAO",
        {{"Other", Text("C:\\No\\x.dll")}, {"Path", Text("C:\\DAO\\dao350.dll")}});
  EXPECT_EQ(CSystemInfo(disk.platform()).MSDAOPath(), "C:\\DAO\\");

  TestMachine old;
  old.Write("machine.ini", "[Version]\nMajorVersion=3\n");
  CSystemInfo nt351(old.platform());
  EXPECT_EQ(nt351.CommonFilesPath() + nt351.ProgramFilesPath(), "C:\\WINDOWS\\C:\\WINDOWS\\");
  EXPECT_EQ(nt351.CommonFilesSysPath(), nt351.WinSysDir());
  EXPECT_EQ(nt351.MSDAOPath(), "C:\\WINDOWS\\MSAPPS\\DAO\\");
}

using MissingEntry = TestSession;

TEST_F(MissingEntry, IsReportedAndAskedForAgainAtTheNextRead) {
  user.answers = {Button::Retry, Button::Retry};
  CSystemInfo info(platform());
  const std::string what = "91 : Object variable or With block variable not set: HKEY_LOCAL_MACHINE\\";
  EXPECT_EQ(info.CommonFilesPath(), "");
  Store(platform().registry, kCurrentVersion);
  EXPECT_EQ(info.CommonFilesPath(), "");
  EXPECT_EQ(user.messages,
            (std::vector<std::string>{ErrorMessage(what + kCurrentVersion + " : Bx6vbwiz"),
                                      ErrorMessage(what + kCurrentVersion + "\\CommonFilesDir : Bx6vbwiz")}));
  EXPECT_THROW(info.ProgramFilesPath(), WizardEnded);
  Store(platform().registry, kCurrentVersion, {{"CommonFilesDir", Text("C:\\CF")}});
  EXPECT_EQ(info.CommonFilesPath(), "C:\\CF\\");
  EXPECT_TRUE(session().callStack.Names().empty());
}

}  // namespace
}  // namespace bxvbwiz
