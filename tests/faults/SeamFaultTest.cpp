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
  std::string codes;
  for (auto& [name, ofName] : faults) {
    for (const std::size_t position : Sample(ofName.size())) {
      FaultPlan& fault = ofName[position];
      const std::string& path = plan_.calls[fault.failingCall].path;
      Restore();
      ++runs;
      const RunResult broken = Run(fault);
      for (const std::string& line : broken.said) codes += line;
      // Who lists a folder names the folder.
      EXPECT_EQ(Violation(EndsWith(path, "\\*.*") ? GetPathFolder(path) : path, broken), "")
          << "call " << fault.failingCall << ", " << name << " of " << path << ", fails in way "
          << fault.failingWay << (fault.lasts ? ", for good" : "");
    }
  }
  // No golden case produces these. The other cases make fewer calls.
  for (const char* code : {"[file-search-failed]", "[file-unreadable]", "[registry-key-unreadable]",
                           "[profile-unreadable]", "[file-not-written]", "[system-folder-unknown]",
                           "[no-identifier]", "[file-times-not-set]", "[report-without-date]",
                           "[system-file-list-empty]", "[written-files-not-listed]", "[runtime-missing]"}) {
    if (std::string(GetParam()) == "standard") EXPECT_NE(codes.find(code), std::string::npos) << code;
  }
  std::cout << plan_.calls.size() << " calls, " << runs << " faults\n";
}

INSTANTIATE_TEST_SUITE_P(Golden, SeamFault, ::testing::ValuesIn(kFaultCases));

}  // namespace
}  // namespace bxvbwiz
