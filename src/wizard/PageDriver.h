#pragma once

#include <cstdint>
#include <string>

#include "ui/frmMain.h"
#include "wizard/Component.h"

namespace bxvbwiz {

// Decides which panel follows which, names the new setup project and runs the generation.
class PageDriver : public WizardFlow {
 public:
  PageDriver(Component& component, frmMain& form) : component_(component), form_(form) {}

  void LeavePage(std::int16_t panel) override;
  void GoBack(std::int16_t panel) override;
  bool RebuildProject() override;

 private:
  void LeaveWelcome();
  void LeaveInformation();
  void Finish();
  void ChooseSetupProjectName();

  Component& component_;
  frmMain& form_;
};

// The folder under which Borvex keeps its setup projects, with a trailing backslash. A missing product key
// is shown and ends the wizard; a missing value raises error 91.
std::string DataFolder(Platform& platform, User& user);

// A text value of a product key. A missing key is shown and ends the wizard; a missing value raises
// error 91, one that cannot be read as text error 75.
std::string ProductValue(Platform& platform, User& user, RegistryHandle root, const std::string& path,
                         const std::string& valueName);

}  // namespace bxvbwiz
