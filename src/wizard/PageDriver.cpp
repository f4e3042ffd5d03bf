#include "wizard/PageDriver.h"

#include "setupgen/Report.h"
#include "wizard/Generation.h"
#include "wizard/Rebuild.h"
#include "wizard/SetupPaths.h"

namespace bxvbwiz {

void PageDriver::LeavePage(std::int16_t panel) {
  switch (panel) {
    case kPanelWelcome:
      return LeaveWelcome();
    case kPanelInformation:
      return LeaveInformation();
    case kPanelSummary:
      return Finish();
    default:
      return;  // no step leads on from the data-access panel
  }
}

void PageDriver::LeaveWelcome() {
  setupProjectName_.clear();
  form_.Show(nullptr);
  analysis_.reset();
  auto analysis = std::make_unique<Analysis>(core_.platform(), form_, core_.global());
  const auto rebuild = [this](const CProject& built) { return RebuildProject(core_, form_, built); };
  if (analysis->LoadTrees(form_.txtVBPname.text, form_.chkRebuild.checked, rebuild) != Analysis::Result::Done)
    return;
  analysis_ = std::move(analysis);
  form_.Show(analysis_.get());
  form_.InitPanel(kPanelInformation);
  form_.ShowPanel(form_.App != nullptr && form_.App->ShowsPage2() ? kPanelInformation : kPanelSummary);
  form_.HidePanel(kPanelWelcome);
}

void PageDriver::LeaveInformation() {
  if (const auto refusal = form_.Refusal()) return form_.Refuse(*refusal);
  form_.ShowPanel(kPanelSummary);
  form_.HidePanel(kPanelInformation);
  ChooseName();
}

// False when the name cannot be used; the user is on the project-information page then.
bool PageDriver::ChooseName() {
  std::optional<NameRefusal> refusal = form_.Refusal();
  if (!refusal) {
    setupProjectName_ = ChooseSetupProjectName(core_.platform(), form_, form_.txtApplicationName.text);
    refusal = RefusalOfLength(core_.platform(), *analysis_, setupProjectName_);
  }
  if (!refusal) return true;
  setupProjectName_.clear();
  form_.ShowPanel(kPanelInformation);
  form_.HidePanel(kPanelSummary);
  form_.Refuse(*refusal);
  return false;
}

void PageDriver::Finish() {
  if (analysis_ == nullptr) return;
  // Without the project-information page the name has been neither checked nor chosen.
  if (setupProjectName_.empty()) {
    if (!ChooseName()) return;
    NoteInitialTexts(core_.platform().strings, *analysis_, form_.Answers());
  }
  form_.generating = true;
  form_.CheckDataAccess(analysis_->DataAccess());
  GeneratedSetup setup;
  Generation generation(core_.platform(), core_.global(), form_, *analysis_, form_.Answers(),
                        setupProjectName_, setup);
  generation.MakeSetupProject();
  const auto showReport = [&] {
    const std::string found = LeftToDo(core_.platform().strings, analysis_->Found());
    form_.txtReport.text = found.empty() ? setup.report : setup.report + "\r\n\r\n" + found;
  };
  showReport();
  form_.ShowPanel(kPanelReport);
  form_.HidePanel(kPanelSummary);
  generation.SaveReport();
  showReport();  // saving may have failed in part
  form_.generating = false;
}

void PageDriver::GoBack(std::int16_t panel) {
  std::int16_t previous = 0;
  switch (panel) {
    case kPanelInformation:
      previous = kPanelWelcome;
      break;
    case kPanelSummary:
      previous = form_.App != nullptr && form_.App->ShowsPage2() ? kPanelInformation : kPanelWelcome;
      break;
    case kPanelDataAccess:
      previous = kPanelSummary;
      break;
    default:
      return;
  }
  form_.ShowPanel(previous);
  form_.HidePanel(panel);
}

}  // namespace bxvbwiz
