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

// The smallest size of the form, without its border; Back and Next.
constexpr Place kFormPlace{0, 0, 330, 228};
constexpr Place kBackPlace{102, 208, 50, 14, kMovesRight | kMovesDown};
constexpr Place kNextPlace{152, 208, 50, 14, kMovesRight | kMovesDown};

// Key codes of the form's keyboard handler (winuser.h).
constexpr int kKeyEscape = 27;

// The wizard form without a toolkit: its controls, their handlers and its checks. For the model and the
// output it is the user.
//
// A handler runs to its end before the form is destroyed. While one runs, Next, Back, Browse and OK are
// ignored; Cancel, Escape and closing take effect when the present step returns, and not at all while the
// setup project is generated. A view shows what is ignored as disabled.
class frmMain : public User, public Container {
 public:
  frmMain(Session& session, basGlobal& global, Platform& platform, FormOwner& owner);
  ~frmMain() override;

  // Called once after construction, before anything else.
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

  std::string caption;
  std::string font;  // of all controls: "Name=...;Bold=0;Italic=0;Size=8", the size in points

  // The controls, one row each: its place, its texts, and the handlers of what the user does to it. A view
  // needs nothing else.
  Frame fraPanel1{*this}, fraPanel2{*this}, fraPanel3{*this}, fraPanel4{*this}, fraReport{*this};
  // Welcome
  Label lblPanel1Inst{fraPanel1, {10, 10, 310, 28, kWidens}, {TextId::WelcomeInstruction}};
  Label lblVBP{fraPanel1, {10, 50, 310, 9}, {TextId::VisualBasicProjectFile}};
  TextBox txtVBPname{fraPanel1, {10, 61, 250, 14, kWidens}, {kNoText, TextId::ProjectFileTip}, [this] {
                       txtVBPname_Change();
                     }};
  CommandButton cmdBrowse{
      fraPanel1, {266, 61, 54, 14, kMovesRight}, {TextId::Browse, TextId::BrowseTip}, [this] {
        cmdBrowse_Click();
      }};
  CheckBox chkRebuild{fraPanel1, {10, 84, 310, 10}, {TextId::RebuildProject, TextId::RebuildTip}};
  Label lblStatus{fraPanel1, {10, 176, 310, 9, kMovesDown | kWidens}, {}, Label::kPath};
  // Project information
  Label lblPanel2Inst{fraPanel2, {10, 10, 310, 20, kWidens}, {TextId::ProjectInformationInstruction}};
  Label lblApplicationName{fraPanel2, {10, 41, 90, 9}, {TextId::ApplicationName}};
  TextBox txtApplicationName{fraPanel2,
                             {104, 39, 216, 14, kWidens},
                             {TextId::YourApplicationName, TextId::ApplicationNameTip},
                             [this] { txtApplicationName_Change(); },
                             [this](char32_t& character) { txtApplicationName_KeyPress(character); }};
  Label lblCompanyName{fraPanel2, {10, 63, 90, 9}, {TextId::CompanyName}};
  TextBox txtCompanyName{fraPanel2,
                         {104, 61, 216, 14, kWidens},
                         {TextId::YourCompany, TextId::CompanyNameTip},
                         [this] { txtCompanyName_Change(); },
                         [this](char32_t& character) { txtCompanyName_KeyPress(character); }};
  Label lblApplicationType{fraPanel2, {10, 86, 90, 9}, {TextId::ApplicationType}};
  ComboBox cboApplicationType{
      fraPanel2, {104, 84, 216, 90, kWidens}, {TextId::DatabaseApplication, TextId::ApplicationTypeTip}};
  Label lblApplicationVersion{fraPanel2, {10, 107, 90, 9}, {TextId::ApplicationVersion}};
  TextBox txtApplicationVersion{
      fraPanel2, {104, 105, 80, 14}, {TextId::FirstVersion, TextId::ApplicationVersionTip}, [this] {
        txtApplicationVersion_Change();
      }};
  Label lblExeCaption{fraPanel2, {10, 130, 90, 9}, {TextId::ApplicationExecutable}};
  Label lblExeName{fraPanel2, {104, 130, 216, 9, kWidens}, {TextId::ApplicationExecutable}, Label::kPath};
  // Summary
  Label lblPanel3Instr{fraPanel3, {10, 10, 310, 20, kWidens}, {TextId::SummaryInstruction}};
  OptionButton optFileView{
      fraPanel3, {10, 34, 110, 10}, {TextId::FileGroupView}, [this] { optFileView_Click(); }};
  OptionButton optProjectView{
      fraPanel3, {130, 34, 110, 10}, {TextId::ProjectView}, [this] { optProjectView_Click(); }};
  TreeView tvwFiles{fraPanel3, {10, 48, 310, 122, kWidens | kHeightens}};
  TreeView tvwDependencies{fraPanel3, {10, 48, 310, 122, kWidens | kHeightens}};
  Label lblProgress{fraPanel3, {10, 177, 120, 9, kMovesDown}, {}, Label::kPath};
  ProgressBar pbrProgress{fraPanel3, {134, 176, 186, 10, kMovesDown | kWidens}};
  // Data access
  Label lblPanel3Inst{fraPanel4, {10, 10, 310, 20, kWidens}, {TextId::DataAccessInstruction}};
  Frame Frame5{fraPanel4, {10, 36, 310, 84, kWidens}, {TextId::DataAccessOptions}};
  CheckBox chkDAOJet{fraPanel4, {20, 52, 280, 10}, {TextId::DaoWithJet}};
  CheckBox chkDAOODBCDirect{fraPanel4, {20, 68, 280, 10}, {TextId::DaoWithOdbcDirect}};
  CheckBox chkRDO{fraPanel4, {20, 84, 280, 10}, {TextId::Rdo}};
  CheckBox chkADO{fraPanel4, {20, 100, 280, 10}, {TextId::Ado}};
  // Report
  TextBox txtReport{fraReport, {10, 10, 310, 176, kWidens | kHeightens}};
  // Below every page. Back and Next of all pages stand in one place each, and have the page's number.
  Label lblBranding{*this, {10, 195, 30, 9, kMovesDown}, {}, Label::kPath};
  Line linBranding{*this, {40, 199, 280, 1, kMovesDown | kWidens}};
  std::array<CommandButton, kPanelsWithNext> cmdBack{
      {{*this, fraPanel1, kBackPlace, {TextId::Back}, [this] { cmdBack_Click(0); }},
       {*this, fraPanel2, kBackPlace, {TextId::Back}, [this] { cmdBack_Click(1); }},
       {*this, fraPanel3, kBackPlace, {TextId::Back}, [this] { cmdBack_Click(2); }},
       {*this, fraPanel4, kBackPlace, {TextId::Back}, [this] { cmdBack_Click(3); }}}};
  std::array<CommandButton, kPanelsWithNext> cmdNext{
      {{*this, fraPanel1, kNextPlace, {TextId::Next}, [this] { cmdNext_Click(0); }},
       {*this, fraPanel2, kNextPlace, {TextId::Next}, [this] { cmdNext_Click(1); }},
       {*this, fraPanel3, kNextPlace, {TextId::Finish}, [this] { cmdNext_Click(2); }},
       {*this, fraPanel4, kNextPlace, {TextId::Next}, [this] { cmdNext_Click(3); }}}};
  CommandButton cmdOK{*this, fraReport, kNextPlace, {TextId::Ok}, [this] { cmdOK_Click(); }};
  CommandButton cmdCancel{
      *this, {211, 208, 50, 14, kMovesRight | kMovesDown}, {TextId::Cancel}, [this] { cmdCancel_Click(); }};
  CommandButton cmdHelp{
      *this, {270, 208, 50, 14, kMovesRight | kMovesDown}, {TextId::Help}, [this] { cmdHelp_Click(); }};

