#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "TestMachine.h"
#include "wizard/Application.h"

namespace bxvbwiz {

// The wizard on a machine folder with nobody before it: every question is answered with Yes.
class WizardRun {
 public:
  explicit WizardRun(Platform& platform)
      : component_(platform, StartMode::Automation, "",
                   [](frmMain&) { return std::make_unique<SilentView>(); }),
        app_(component_) {}

  // Welcome page, Next. Throws when the project was not read.
  void Analyse(const std::string& project) {
    frmMain& form = *component_.Form();
    form.txtVBPname.text = project;
    form.cmdNext_Click(kPanelWelcome);
    if (!form.fraPanel2.visible) throw std::runtime_error("the analysis failed");
  }
  // The other pages up to the report. Throws when no setup project was made.
  void Generate() {
    frmMain& form = *component_.Form();
    form.cmdNext_Click(kPanelInformation);
    form.cmdNext_Click(kPanelSummary);
    if (!form.fraReport.visible) throw std::runtime_error("the generation failed");
  }

 private:
  class SilentView : public FormView {
   public:
    void ShowModal() override {}
    Button ShowMessage(const Message&, const std::string&) override { return Button::Yes; }
    void Refresh() override {}
    void ProcessEvents() override {}
    void SetPointer(Pointer) override {}
    std::string BrowseForFile(const std::string&, const std::string&) override { return {}; }
    void OpenHelp(const std::string&) override {}
    int TextWidth(const std::string&) const override { return 0; }
    int ExeLabelWidth() const override { return 0; }
    void Unload(const frmMain&) override {}
  };

  Component component_;
  Application app_;
};

}  // namespace bxvbwiz
