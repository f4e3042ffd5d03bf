#include "support/NumberedKeys.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/Forwarding.h"
#include "TestMachine.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using Spelling = NumberedKeys::Spelling;

// The rule for an entry: the list is read from its beginning each time.
int NumberByReading(ProfileStrings& profiles, const NumberedKeys::List& list, const std::string& value,
                    bool& found) {
  for (int number = list.first;; ++number) {
    const std::string digits = std::to_string(number);
    const std::string key =
        list.spelling == Spelling::NameThenNumber ? list.name + digits : digits + list.name;
    const std::string read = profiles.GetString(list.section, key, "NONE", list.size, list.file);
    const bool isEnd = read == "NONE" || TrimBlanks(read).empty();
    found = !isEnd && read == value;
    if (found || isEnd) return number;
  }
}

TEST(NumberedKeysTest, EveryStepIsAsIfTheListWereReadFromItsBeginning) {
  TestMachine disk;
  ProfileStrings& engine = disk.platform().profiles;
  NumberedKeys keys{engine};
  // clang-format off
  const char* const values[] = {"a", "A", "b", "NONE", "none", " ", "", " c", "\"q\"", "k=v", "1234567890123456789",
                                "12345678901234567890", "\u00E9;", "b ", "d\r\nE", "e\r\nfile9=e9", "f\r\n[T]\r\nfile0=g"};
  // clang-format on
  const std::vector<NumberedKeys::List> lists = {{"C:\\x.ini", "S", "file", Spelling::NameThenNumber, 20, 0},
                                                 {"C:\\x.ini", "s", "FILE", Spelling::NumberThenName, 20, 1},
                                                 {"C:\\X.INI", "S", "File", Spelling::NameThenNumber, 255, 0},
                                                 {"C:\\x.ini", "T", "file", Spelling::NameThenNumber, 20, 0}};
  const std::string kNeverThere = "\1";
  std::mt19937 random(7);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
#ifdef _WIN32
  constexpr int kRounds = 20;  // Wine takes a millisecond to look for a file
#else
  constexpr int kRounds = 200;
#endif
  for (int round = 0; round < kRounds; ++round) {
    keys.Forget();
    for (const char* section : {"S", "T"}) engine.WriteSection(section, "", "C:\\x.ini");
    // Entries after gaps.
    for (std::size_t left = below(6); left > 0; --left) {
      const auto& list = lists[below(lists.size())];
      engine.WriteString(list.section, "file" + std::to_string(below(6)), values[below(6)], list.file);
      engine.WriteString(list.section, std::to_string(below(6)) + "file", values[below(6)], list.file);
    }
    for (int step = 0; step < 25; ++step) {
      const auto& list = lists[below(lists.size())];
      const std::string value = values[below(std::size(values))];
      bool expectedFound = false;
      const int expected = NumberByReading(engine, list, value, expectedFound);
      int number = -1;
      ASSERT_EQ(keys.Find(list, value, number), expectedFound) << value;
      ASSERT_EQ(number, expected) << value;
      if (below(12) == 0) {
        keys.EmptySection(list.file, list.section);
      } else if (below(4) == 0) {
        ASSERT_EQ(keys.Append(list, value), NumberByReading(engine, list, kNeverThere, expectedFound));
      } else {
        ASSERT_EQ(keys.AppendIfMissing(list, value), expectedFound) << value;
      }
    }
  }
}

struct CountedProfiles : ForwardingProfileStrings {
  using ForwardingProfileStrings::ForwardingProfileStrings;
  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string& file) override {
    return ++calls, ForwardingProfileStrings::GetString(section, key, defaultValue, size, file);
  }
  int calls = 0;
};

TEST(NumberedKeysTest, EachFurtherEntryCostsTheSameFewCalls) {
  TestMachine disk;
  CountedProfiles profiles(disk.platform().profiles);
  NumberedKeys keys(profiles);
  for (int number = 0; number < 400; ++number)
    keys.AppendIfMissing({"C:\\x.ini", "S", "file"}, "f" + std::to_string(number));
  EXPECT_EQ(profiles.calls, 1 + 400 * 2);  // one reads it back, one finds the list's end
}

}  // namespace
}  // namespace bxvbwiz
