#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "analysis/Analysis.h"
#include "ui/frmMain.h"
#include "wizard/WizardCore.h"

namespace bxvbwiz {

// Decides which panel follows which, and what happens when one is left.
class PageDriver : public WizardFlow {
 public:
  PageDriver(WizardCore& core, frmMain& form) : core_(core), form_(form) {}

  void LeavePage(std::int16_t panel) override;
  void GoBack(std::int16_t panel) override;

 private:
  void LeaveWelcome();
  void LeaveInformation();
  void Finish();
  bool ChooseName();

  WizardCore& core_;
  frmMain& form_;
  std::unique_ptr<Analysis> analysis_;  // the one that is shown; null before one was done
  std::string setupProjectName_;        // chosen when the project-information page is left; empty before
};

}  // namespace bxvbwiz
