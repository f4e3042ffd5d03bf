#include <random>

#include "contract/ContractPlatform.h"
#include "TestMachine.h"

// The profile strings of the system beside those of a machine folder.
namespace bxvbwiz {
namespace {

std::string Pick(std::mt19937& random, const std::vector<std::string>& from) {
  return from[random() % from.size()];
}

TEST_F(ContractTest, ALongRandomSequenceGivesTheFilesOfAMachineFolder) {
  const std::vector<std::string> sections = {"s", "S", "File Groups", "0009", "[x", "\u00C4", "end"};
  const std::vector<std::string> keys = {"k", "K", "file0", "FILE1", "a b", "\u00E4", "last"};
  // Lists have room to spare and an empty default, which Wine gives for an empty section as well. Neither
  // blanks at an end nor quotes around: there Wine is known to differ.
  const std::vector<std::string> values = {
      "", "1", "v;w", "a=b", "C:\\Program Files\\x.dll", "\u20AC \u0416", "it's"};
  TestMachine machine;
  ProfileStrings& ours = machine.platform().profiles;
  ProfileStrings& theirs = platform_.profiles;
  const auto path = [&](bool here, const std::string& name) { return here ? "C:\\" + name : At(name); };
  std::mt19937 random(20061);
  for (int step = 0; step < 4000; ++step) {
    const std::string file = "f" + std::to_string(random() % 4) + ".ini";
    const std::string section = Pick(random, sections);
    const std::string key = Pick(random, keys);
    const std::string value = Pick(random, values);
    const unsigned operation = random() % 40;
    const std::size_t size = 1 + random() % 40;
    const auto apply = [&](ProfileStrings& profiles, const std::string& name) -> std::string {
      if (operation < 14) return profiles.WriteString(section, key, value, name) ? "written" : "refused";
      if (operation < 17)
        return profiles.WriteString(section, key, std::nullopt, name) ? "removed" : "refused";
      if (operation == 17)
        return profiles.WriteString(section, std::nullopt, std::nullopt, name) ? "gone" : "no";
      if (operation == 18)
        return profiles.WriteSection(section, key + "=" + value + '\0', name) ? "set" : "no";
      if (operation == 19) return profiles.GetString(section, std::nullopt, "", 400, name);
      if (operation == 20) return profiles.GetString(std::nullopt, std::nullopt, "", 400, name);
      return profiles.GetString(section, key, value, size, name);
    };
    ASSERT_EQ(apply(ours, path(true, file)), apply(theirs, path(false, file)))
        << "step " << step << ", operation " << operation << ": [" << section << "] " << key << "=" << value;
    if (step % 100 != 99) continue;
    ASSERT_TRUE(ours.Flush().empty());
    for (const char* name : {"f0.ini", "f1.ini", "f2.ini", "f3.ini"}) {
      std::string bytes;
      ASSERT_EQ(machine.platform().files.Read(path(true, name), bytes), SystemError::Success);
      ASSERT_EQ(bytes, Get(path(false, name))) << name << " after step " << step;
    }
  }
}

}  // namespace
}  // namespace bxvbwiz
