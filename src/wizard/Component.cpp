#include "wizard/Component.h"

#include "wizard/Application.h"
#include "wizard/PageDriver.h"

namespace bxvbwiz {

Component::Component(Platform& platform, StartMode mode, std::string commandLine, ViewFactory viewFactory)
    : registry_(platform.registry),
      facts_(platform.facts),
      files_(platform.files),
      profiles_(platform.profiles),
      platform_{registry_,
                facts_,
                files_,
                profiles_,
                platform.processes,
                platform.guids,
                platform.settings,
                platform.clock,
                platform.codePage,
                platform.strings},
      session_(platform_, mode),
      global_(platform_),
      commandLine_(std::move(commandLine)),
      viewFactory_(std::move(viewFactory)) {}

Component::~Component() {
  const SessionScope scope(session_);
  gApplication.reset();
  UnloadForm();
  if (buildLog_ != kInvalidFile) platform_.files.Close(buildLog_);
}

void Component::HoldBuildLog(const std::string& path) {
  if (buildLog_ != kInvalidFile) return;
  buildLog_ = platform_.files.Open(path, kGenericRead, kShareRead, kOpenExisting, kAttributeNormal);
}

void Component::SubMain(const std::function<void()>& afterLogging) {
  const SessionScope scope(session_);
  {
    const CallStackEntry entry("Sub Main");
    session_.log.Init();
    if (afterLogging) afterLogging();
    if (session_.startMode() != StartMode::StandAlone) return;
    gApplication = std::make_shared<Application>(*this);
  }
  if (form_ == nullptr) {
    gApplication.reset();  // ended by the answer to an error of its creation
  } else {
    ShowForm();
  }
}

void Component::ShowForm() {
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

void Component::SetUserWithoutForm(User* user) {
  userWithoutForm_ = user;
  if (form_ == nullptr) SetUser(user, nullptr);
}

void Component::SetUser(User* user, Findings* findings) {
  session_.user = global_.user = user;
  session_.findings = findings;
}

frmMain& Component::LoadForm(AutomationObject& app) {
  if (form_ == nullptr) {
    try {
      form_ = std::make_unique<frmMain>(session_, global_, platform_, *this);
      driver_ = std::make_unique<PageDriver>(*this, *form_);
      view_ = viewFactory_(*form_);
      form_->Attach(*view_, *driver_);
      SetUser(form_.get(), &form_->Found());
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

void Component::Detach(const AutomationObject& app) {
  if (form_ == nullptr || form_->App != &app) return;
  form_->App = nullptr;
  UnloadForm();
}

void Component::WizardEnding() {
  if (form_ == nullptr || form_->App == nullptr) return;
  form_->App->SetStillExecuting(false);
  form_->App = nullptr;
}

void Component::UnloadEndedForm() {
  if (form_ != nullptr) form_->UnloadIfEnded();
}

void Component::UnloadForm() {
  // While there is somebody to be told that the results cannot be written.
  if (session_.startMode() == StartMode::StandAlone) gApplication.reset();
  SetUser(userWithoutForm_, nullptr);
  form_.reset();
  driver_.reset();
  view_.reset();
}

}  // namespace bxvbwiz
