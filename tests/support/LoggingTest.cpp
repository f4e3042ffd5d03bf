#include <new>

#include "TestSession.h"

namespace bxvbwiz {
namespace {

constexpr char kLog[] = "drive_c/windows/Bx6vbwiz.LOG";

TEST(CallStack, PopsOnlyTheNameOnTop) {
  CallStack stack;
  stack.Pop("A");
  stack.Push("A");
  stack.Push("B");
  stack.Pop("A");
  EXPECT_EQ(stack.Names(), (std::vector<std::string_view>{"A", "B"}));
  stack.Pop("B");
  stack.Pop("A");
  EXPECT_TRUE(stack.Names().empty());
}

TEST(Log, FollowsItsSettings) {
  const std::string kept = "old\r\n";
  const std::string written = "K\xE4se\r\n";
  const std::pair<std::map<std::string, std::string>, std::string> cases[] = {
      {{}, kept},
      {{{"LogLevel", "-1"}, {"NewLog", "1"}}, kept},
      {{{"LogLevel", "99999"}}, kept},
      {{{"LogLevel", "3"}, {"NewLog", "junk"}}, kept + written},
      {{{"LogLevel", "0"}, {"NewLog", "-1"}}, written},
      {{{"LogLevel", "0"}, {"NewLog", "true"}}, written}};
  for (const auto& [settings, text] : cases) {
    TestMachine disk;
    disk.Write(kLog, kept);
    disk.LogSettings(settings);
    Log log(disk.platform());
    log.Init();
    log.Write("K\u00E4se");
    EXPECT_EQ(disk.Read(kLog), text);
  }
}

struct LoggingTest : TestSession {
  LoggingTest() { disk.LogSettings({{"LogLevel", "0"}, {"LogName", "my.log"}}); }
};

TEST_F(LoggingTest, AnErrorIsLoggedWithTheStackRepeatedAfterRetryAndEndsTheWizardAfterCancel) {
  disk.Write("machine.ini", "[Folders]\r\nWindows=C:\\\r\n");
  session();
  user.answers = {Button::Retry, Button::Ok};  // only Retry goes on
  int runs = 0;
  const auto routine = [&] {
    const CallStackEntry outer("Outer");
    const CallStackEntry entry("CFile:Step");
    RetryOrCancel("CFile:Step", [&] {
      const CallStackEntry failing("CFile:Read");
      ++runs;
      CheckSystem(SystemError::FileNotFound, "C:\\x");
    });
  };
  EXPECT_THROW(routine(), WizardEnded);
  EXPECT_EQ(runs, 2);
  const std::string message = ErrorMessage("53 : File not found: C:\\x : Bx6vbwiz");
  EXPECT_EQ(user.messages, std::vector<std::string>(2, message));
  EXPECT_TRUE(user.ended);
  EXPECT_EQ(user.returnCode, 0);
  session().user = nullptr;
  EXPECT_THROW(ReportError("R", RuntimeError(9, "d", "s")), WizardEnded) << "without a user";
  const std::string report =
      "Unexpected Error 53: File not found: C:\\x from Bx6vbwiz in CFile:Read\r\n"
      "Call Stack:\r\n    Outer\r\n    CFile:Step\r\n    CFile:Read\r\n";
  EXPECT_EQ(Stored("C:\\my.log"),
            report + report + "Unexpected Error 9: d from s in R\r\nCall stack is empty\r\n");
}

TEST_F(LoggingTest, AnErrorIsAddedOnceToTheFindingsButTheEndOfTheWizardPasses) {
  session();
  for (int run = 0; run < 2; ++run) EXPECT_NO_THROW(LogAndGoOn("R", [] { throw RuntimeError(9, "d"); }));
  AddFinding(FindingId::StepFailed, {"%%2", "e"});
  const std::vector<Finding>& found = findings().All();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(LinesOf(disk.platform().strings, found[0])[0], "error [step-failed]: A step failed (R): d.");
  EXPECT_EQ(LinesOf(disk.platform().strings, found[1])[0], "error [step-failed]: A step failed (%%2): e.");
  EXPECT_THROW(LogAndGoOn("R", [] { throw WizardEnded{}; }), WizardEnded);
  EXPECT_THROW(RetryOrCancel("R", [] { throw WizardEnded{}; }), WizardEnded);
  EXPECT_THROW(RetryOrCancel("R", [] { throw std::bad_alloc(); }), WizardEnded);
  EXPECT_EQ(user.messages.back(), ErrorMessage("7 : Out of memory : Bx6vbwiz"));
}

TEST_F(LoggingTest, ASessionInsideAnotherGivesWayToItAgain) {
  session();
  {
    Session inner(disk.platform(), StartMode::Automation);
    const SessionScope scope(inner);
  }
  EXPECT_EQ(CurrentSession(), &session());
}

}  // namespace
}  // namespace bxvbwiz
