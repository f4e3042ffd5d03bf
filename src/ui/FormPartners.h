#pragma once

#include <cstdint>
#include <string>

#include "support/User.h"

// What the form needs from its surroundings, as interfaces, so that it can be below them.
namespace bxvbwiz {

class frmMain;

// The automation object that showed the form.
class AutomationObject {
 public:
  virtual ~AutomationObject() = default;
  virtual std::string ProjectPath() const = 0;      // the project to start with, or empty
  virtual bool ShowsPage2() const = 0;              // whether the project-information page is shown
  virtual std::string ProposedAppName() const = 0;  // or empty
  virtual void SetReturnCode(std::int16_t code) = 0;
  virtual void SetProjectFile(const std::string& path) = 0;
  virtual void SetStillExecuting(bool executing) = 0;
};

// What the form's buttons ask for. Each may throw WizardEnded.
class WizardFlow {
 public:
  virtual ~WizardFlow() = default;
  virtual void LeavePage(std::int16_t panel) = 0;  // Next or Finish
  virtual void GoBack(std::int16_t panel) = 0;
};

// The view of the form. It has no rules of its own: it shows the controls and calls the form's handlers.
class FormView {
 public:
  virtual ~FormView() = default;
  // Shows the form, owned by the calling thread's active window, and lets messages flow until it is unloaded.
  virtual void ShowModal() = 0;
  // Shows a message box and gives the button. May end the wizard (throw WizardEnded) when there is no answer.
  virtual Button ShowMessage(const Message& message, const std::string& title) = 0;
  // The controls have changed: show them.
  virtual void Refresh() = 0;
  // Lets the user's pending events run.
  virtual void ProcessEvents() = 0;
  virtual void SetPointer(Pointer pointer) = 0;
  // Asks for a file; empty when the user cancelled. `fileType` describes files of `pattern` ("*.vbp").
  virtual std::string BrowseForFile(const std::string& fileType, const std::string& pattern) = 0;
  // Opens a page of a help file that lies beside the program.
  virtual void OpenHelp(const std::string& helpFile, const std::string& topic) = 0;
  // Width of a text, and of the label that names the executable, in one unit.
  virtual int TextWidth(const std::string& text) const = 0;
  virtual int ExeLabelWidth() const = 0;
  // The wizard has ended; the form is unloaded when this returns.
  virtual void Unload(const frmMain& form) = 0;
};

// The loader of the form.
class FormOwner {
 public:
  virtual ~FormOwner() = default;
  // The wizard has ended: detach the automation object from the form.
  virtual void WizardEnding() = 0;
  // The outermost handler has returned after the end: destroy the form. It is not used afterwards.
  virtual void UnloadForm() = 0;
};

}  // namespace bxvbwiz
