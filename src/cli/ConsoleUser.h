#pragma once

#include <map>
#include <string>

#include "cli/Options.h"
#include "cli/Outcome.h"
#include "project/basGlobal.h"

namespace bxvbwiz {

// The user at a console: messages go to standard error, questions are answered by the options or asked on the
// terminal, and a terminal shows progress as a bar.
class ConsoleUser : public User {
 public:
  // `outcome` receives the messages and their answers, and what the wizard leaves for its host.
  ConsoleUser(basGlobal& global, const Options& options, Outcome& outcome);

  void ShowStatus(const std::string& text) override;
  void ShowProgress(const std::string& text) override;
  void AdvanceProgress() override;
  void ExpectSteps(int steps) override;
  // Ctrl-C ends the wizard at its next step.
  void DoEvents() override { CheckCancelled(); }
  void CheckCancelled() override;
  void SetReturnCode(std::int16_t code) override { outcome_.returnCode = code; }
  void SetProjectFile(const std::string& path) override { outcome_.projectFile = path; }

  // Takes the progress bar off the terminal.
  void ClearBar();

 private:
  Button Display(const Message& message) override;
  Button Answer(const Message& message);
  bool AskOnTerminal(const Message& message, Button& answer);
  void DrawBar();

  basGlobal& global_;
  const Options& options_;
  Outcome& outcome_;
  bool showsBar_;
  bool barShown_ = false;
  std::string status_;
  std::string step_;
  int progress_ = 0;
  int steps_ = 100;
  std::string lastBar_;
  std::map<std::string, int> retries_;  // by the question's text
};

}  // namespace bxvbwiz
