#include "contract/ContractPlatform.h"

namespace bxvbwiz {
namespace {

class ContractProcesses : public ContractTest {
 protected:
  // What the program saw, or why it did not run.
  std::string Run(const std::string& commandLine) {
    files_.Delete(At("child.log"));
    const std::unique_ptr<Process> process = platform_.processes.Start(commandLine);
    if (!process) return "not started";
    if (process->Wait(60'000) != WaitResult::Ended) return "did not end";
    return Get(At("child.log"));
  }
};

TEST_F(ContractProcesses, AProgramIsFoundAsWindowsFindsItAndGetsItsArguments) {
  const std::string program = contract_->ChildProgram();
  const std::string bare = program.substr(0, program.rfind('.'));
  for (const std::string& spelling :
       {"\"" + program + "\"", program, bare, "\"" + bare + "\"", std::string("..\\My Tools\\CHILD.EXE"),
        std::string("\"..\\My Tools\\child\"")}) {
    EXPECT_EQ(Run(spelling + " /make \"a b\" \"\" c\\\"d"), "[/make][a b][][c\"d]") << spelling;
  }
}

TEST_F(ContractProcesses, WhatCannotStartGivesNoProcess) {
  Put("text.exe", "no program");
  ASSERT_EQ(files_.MakeDirectory(At("folder.exe")), SystemError::Success);
  for (const std::string& program : {At("none.exe"), At("text.exe"), At("folder.exe"),
                                     std::string("bxvbwiz_none"), std::string(), std::string("\"")}) {
    EXPECT_EQ(Run(program), "not started") << program;
  }
}

TEST_F(ContractProcesses, WaitingEndsWithItsTimeAndWhatTheProgramWroteIsSeen) {
  const std::unique_ptr<Process> process =
      platform_.processes.Start("\"" + contract_->ChildProgram() + "\" wait");
  ASSERT_TRUE(process);
  EXPECT_EQ(process->Wait(0), WaitResult::TimedOut);
  EXPECT_EQ(process->Wait(30), WaitResult::TimedOut);
  Put("stop");
  EXPECT_EQ(process->Wait(60'000), WaitResult::Ended);
  EXPECT_EQ(process->Wait(0), WaitResult::Ended);
  EXPECT_EQ(Get(At("child.log")), "[wait]");
}

}  // namespace
}  // namespace bxvbwiz
