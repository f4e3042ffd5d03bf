#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "project/CProject.h"
#include "setupgen/CFileGroups.h"
#include "setupgen/Patches.h"
#include "setupgen/Report.h"
#include "support/basLogging.h"
#include "support/Findings.h"
#include "ui/Controls.h"
#include "ui/FormPartners.h"

namespace bxvbwiz {

// The characters that an application or company name may not contain: both become names of files and folders.
constexpr const char* kIllegalCharacters = "\\/:;*?><'\"|.";

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
  // Notes what of the other answers the machine's code page cannot hold.
  void NoteUnwritableAnswers();

  // Reads a project and fills the trees and the file collection. False when the page stays: the file cannot
  // be read, or is of a kind that cannot be packaged. May end the wizard.
  bool LoadTrees(const std::string& projectFile);

  // Results of the analysis; the project is null before one.
  CProject* Project() { return project_.get(); }
  CFiles& Files() { return *files_; }
  CFileGroups& FileGroups() { return *fileGroups_; }
  NumberedKeys& Lists() { return lists_; }
  SetupAnswers Answers();

  // Set by the flow.
  std::string setupProjectName;  // chosen when the project-information page is left; empty before
  std::string setupFolder;       // with a trailing backslash, once it was created
  std::vector<std::string> scriptDefinedVariables;
  std::string report;       // the text of Report.txt, without the printout
  bool generating = false;  // from Finish until the report page is shown
  void ShowProgress(TextId step);
  // Ends the wizard when the user cancelled while the last step ran.
  void CheckCancelled();

  Findings& Found() { return findings_; }
  bool Ended() const { return ended_; }

  // The user.
  Button ShowMessage(const Message& message) override;
  void ShowStatus(const std::string& text) override;
  void AdvanceProgress() override;
  void SetPointer(Pointer pointer) override;
  void DoEvents() override;
  void SetReturnCode(std::int16_t code) override;
  void WizardHasEnded() override;

 private:
  void Handle(const std::function<void()>& handler);
  void Attempt(const std::function<void()>& handler);
  void Cancel();
  void LoadTexts();
  void RefuseCharacter(char32_t& character, TextId message, TextBox& box);
  void UpdateInformationNext();
  bool FitsCodePage(const std::string& text) const;
  std::string CleanApplicationName(const std::string& name) const;
  bool RefuseProjectKind();
  bool ReadProject();
  bool RebuildIfNeeded();
  void FillTrees();
  void AddOutputFile();
  void AddControl(TreeNode& parent, CObject& control);
  void AddReference(TreeNode& parent, CReference& reference);
  void AddFile(const std::string& name, const FileRecord& facts);
  void FillFileView();
  void TreeAdd(const CFile& file);
  void AddDependencies(TreeNode& owner, CDependencies& dependencies);

  Session& session_;
  basGlobal& global_;
  Platform& platform_;
  FormOwner& owner_;
  FormView* view_ = nullptr;
  WizardFlow* flow_ = nullptr;
  int handlerDepth_ = 0;
  bool cancelPending_ = false;
  bool ended_ = false;
  std::string fileName_;  // full path of the project that is analysed
  std::string proposedApplicationName_;
  std::string proposedCompanyName_;
  Findings findings_;

  NumberedKeys lists_;
  std::unique_ptr<CFileGroups> fileGroups_;
  std::unique_ptr<CFiles> files_;
  std::unordered_set<std::string> locations_;  // of the collection's files that were found, in upper case
  // Locations of files whose key is another's, and what is to be said of them.
  std::vector<std::pair<std::string, Finding>> leftOut_;
  std::unique_ptr<AnalysisContext> context_;
  std::unique_ptr<CProject> project_;  // destroyed before its context
};

}  // namespace bxvbwiz
