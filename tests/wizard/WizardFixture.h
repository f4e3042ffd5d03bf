#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "sysinfo/Key.h"
#include "TestMachine.h"
#include "wizard/Application.h"
#include "wizard/SubMain.h"

// Drives the whole wizard without a window: a view that answers by a script, and a small project on a machine
// folder.
namespace bxvbwiz {

// What the view has seen; it outlives the form.
struct Seen {
  std::vector<TextId> messages;
  std::string told;                  // their texts
  std::map<TextId, Button> answers;  // Ok without one
  std::function<void(frmMain&)> whileEventsRun;
  std::map<int, std::string> progress;  // what the label said while the bar stood there
  std::string browsed = "C:\\Src\\App.vbp";
  std::string topic;  // of the help
  bool unloaded = false;
};

class ScriptedView : public FormView {
 public:
  ScriptedView(frmMain& form, Seen& seen) : form_(form), seen_(seen) {}
  void ShowModal() override {}
  Button ShowMessage(const Message& message, const std::string&) override {
    seen_.messages.push_back(message.number);
    seen_.told += message.text + "\n" + message.detail + "\n";
    const auto answer = seen_.answers.find(message.number);
    if (message.number != TextId::UnexpectedError)
      return answer == seen_.answers.end() ? Button::Ok : answer->second;
    // Retry once, then Cancel.
    return seen_.answers.erase(TextId::UnexpectedError) != 0 ? Button::Retry : Button::Cancel;
  }
  void Refresh() override {
    if (form_.pbrProgress.visible) seen_.progress.emplace(form_.pbrProgress.value, form_.lblProgress.text);
  }
  void ProcessEvents() override {
    if (seen_.whileEventsRun) seen_.whileEventsRun(form_);
  }
  void SetPointer(Pointer) override {}
  std::string BrowseForFile(const std::string&, const std::string&) override { return seen_.browsed; }
  void OpenHelp(const std::string&, const std::string& topic) override { seen_.topic = topic; }
  int TextWidth(const std::string& text) const override { return static_cast<int>(text.size()); }
  int ExeLabelWidth() const override { return 20; }
  void Unload(const frmMain&) override { seen_.unloaded = true; }

 private:
  frmMain& form_;
  Seen& seen_;
};

class WizardTest : public testing::Test {
 protected:
  WizardTest() {
    machine_.InstallProduct();
    machine_.Write("drive_c/Src/App.vbp",
                   "Type=Exe\nForm=Main.frm\nName=\"My: App. \"\nExeName32=App.exe\nMajorVer=2\n"
                   "Path32=Release\\Final\nRevisionVer=7\nVersionCompanyName=Acme Inc.\n");
    machine_.Write("drive_c/Src/Main.frm", "VERSION 5.00\r\n");
    machine_.Write("drive_c/Src/Release/Final/App.exe", "MZ");
  }

  void Start(StartMode mode = StartMode::Automation, const std::string& commandLine = "",
             Platform* platform = nullptr) {
    host_.reset();
    core_ = std::make_unique<WizardCore>(platform == nullptr ? machine_.platform() : *platform, mode);
    host_ = std::make_unique<FormHost>(*core_, [this](frmMain& form) { return MakeView(form); });
    SubMain(*host_, commandLine);
    if (mode == StartMode::Automation) app_ = std::make_unique<Application>(*host_);
  }
  virtual std::unique_ptr<FormView> MakeView(frmMain& form) {
    return std::make_unique<ScriptedView>(form, seen_);
  }
  void TearDown() override {
    app_.reset();
    host_.reset();
    core_.reset();
  }
  frmMain& Form() { return *host_->Form(); }
  void LeaveWelcome(const std::string& project = "C:\\Src\\App.vbp") {
    Form().txtVBPname.text = project;
    Form().txtVBPname_Change();
    Form().cmdNext_Click(kPanelWelcome);
  }

  TestMachine machine_;
  Seen seen_;
  std::unique_ptr<WizardCore> core_;
  std::unique_ptr<FormHost> host_;
  std::unique_ptr<Application> app_;
};

}  // namespace bxvbwiz
