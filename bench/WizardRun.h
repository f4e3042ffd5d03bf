#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "analysis/Analysis.h"
#include "TestMachine.h"
#include "wizard/Generation.h"
#include "wizard/WizardCore.h"

namespace bxvbwiz {

// The wizard on a machine folder without a user: every question is answered with Yes.
class WizardRun {
 public:
  explicit WizardRun(Platform& platform) : core_(platform, StartMode::Automation) { core_.SetUser(&user_); }

  // Throws when the project was not read.
  void Analyse(const std::string& project) {
    const SessionScope scope(core_.session());
    analysis_ = std::make_unique<Analysis>(core_.platform(), user_, core_.global());
    if (analysis_->LoadTrees(project, false, [](const CProject&) { return false; }) != Analysis::Result::Done)
      throw std::runtime_error("the analysis failed");
  }
  // Makes the setup project.
  void Generate() {
    const SessionScope scope(core_.session());
    const SetupAnswers answers = ProposedAnswers(core_.platform().strings, *analysis_->Project(), "");
    GeneratedSetup setup;
    Generation generation(core_.platform(), core_.global(), user_, *analysis_, answers,
                          ChooseSetupProjectName(core_.platform(), user_, answers.applicationName), setup);
    generation.MakeSetupProject();
    generation.SaveReport();
  }

 private:
  class YesUser : public User {
   public:
    Button Display(const Message&) override { return Button::Yes; }
  };

  YesUser user_;
  WizardCore core_;
  std::unique_ptr<Analysis> analysis_;
};

}  // namespace bxvbwiz
