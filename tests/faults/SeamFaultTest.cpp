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

using CodeOfFault = FaultCase;

// What no golden case produces: for each finding a call whose failure does.
TEST_P(CodeOfFault, IsProduced) {
  const std::pair<std::string_view, const char*> findings[] = {{"Find", "[file-search-failed]"},
                                                               {"Map", "[file-unreadable]"},
                                                               {"QueryValue", "[registry-key-unreadable]"},
                                                               {"GetString", "[profile-unreadable]"},
                                                               {"WriteString", "[file-not-written]"},
                                                               {"SystemDirectory", "[system-folder-unknown]"},
                                                               {"CreateGuid", "[no-identifier]"},
                                                               {"SetTimes", "[file-times-not-set]"},
                                                               {"LocalDateTimeText", "[report-without-date]"},
                                                               {"GetString", "[system-file-list-empty]"},
                                                               {"Find", "[written-files-not-listed]"},
                                                               {"Find", "[runtime-missing]"}};
  for (const auto& [name, code] : findings) {
    bool isProduced = false;
    for (std::size_t call = plan_.calls.size(); call-- > 0 && !isProduced;) {
      if (plan_.calls[call].name != name) continue;
      Restore();
      for (const std::string& line : Run(FaultPlan(call, 0, true)).said)
        isProduced = isProduced || line.find(code) != std::string::npos;
    }
    EXPECT_TRUE(isProduced) << code << " by a failing " << name;
  }
}

TEST_P(CodeOfFault, NamesAFolderOnceInWhichEveryLookUpFails) {
  Restore();
  FaultPlan plan;
  plan.folder = "C:\\windows\\system32\\";
  std::size_t told = 0;
  for (const std::string& line : Run(plan).said)
    told += StartsWith(line, "bxvbwiz: warning [file-search-failed]: " + plan.folder) ? 1 : 0;
  EXPECT_EQ(told, 1U);
}

INSTANTIATE_TEST_SUITE_P(Golden, CodeOfFault, ::testing::Values("standard"));
INSTANTIATE_TEST_SUITE_P(Golden, SeamFault, ::testing::ValuesIn(kFaultCases));

}  // namespace
}  // namespace bxvbwiz
