#pragma once

#include <functional>
#include <memory>
#include <string>

#include "project/basGlobal.h"
#include "support/basLogging.h"
#include "support/CheckedFileSystem.h"
#include "support/CheckedProfileStrings.h"
#include "sysinfo/CheckedRegistry.h"
#include "ui/frmMain.h"

namespace bxvbwiz {

class Application;
class PageDriver;

// Makes the view of a form that was just loaded.
using ViewFactory = std::function<std::unique_ptr<FormView>(frmMain&)>;

// What lives as long as the component is loaded: its session, what it found on the machine, the one wizard
// form, and in a stand-alone start the automation object. Made by the program's entry point.
class Component : public FormOwner {
 public:
  Component(Platform& platform, StartMode mode, std::string commandLine, ViewFactory viewFactory);
  ~Component() override;

  // The start routine: reads the logging settings, runs `afterLogging` (which may see whether a log is
  // written) and, in a stand-alone start, creates the wizard and shows it until it ends. Passes on what the
  // view or `afterLogging` throw; a form that is loaded then stays.
  void SubMain(const std::function<void()>& afterLogging = {});
  // Loads the form for an automation object, unless it is loaded, and makes it the form's. A form that is
  // shown stays with the object that runs it. A form whose loading fails is not kept.
  frmMain& LoadForm(AutomationObject& app);
  // Shows the loaded form until it is unloaded. Raises error 400 when it is shown already.
  void ShowForm();
  // Unloads the form of a wizard that ended while no handler of the form ran.
  void UnloadEndedForm();
  // Null when no form is loaded.
  frmMain* Form() const { return form_.get(); }
  // Takes the form from an automation object that goes away.
  void Detach(const AutomationObject& app);

  void WizardEnding() override;
  void UnloadForm() override;

  Session& session() { return session_; }
  Platform& platform() { return platform_; }
  basGlobal& global() { return global_; }
  // Who is asked and told while no form is loaded; null by default. Must outlive the component.
  void SetUserWithoutForm(User* user);
  const std::string& CommandLine() const { return commandLine_; }

  // Keeps a build log open until the component ends, as it always was: a later rebuild cannot delete it.
  void HoldBuildLog(const std::string& path);

  // The automation object of a stand-alone start, kept alive until the wizard ends.
  std::shared_ptr<Application> gApplication;

 private:
  void SetUser(User* user, Findings* findings);

  CheckedRegistry registry_;
  CheckedFacts facts_;
  CheckedFileSystem files_;
  CheckedProfileStrings profiles_;
  Platform platform_;  // with the checked parts
  Session session_;
  basGlobal global_;
  std::string commandLine_;
  ViewFactory viewFactory_;
  FileHandle buildLog_ = kInvalidFile;
  User* userWithoutForm_ = nullptr;
  bool showing_ = false;
  std::unique_ptr<frmMain> form_;
  std::unique_ptr<PageDriver> driver_;
  std::shared_ptr<FormView> view_;  // shared with the call that shows it, which returns after the unloading
};

}  // namespace bxvbwiz
