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

  // The start routine: reads the logging settings and, in a stand-alone start, creates and shows the wizard.
  void SubMain();
  // Loads the form for an automation object, unless it is loaded, and makes it the form's.
  frmMain& LoadForm(AutomationObject& app);
  // Null when no form is loaded.
  frmMain* Form() const { return form_.get(); }
  // Takes the form from an automation object that goes away.
  void Detach(const AutomationObject& app);

  void WizardEnding() override;
  void UnloadForm() override;

  Session& session() { return session_; }
  Platform& platform() { return platform_; }
  basGlobal& global() { return global_; }
  const std::string& CommandLine() const { return commandLine_; }

  // Keeps a build log open until the component ends, as it always was: a later rebuild cannot delete it.
  void HoldBuildLog(const std::string& path);

  // The automation object of a stand-alone start, kept alive until the wizard ends.
  std::shared_ptr<Application> gApplication;

 private:
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
  std::unique_ptr<frmMain> form_;
  std::unique_ptr<PageDriver> driver_;
  std::unique_ptr<FormView> view_;
};

}  // namespace bxvbwiz
