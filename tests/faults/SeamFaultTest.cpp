#include <iostream>

#include "faults/FaultCase.h"
#include "support/basFile.h"
#include "text/Text.h"

// Every system call of a whole run fails in each way that the system has, once and lastingly.
namespace bxvbwiz {
namespace {

class SeamFault : public FaultCase {
 protected:
  std::string FaultViolation(const FaultPlan& fault) {
    machine_.Restore();
    FaultPlan plan = fault;
    const RunResult broken = machine_.Run(plan);
    // Who lists a folder names the folder.
    const std::string& path = plan_.calls[fault.failingCall].path;
    return Violation(EndsWith(path, "\\*.*") ? GetPathFolder(path) : path, broken);
  }
};

TEST_P(SeamFault, IsToldOrChangesNothing) {
  std::map<std::string, std::vector<FaultPlan>> faults;
  for (std::size_t call = 0; call < plan_.calls.size(); ++call) {
    for (std::size_t way = 1; way <= plan_.calls[call].errors; ++way) {
      for (const bool lasts : {false, true}) faults[plan_.calls[call].name].push_back({{}, call, way, lasts});
    }
  }
  std::size_t runs = 0;
  for (const auto& [name, ofName] : faults) {
    for (const std::size_t position : Sample(ofName.size())) {
      const FaultPlan& fault = ofName[position];
      ++runs;
      EXPECT_EQ(FaultViolation(fault), "")
          << "call " << fault.failingCall << ", " << name << " of " << plan_.calls[fault.failingCall].path
          << ", fails in way " << fault.failingWay << (fault.lasts ? ", for good" : "");
    }
  }
  std::cout << plan_.calls.size() << " calls, " << runs << " faults\n";
}

INSTANTIATE_TEST_SUITE_P(Golden, SeamFault, ::testing::ValuesIn(kFaultCases), CaseName);

}  // namespace
}  // namespace bxvbwiz