  const Control* defaultButton = nullptr;
  const Control* focus = nullptr;  // a view with windows moves the focus there and sets this to null

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

  // Pages. Other panel numbers do nothing. The view follows when the former page is hidden, and so never sees
  // two of them.
  void ShowPanel(std::int16_t panel);
  void HidePanel(std::int16_t panel);
  void InitPanel(std::int16_t panel);
  // Whether the form heeds what the user does to a control: it is enabled, and no step of the wizard ignores
  // it.
  bool Heeds(const Control& control) const;
  // Whether a step runs that may take long and ignores most controls.
  bool IsWorking() const { return working_; }
  // What a node of a tree is, for its tool tip: its name, which may be cut, and the meaning of its picture.
  std::string TipOf(const std::string& name, NodeImage image) const;
  // Why the names of the project-information page may not be used, if so: a pasted or given text has not
  // passed the check of the keys.
  std::optional<NameRefusal> Refusal() const;
  // Shows the message and leads the user to the box. The page must be visible.
  void Refuse(const NameRefusal& refusal);
  // Shows the trees of an analysis, which must live while it is shown; null for none.
  void Show(const Analysis* analysis);
  // What is shown; null for none.
  const Analysis* Shown() const { return analysis_; }
  // Checks the boxes of the data access that a project needs. The user's own choice stays.
  void CheckDataAccess(const DataAccessNeeds& needs);
  SetupAnswers Answers() const;

  bool generating = false;  // from Finish until the report page is shown

  // The user.
  void ShowStatus(const std::string& text) override;
  void ShowProgress(const std::string& text) override;
  void AdvanceProgress() override;
  void ExpectSteps(int steps) override;
  void SetPointer(Pointer pointer) override;
  void DoEvents() override;
  void CheckCancelled() override;
  void SetReturnCode(std::int16_t code) override;
  void SetProjectFile(const std::string& path) override;
  void WizardHasEnded() override;

 private:
  Button Display(const Message& message) override;
  void Handle(std::string_view routine, const std::function<void()>& handler);
  void Attempt(std::string_view routine, const std::function<void()>& handler);
  void Cancel();
  void RefuseCharacter(char32_t& character, TextId message, TextBox& box);
  void UpdateInformationNext();

  Session& session_;
  basGlobal& global_;
  Platform& platform_;
  FormOwner& owner_;
  FormView* view_ = nullptr;
  WizardFlow* flow_ = nullptr;
  int handlerDepth_ = 0;
  bool working_ = false;  // a step runs that may take long
  bool cancelPending_ = false;
  bool ended_ = false;
  SetupAnswers proposed_;  // by the project-information page
  const Analysis* analysis_ = nullptr;
};

}  // namespace bxvbwiz
