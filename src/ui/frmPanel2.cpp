#include "support/basFile.h"
#include "support/basStr.h"
#include "ui/frmMain.h"

// The project-information page: what it proposes and what it refuses.
namespace bxvbwiz {

namespace {

// What the application-type box offers.
constexpr TextId kApplicationTypes[] = {TextId::ChoiceGenericApplication,
                                        TextId::ChoiceDatabaseApplication,
                                        TextId::ChoiceFinanceApplication,
                                        TextId::ChoiceInternetApplication,
                                        TextId::ChoiceSoftwareDevelopmentApplication,
                                        TextId::ChoiceStatisticalApplication};

// The label that names the executable, measured by the view.
class ExeLabel : public LabelMetrics {
 public:
  explicit ExeLabel(const FormView& view) : view_(view) {}
  int Width() const override { return view_.ExeLabelWidth(); }
  int TextWidth(const std::string& text) const override { return view_.TextWidth(text); }

 private:
  const FormView& view_;
};

}  // namespace

void frmMain::InitPanel(std::int16_t panel) {
  if (panel == kPanelWelcome) {
    if (App != nullptr && txtVBPname.text.empty()) txtVBPname.text = App->ProjectPath();
    cmdNext[kPanelWelcome].enabled = !txtVBPname.text.empty();
    return;
  }
  if (panel != kPanelInformation || analysis_ == nullptr) return;

  // What an earlier project or the user left there is not a proposal.
  const CProject& project = *analysis_->Project();
  proposed_ = ProposedAnswers(platform_.strings, project, App == nullptr ? "" : App->ProposedAppName());
  txtApplicationName.text = proposed_.applicationName;
  txtCompanyName.text = proposed_.companyName;
  txtApplicationVersion.text = proposed_.applicationVersion;

  cboApplicationType.items.clear();
  for (const TextId type : kApplicationTypes)
    cboApplicationType.items.push_back(platform_.strings.Text(type));
  const std::string output = project.OutputPath();
  lblExeName.text = CompactPathForLabel(ExeLabel(*view_), output);
  lblExeName.toolTip = output;
  UpdateInformationNext();
}

void frmMain::UpdateInformationNext() {
  cmdNext[kPanelInformation].enabled =
      !txtApplicationName.text.empty() && !txtCompanyName.text.empty() && !txtApplicationVersion.text.empty();
  view_->Refresh();
}

void frmMain::txtApplicationName_Change() {
  Handle("frmPanel2!txtApplicationName_Change", [this] { UpdateInformationNext(); });
}

void frmMain::txtCompanyName_Change() {
  Handle("frmPanel2!txtCompanyName_Change", [this] { UpdateInformationNext(); });
}

void frmMain::txtApplicationVersion_Change() {
  Handle("frmPanel2!txtApplicationVersion_Change", [this] { UpdateInformationNext(); });
}

void frmMain::RefuseCharacter(char32_t& character, TextId message, TextBox& box) {
  std::string typed;
  AppendUtf8(typed, character);
  if (!ContainsAnyChar(typed, kIllegalCharacters)) return;
  character = 0;
  ShowMessage({message, kStyleExclamation, platform_.strings.Text(message), ""});
  focus = &box;
  view_->Refresh();
}

void frmMain::txtApplicationName_KeyPress(char32_t& character) {
  Handle("frmPanel2!txtApplicationName_KeyPress",
         [&] { RefuseCharacter(character, TextId::IllegalApplicationName, txtApplicationName); });
}

void frmMain::txtCompanyName_KeyPress(char32_t& character) {
  Handle("frmPanel2!txtCompanyName_KeyPress",
         [&] { RefuseCharacter(character, TextId::IllegalCompanyName, txtCompanyName); });
}

std::optional<NameRefusal> frmMain::Refusal() const {
  return RefusalOfNames(platform_.codePage, Answers(), proposed_);
}

void frmMain::Refuse(const NameRefusal& refusal) {
  ShowMessage(MessageOf(platform_.strings, refusal));
  focus = refusal.message == TextId::IllegalCompanyName ? &txtCompanyName : &txtApplicationName;
  view_->Refresh();
}

}  // namespace bxvbwiz
