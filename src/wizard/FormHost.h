#pragma once

#include <functional>
#include <memory>

#include "ui/frmMain.h"
#include "wizard/PageDriver.h"
#include "wizard/WizardCore.h"

namespace bxvbwiz {

// Makes the view of a form that was just loaded.
using ViewFactory = std::function<std::unique_ptr<FormView>(frmMain&)>;

// Loads, shows and unloads the one wizard form.
class FormHost : public FormOwner {
 public:
  FormHost(WizardCore& core, ViewFactory viewFactory);
  ~FormHost() override;

  // Loads the form, unless it is loaded, and attaches the automation object to it. A form that is shown stays
  // with the object that runs it. A form that fails to load is not kept.
  frmMain& LoadForm(AutomationObject& app);
  // Shows the loaded form until it is unloaded. Raises error 400 when it is shown already.
  void ShowForm();
  // Unloads the form of a wizard that ended while no handler of the form ran.
  void UnloadEndedForm();
  // Null when no form is loaded.
  frmMain* Form() const { return form_.get(); }
  // Detaches an automation object that is destroyed from the form.
  void Detach(const AutomationObject& app);

  void WizardEnding() override;
  void UnloadForm() override;

  WizardCore& core() { return core_; }
  // Who answers messages while no form is loaded; null by default. Must outlive the host.
  void SetUserWithoutForm(User* user);

  // The automation object of a stand-alone start, kept alive until the wizard ends.
  std::shared_ptr<AutomationObject> gApplication;

 private:
  WizardCore& core_;
  ViewFactory viewFactory_;
  User* userWithoutForm_ = nullptr;
  bool showing_ = false;
  std::unique_ptr<frmMain> form_;
  std::unique_ptr<PageDriver> driver_;
  std::shared_ptr<FormView> view_;  // shared with the call that shows it, which returns after the unloading
};

}  // namespace bxvbwiz
