#include <iostream>

#include "faults/FaultCase.h"
#include "support/basFile.h"
#include "text/Text.h"

// Every system call of a whole run fails in each way that the system has, once and lastingly.
namespace bxvbwiz {
namespace {

using SeamFault = FaultCase;

TEST_P(SeamFault, IsReportedOrChangesNothing) {
  std::map<std::string_view, std::vector<FaultPlan>> faults;
  for (std::size_t call = 0; call < plan_.calls.size(); ++call) {
    for (std::size_t way = 0; way < plan_.calls[call].errors; ++way) {
      for (const bool lasts : {false, true}) faults[plan_.calls[call].name].emplace_back(call, way, lasts);
    }
  }
  std::size_t runs = 0;
  for (auto& [name, ofName] : faults) {
    for (const std::size_t position : Sample(ofName.size())) {
      FaultPlan& fault = ofName[position];
      const std::string& path = plan_.calls[fault.failingCall].path;
      Restore();
      ++runs;
      // Who lists a folder names the folder.
      EXPECT_EQ(Violation(EndsWith(path, "\\*.*") ? GetPathFolder(path) : path, Run(fault)), "")
          << "call " << fault.failingCall << ", " << name << " of " << path << ", fails in way "
          << fault.failingWay << (fault.lasts ? ", for good" : "");
    }
  }
  std::cout << plan_.calls.size() << " calls, " << runs << " faults\n";
}

INSTANTIATE_TEST_SUITE_P(Golden, SeamFault, ::testing::ValuesIn(kFaultCases));

}  // namespace
}  // namespace bxvbwiz
