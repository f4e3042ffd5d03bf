#include <random>

#include "contract/ContractPlatform.h"
#include "TestMachine.h"

// The profile strings of the system beside those of a machine folder.
namespace bxvbwiz {
namespace {

TEST_F(ContractTest, ALongRandomSequenceGivesTheFilesOfAMachineFolder) {
  using Names = std::vector<std::string>;
  const Names sections = {"s", "S", "File Groups", "0009", "[x", "\u00C4", "end"};
  const Names keys = {"k", "K", "file0", "FILE1", "a b", "\u00E4", "last"};
  // Lists have room to spare and an empty default, which Wine gives for an empty section as well. No outer
  // blanks or quotes: Wine is known to differ there.
  const Names values = {"", "1", "v;w", "a=b", "C:\\Program Files\\x.dll", "\u20AC \u0416", "it's"};
  TestMachine machine;
  ProfileStrings& ours = machine.platform().profiles;
  std::mt19937 random(20061);
  const auto pick = [&](const Names& from) { return from[random() % from.size()]; };
  for (int step = 0; step < 4000; ++step) {
    const std::string file = "f" + std::to_string(random() % 4) + ".ini";
    const std::string section = pick(sections);
    const std::string key = pick(keys);
    const std::string value = pick(values);
    const unsigned operation = random() % 40;
    const std::size_t size = 1 + random() % 40;
    const auto apply = [&](ProfileStrings& profiles, const std::string& path) {
      const auto done = [](bool isDone) { return std::string(isDone ? "done" : "refused"); };
      if (operation < 14) return done(profiles.WriteString(section, key, value, path));
      if (operation < 17) return done(profiles.WriteString(section, key, std::nullopt, path));
      if (operation == 17) return done(profiles.WriteString(section, std::nullopt, std::nullopt, path));
      if (operation == 18) return done(profiles.WriteSection(section, key + "=" + value + '\0', path));
      if (operation == 19) return profiles.GetString(section, std::nullopt, "", 400, path);
      if (operation == 20) return profiles.GetString(std::nullopt, std::nullopt, "", 400, path);
      return profiles.GetString(section, key, value, size, path);
    };
    ASSERT_EQ(apply(ours, "C:\\" + file), apply(platform_.profiles, At(file)))
        << "step " << step << ", operation " << operation << ": [" << section << "] " << key << "=" << value;
    if (step % 100 != 99) continue;
    ASSERT_TRUE(ours.Flush().empty());
    for (const char* name : {"f0.ini", "f1.ini", "f2.ini", "f3.ini"})
      ASSERT_EQ(machine.Read("drive_c/" + std::string(name)), Get(At(name)))
          << name << " after step " << step;
  }
}

}  // namespace
}  // namespace bxvbwiz
