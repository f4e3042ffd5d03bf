#pragma once

#include <map>
#include <string>

#include "cli/Options.h"
#include "cli/Outcome.h"
#include "ui/FormPartners.h"

namespace bxvbwiz {

// The form without a window: messages go to standard error, questions are answered by the options or asked on
// the terminal, and progress is a bar on a terminal.
class ConsoleView : public FormView {
 public:
  // `outcome` receives the messages, and what the form knows when it is unloaded; both outlive the view.
  ConsoleView(frmMain& form, const Options& options, Outcome& outcome);

  void ShowModal() override {}  // nobody runs this form: RunWizard presses its buttons
  Button ShowMessage(const Message& message, const std::string& title) override;
  void Refresh() override;
  void ProcessEvents() override {}
  void SetPointer(Pointer) override {}
  std::string BrowseForFile(const std::string&, const std::string&) override { return {}; }
  void OpenHelp(const std::string&) override {}
  int TextWidth(const std::string& text) const override;
  int ExeLabelWidth() const override { return 80; }
  void Unload(const frmMain& form) override;

 private:
  Button Answer(const Message& message);
  bool AskOnTerminal(const Message& message, Button& answer);
  void ClearBar();

  frmMain& form_;
  const Options& options_;
  Outcome& outcome_;
  bool showsBar_;
  bool barShown_ = false;
  std::string lastBar_;
  std::map<std::string, int> retries_;  // by the question's text
};

}  // namespace bxvbwiz
