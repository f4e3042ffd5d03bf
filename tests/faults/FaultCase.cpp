#include "faults/FaultCase.h"

#include <algorithm>
#include <cstdlib>

namespace bxvbwiz {

std::string CaseName(const ::testing::TestParamInfo<const char*>& test) {
  std::string name = test.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

std::vector<std::size_t> Sample(std::size_t count) {
  constexpr std::size_t kTried = 6;  // about; at odd distances, so that both of a pair come up
  const char* wanted = std::getenv("BXVBWIZ_FAULTS");
  const bool all = wanted != nullptr && std::string(wanted) == "all";
  std::vector<std::size_t> sample;
  for (std::size_t position = 0; position < count; position += all ? 1 : count / kTried / 2 * 2 + 1) {
    sample.push_back(position);
  }
  return sample;
}

FaultCase::FaultCase() : machine_(GetParam()) {
  before_ = machine_.Files();
  plain_ = machine_.Run(plan_);
  FaultPlan second;
  twice_ = machine_.Run(second);
}

void FaultCase::SetUp() {
  ASSERT_EQ(plain_.code, 0);
  ASSERT_EQ(twice_.code, 0);
}

std::string FaultCase::Violation(const std::string& path, const RunResult& broken) {
  std::string wrong = Damage(before_, broken.files) + Leftovers(broken.files);
  const bool isSame =
      broken.code == plain_.code && broken.output == plain_.output && broken.files == plain_.files;
  if (!isSame) wrong += NotTold(path, broken);
  if (!broken.repeated.empty()) wrong += "told more than once:\n" + broken.repeated;
  if (broken.files != plain_.files && broken.files != before_) wrong += NotRepeatable(broken.files);
  return wrong;
}

std::string FaultCase::NotTold(const std::string& path, const RunResult& broken) const {
  std::string wrong;
  if (broken.code == 0) wrong += "the run counts as finished and complete\n";
  std::string said;
  for (const std::string& line : broken.told) {
    if (plain_.told.count(line) != 0) continue;
    if (line.find(path) != std::string::npos) return wrong;
    said += "  " + line + "\n";
  }
  return wrong + (said.empty() ? "nothing is told\n" : "what is told does not name it:\n" + said);
}

std::string FaultCase::NotRepeatable(const Snapshot& left) {
  FaultPlan none;
  const RunResult again = machine_.Run(none);
  std::string wrong = Damage(left, again.files);
  if (again.code != 0) wrong += "the next run ends with " + std::to_string(again.code) + "\n";
  const bool folderMade = left.count("drive_c/Setups/Demo/") != 0;
  const std::string folder = folderMade ? "drive_c/Setups/Demo-1/" : "drive_c/Setups/Demo/";
  if (Below(again.files, folder) != Below(folderMade ? twice_.files : plain_.files, folder)) {
    wrong += "the next run does not make the right project\n";
  }
  return wrong;
}

}  // namespace bxvbwiz
