#include "ui/frmMain.h"

#include <algorithm>
#include <utility>

#include "support/basFile.h"
#include "support/basStr.h"

namespace bxvbwiz {

namespace {

// Number, frame, title and default button belong together.
struct PanelRow {
  Frame frmMain::*frame;
  TextId title;
  const char* topic;  // of the help
};

constexpr PanelRow kPanels[] = {
    {&frmMain::fraPanel1, TextId::WelcomeTitle, "page_welcome.htm"},
    {&frmMain::fraPanel2, TextId::ProjectInformationTitle, "page_information.htm"},
    {&frmMain::fraPanel3, TextId::SummaryTitle, "page_summary.htm"},
    {&frmMain::fraPanel4, TextId::DataAccessTitle, "page_summary.htm"},
    {&frmMain::fraReport, TextId::ReportTitle, "page_report.htm"},
};
constexpr std::int16_t kPanelCount = static_cast<std::int16_t>(std::size(kPanels));

bool IsPanel(std::int16_t panel) {
  return panel >= 0 && panel < kPanelCount;
}

}  // namespace

frmMain::frmMain(Session& session, basGlobal& global, Platform& platform, FormOwner& owner)
    : session_(session), global_(global), platform_(platform), owner_(owner) {}

frmMain::~frmMain() = default;

void frmMain::Attach(FormView& view, WizardFlow& flow) {
  view_ = &view;
  flow_ = &flow;
}

void frmMain::ShowPanel(std::int16_t panel) {
  if (!IsPanel(panel)) return;
  (this->*kPanels[panel].frame).visible = true;
  caption = platform_.strings.Text(kPanels[panel].title);
  defaultButton = panel == kPanelReport ? &cmdOK : &cmdNext[static_cast<std::size_t>(panel)];
  if (panel == kPanelInformation) {
    focus = &txtApplicationName;
    txtApplicationName.selectionStart = 0;
    txtApplicationName.selectionLength = CharacterCount(txtApplicationName.text);
  }
  if (panel == kPanelDataAccess) pbrProgress.visible = false;
  cmdCancel.enabled = panel != kPanelReport;  // the setup project is made; there is nothing left to cancel
}

void frmMain::HidePanel(std::int16_t panel) {
  if (!IsPanel(panel)) return;
  (this->*kPanels[panel].frame).visible = false;
  view_->Refresh();
}

// ---------------------------------------------------------------- handlers

// Reports an error that no step of the handler has handled, so that the form does not just ignore its user.
void frmMain::Attempt(std::string_view routine, const std::function<void()>& handler) {
  const CallStackEntry entry(routine);
  try {
    handler();
  } catch (const WizardEnded&) {
    throw;
  } catch (...) {
    generating = false;
    ReportError(routine, CurrentError());
  }
  if (handlerDepth_ > 1) return;
  CheckCancelled();
  if (std::exchange(working_, false)) view_->Refresh();
}

void frmMain::Report(std::string_view routine, const RuntimeError& error) {
  Handle(routine, [&] { ReportError(routine, error); });
}

// Runs one handler of the form under its name. The form may be gone when this returns.
void frmMain::Handle(std::string_view routine, const std::function<void()>& handler) {
  if (ended_) return;
  ++handlerDepth_;
  {
    const SessionScope scope(session_);
    try {
      Attempt(routine, handler);
    } catch (const WizardEnded&) {
      // The user already knows why the wizard has ended.
    }
  }
  --handlerDepth_;
  UnloadIfEnded();
}

void frmMain::UnloadIfEnded() {
  if (!ended_ || handlerDepth_ > 0) return;
  view_->Unload(*this);
  owner_.UnloadForm();
}

void frmMain::cmdNext_Click(std::int16_t index) {
  if (handlerDepth_ == 0) {
    Handle("cmdNext_Click", [this, index] {
      working_ = true;
      view_->Refresh();
      flow_->LeavePage(index);
    });
  }
}

void frmMain::cmdBack_Click(std::int16_t index) {
  if (handlerDepth_ == 0) {
    Handle("cmdBack_Click", [this, index] { flow_->GoBack(index); });
  }
}

// Cancel, Escape and closing: at once, or when the present step returns.
void frmMain::Cancel() {
  if (ended_ || generating) return;
  if (handlerDepth_ > 0) {
    cancelPending_ = true;
    return ShowStatus(platform_.strings.Text(TextId::Cancelling));
  }
  Handle("cmdCancel_Click", [this] { CancelWizard(*this); });
}

bool frmMain::Heeds(const Control& control) const {
  if (&control == &cmdCancel && (cancelPending_ || generating)) return false;
  if (!working_ || &control == &cmdCancel || &control == &cmdHelp || &control == &txtReport)
    return control.enabled;
  const auto isOneOf = [&control](std::initializer_list<ControlKind> kinds) {
    return std::find(kinds.begin(), kinds.end(), control.kind) != kinds.end();
  };
  return control.enabled && !isOneOf({ControlKind::CommandButton, ControlKind::CheckBox, ControlKind::TextBox,
                                      ControlKind::ComboBox});
}

void frmMain::CheckCancelled() {
  if (ended_) throw WizardEnded();
  if (cancelPending_ && !generating) CancelWizard(*this);
}

void frmMain::cmdCancel_Click() {
  Cancel();
}

void frmMain::Form_QueryUnload() {
  Cancel();
}

void frmMain::Form_KeyDown(int keyCode) {
  if (keyCode == kKeyEscape) Cancel();
}

void frmMain::cmdOK_Click() {
  if (handlerDepth_ == 0) {
    Handle("cmdOK_Click", [this] { EndWizard(*this); });
  }
}

void frmMain::cmdBrowse_Click() {
  if (handlerDepth_ > 0) return;
  Handle("frmMain!cmdBrowse_Click", [this] {
    const std::string chosen = RetryOrCancel("frmMain!cmdBrowse_Click", [this] {
      return view_->BrowseForFile(platform_.strings.Text(TextId::VisualBasicProjectFile), "*.vbp");
    });
    if (chosen.empty()) return;
    txtVBPname.text = chosen;
    txtVBPname_Change();
    focus = &cmdNext[kPanelWelcome];
    view_->Refresh();
  });
}

void frmMain::cmdHelp_Click() {
  const auto* const row = std::find_if(std::begin(kPanels), std::end(kPanels),
                                       [this](const PanelRow& it) { return (this->*it.frame).visible; });
  const char* const topic = row == std::end(kPanels) ? "welcome.htm" : row->topic;
  Handle("cmdHelp_Click", [this, topic] { view_->OpenHelp("bxvbwiz.chm", topic); });
}

void frmMain::txtVBPname_Change() {
  Handle("frmMain.txtVBPName_Change", [this] {
    cmdNext[kPanelWelcome].enabled = !txtVBPname.text.empty();
    cmdBrowse.enabled = true;
    view_->Refresh();
  });
}

void frmMain::optFileView_Click() {
  Handle("optFileView_Click", [this] {
    optFileView.checked = tvwFiles.visible = true;
    optProjectView.checked = tvwDependencies.visible = false;
    view_->Refresh();
  });
}

void frmMain::optProjectView_Click() {
  Handle("optProjectView_Click", [this] {
    optProjectView.checked = tvwDependencies.visible = true;
    optFileView.checked = tvwFiles.visible = false;
    view_->Refresh();
  });
}

// ---------------------------------------------------------------- the user

Button frmMain::Display(const Message& message) {
  if (!message.detail.empty()) WriteLog(message.text + " (" + message.detail + ")");
  return view_->ShowMessage(message, platform_.strings.Text(TextId::WizardTitle));
}

void frmMain::ShowStatus(const std::string& text) {
  lblStatus.text = text;
  view_->Refresh();
}

void frmMain::ShowProgress(const std::string& text) {
  lblProgress.text = text;
  AdvanceProgress();
}

void frmMain::AdvanceProgress() {
  pbrProgress.visible = true;
  pbrProgress.value = global_.NextProgressValue();
  view_->Refresh();
}

void frmMain::ExpectSteps(int steps) {
  pbrProgress.maximum = steps;
  global_.SetProgressLimit(static_cast<std::int16_t>(steps));
}

void frmMain::SetPointer(Pointer pointer) {
  view_->SetPointer(pointer);
}

void frmMain::DoEvents() {
  view_->ProcessEvents();
}

void frmMain::SetReturnCode(std::int16_t code) {
  if (App != nullptr) App->SetReturnCode(code);
}

void frmMain::SetProjectFile(const std::string& path) {
  if (App != nullptr) App->SetProjectFile(path);
}

void frmMain::WizardHasEnded() {
  if (ended_) return;
  ended_ = true;
  owner_.WizardEnding();
}

// ---------------------------------------------------------------- the analysis

void frmMain::Show(const Analysis* analysis) {
  analysis_ = analysis;
  tvwDependencies.Show(analysis == nullptr ? nullptr : &analysis->ProjectView());
  tvwFiles.Show(analysis == nullptr ? nullptr : &analysis->FileGroupView());
}

void frmMain::CheckDataAccess(const DataAccessNeeds& needs) {
  if (needs.daoOdbcDirect) chkDAOODBCDirect.checked = true;
  if (needs.ado) chkADO.checked = true;
  if (needs.daoJet) chkDAOJet.checked = true;
  if (needs.rdo) chkRDO.checked = true;
}

SetupAnswers frmMain::Answers() const {
  return {
      txtApplicationName.text, txtCompanyName.text,
      cboApplicationType.text, txtApplicationVersion.text,
      proposed_.exeName,       {chkDAOJet.checked, chkDAOODBCDirect.checked, chkRDO.checked, chkADO.checked}};
}

}  // namespace bxvbwiz
