#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "project/basGlobal.h"
#include "setupgen/SetupAnswers.h"
#include "support/basLogging.h"
#include "support/Findings.h"
#include "ui/Controls.h"
#include "ui/FormPartners.h"

namespace bxvbwiz {

// The panels, in their order.
constexpr std::int16_t kPanelWelcome = 0;
constexpr std::int16_t kPanelInformation = 1;
constexpr std::int16_t kPanelSummary = 2;
constexpr std::int16_t kPanelDataAccess = 3;
constexpr std::int16_t kPanelReport = 4;
constexpr std::size_t kPanelsWithNext = 4;

// Key codes of the form's keyboard handler (winuser.h).
constexpr int kKeyEscape = 27;

// The wizard form without a toolkit: its controls, their handlers and its checks. It is the user to whom
// model and output speak.
//
// A handler runs to its end before the form is destroyed. While one runs, Next, Back, Browse and OK are
// ignored; Cancel, Escape and closing take effect when the present step returns, and not at all while the
// setup project is generated.
class frmMain : public User {
 public:
  frmMain(Session& session, basGlobal& global, Platform& platform, FormOwner& owner);
  ~frmMain() override;

  // Set once after the construction, before anything else.
  void Attach(FormView& view, WizardFlow& flow);
  // Shows an unexpected error of `routine` outside a handler of the form. The form may be gone when this
  // returns.
  void Report(std::string_view routine, const RuntimeError& error);
  // Fills every control from the string table and shows the welcome page.
  void Form_Load();
  // Unloads the form when the wizard has ended outside its handlers.
  void UnloadIfEnded();
  // The form is shown: takes over what the host has set since it was loaded.
  void Form_Activate();

  AutomationObject* App = nullptr;  // not owned; null before the form is shown and after the end

  // Controls of every page. Buttons that each page has are indexed by panel.
  std::string caption;
  std::string font;  // of all controls: "Name=...;Bold=0;Italic=0;Size=8", the size in points
  std::array<CommandButton, kPanelsWithNext> cmdNext;
  std::array<CommandButton, kPanelsWithNext> cmdBack;
  CommandButton cmdCancel, cmdHelp, cmdOK;
  Label lblBranding, lblStatus, lblProgress;
  ProgressBar pbrProgress;
  Frame fraPanel1, fraPanel2, fraPanel3, fraPanel4, fraReport, Frame5;
  // Welcome
  Label lblPanel1Inst, lblVBP;
  TextBox txtVBPname;
  CommandButton cmdBrowse;
  CheckBox chkRebuild;
  // Project information
  Label lblPanel2Inst, lblApplicationName, lblCompanyName, lblApplicationType, lblApplicationVersion,
      lblExeCaption, lblExeName;  // the caption of the executable, and its path
  TextBox txtApplicationName, txtCompanyName, txtApplicationVersion;
  ComboBox cboApplicationType;
  // Data access
  Label lblPanel3Inst;
  CheckBox chkDAOJet, chkDAOODBCDirect, chkRDO, chkADO;
  // Summary
  Label lblPanel3Instr;
  OptionButton optFileView, optProjectView;
  TreeView tvwDependencies, tvwFiles;
  // Report
  TextBox txtReport;

  const Control* defaultButton = nullptr;
  const Control* focus = nullptr;  // asked for; a view with windows moves the focus there and clears it

  // What the user does.
  void cmdNext_Click(std::int16_t index);
  void cmdBack_Click(std::int16_t index);
  void cmdCancel_Click();
  void cmdOK_Click();
  void cmdBrowse_Click();
  void cmdHelp_Click();
  void Form_KeyDown(int keyCode);
  void Form_QueryUnload();  // closed from the control menu
  void txtVBPname_Change();
  void txtApplicationName_Change();
  void txtCompanyName_Change();
  void txtApplicationVersion_Change();
  // An illegal character is refused with a message and becomes 0.
  void txtApplicationName_KeyPress(char32_t& character);
  void txtCompanyName_KeyPress(char32_t& character);
  void optFileView_Click();
  void optProjectView_Click();

  // Pages. Other panel numbers do nothing.
  void ShowPanel(std::int16_t panel);
  void HidePanel(std::int16_t panel);
  void InitPanel(std::int16_t panel);
  // Whether the names of the project-information page may be used; otherwise the user was told.
  bool NamesAreLegal();
  // Analyses a project and shows its trees. False when the page stays: the file cannot be read, or is of a
  // kind that cannot be packaged. May end the wizard.
  bool LoadTrees(const std::string& projectFile);

  // What is shown; null before a project was analysed to the end.
  Analysis* Shown() { return analysis_.get(); }
  // Checks the boxes of the data access that a project needs. The user's own choice stays.
  void CheckDataAccess(const DataAccessNeeds& needs);
  SetupAnswers Answers() const;

  bool generating = false;  // from Finish until the report page is shown

  bool Ended() const { return ended_; }

  // The user.
  Button ShowMessage(const Message& message) override;
  void ShowStatus(const std::string& text) override;
  void ShowProgress(const std::string& text) override;
  void AdvanceProgress() override;
  void SetPointer(Pointer pointer) override;
  void DoEvents() override;
  void CheckCancelled() override;
  void SetReturnCode(std::int16_t code) override;
  void SetProjectFile(const std::string& path) override;
  void WizardHasEnded() override;

 private:
  void Handle(const std::function<void()>& handler);
  void Attempt(const std::function<void()>& handler);
  void Cancel();
  void LoadTexts();
  void RefuseCharacter(char32_t& character, TextId message, TextBox& box);
  void UpdateInformationNext();

  Session& session_;
  basGlobal& global_;
  Platform& platform_;
  FormOwner& owner_;
  FormView* view_ = nullptr;
  WizardFlow* flow_ = nullptr;
  int handlerDepth_ = 0;
  bool cancelPending_ = false;
  bool ended_ = false;
  SetupAnswers proposed_;  // by the project-information page
  std::unique_ptr<Analysis> analysis_;
};

}  // namespace bxvbwiz
