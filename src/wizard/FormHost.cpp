#include "wizard/FormHost.h"

namespace bxvbwiz {

FormHost::FormHost(WizardCore& core, ViewFactory viewFactory)
    : core_(core), viewFactory_(std::move(viewFactory)) {}

FormHost::~FormHost() {
  const SessionScope scope(core_.session());
  gApplication.reset();
  UnloadForm();
}

void FormHost::ShowForm() {
  if (showing_) throw RuntimeError(kErrorFormShown, "Form already displayed; can't show modally");
  showing_ = true;
  struct Shown {
    bool& showing;
    ~Shown() { showing = false; }
  } const shown{showing_};
  const std::shared_ptr<FormView> view = view_;
  form_->Form_Activate();
  if (form_ != nullptr) view->ShowModal();
}

void FormHost::SetUserWithoutForm(User* user) {
  userWithoutForm_ = user;
  if (form_ == nullptr) core_.SetUser(user);
}

frmMain& FormHost::LoadForm(AutomationObject& app) {
  if (form_ == nullptr) {
    try {
      form_ = std::make_unique<frmMain>(core_.session(), core_.global(), core_.platform(), *this);
      driver_ = std::make_unique<PageDriver>(core_, *form_);
      view_ = viewFactory_(*form_);
      form_->Attach(*view_, *driver_);
      core_.SetUser(form_.get());
      form_->App = &app;
      form_->Form_Load();
    } catch (...) {
      UnloadForm();
      throw;
    }
  }
  if (!showing_) form_->App = &app;
  return *form_;
}

void FormHost::Detach(const AutomationObject& app) {
  if (form_ == nullptr || form_->App != &app) return;
  form_->App = nullptr;
  UnloadForm();
}

void FormHost::WizardEnding() {
  if (form_ == nullptr || form_->App == nullptr) return;
  form_->App->SetStillExecuting(false);
  form_->App = nullptr;
}

void FormHost::UnloadEndedForm() {
  if (form_ != nullptr) form_->UnloadIfEnded();
}

void FormHost::UnloadForm() {
  // While the user can still see a message that the results cannot be written.
  if (core_.session().startMode() == StartMode::StandAlone) gApplication.reset();
  core_.SetUser(userWithoutForm_);
  form_.reset();
  driver_.reset();
  view_.reset();
}

}  // namespace bxvbwiz
