#include <algorithm>
#include <array>

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

bool HasControlCharacter(const std::string& text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
  });
}

bool HasIllegalCharacter(const std::string& text) {
  return ContainsAnyChar(text, kIllegalCharacters) || HasControlCharacter(text);
}

// Names that mean a device in every folder, with any extension.
bool IsReservedBySystem(const std::string& name) {
  static constexpr std::array<const char*, 7> kDevices = {"CON",    "PRN",     "AUX",   "NUL",
                                                          "CONIN$", "CONOUT$", "CLOCK$"};
  std::string stem = UpperCase(name.substr(0, name.find('.')));
  stem.erase(stem.find_last_not_of(' ') + 1);
  if (std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end()) return true;
  return stem.size() == 4 && (StartsWith(stem, "COM") || StartsWith(stem, "LPT")) && stem[3] >= '1' &&
         stem[3] <= '9';
}

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

// The project's name as an application name: each illegal character becomes a blank.
std::string frmMain::CleanApplicationName(const std::string& name) const {
  std::string clean = name;
  for (char& c : clean) {
    if (HasIllegalCharacter(std::string(1, c))) c = ' ';
  }
  clean.erase(clean.find_last_not_of(' ') + 1);
  return clean;
}

void frmMain::InitPanel(std::int16_t panel) {
  if (panel == kPanelWelcome) {
    if (App != nullptr && txtVBPname.text.empty()) txtVBPname.text = App->ProjectPath();
    cmdNext[kPanelWelcome].enabled = !txtVBPname.text.empty();
    return;
  }
  if (panel != kPanelInformation || project_ == nullptr) return;

  // What an earlier project or the user left there is no proposal.
  txtApplicationName.text = platform_.strings.Text(TextId::YourApplicationName);
  txtCompanyName.text = platform_.strings.Text(TextId::YourCompany);
  txtApplicationVersion.text = platform_.strings.Text(TextId::FirstVersion);
  const std::string host = App == nullptr ? "" : App->ProposedAppName();
  const std::string name = CleanApplicationName(host.empty() ? project_->Name : host);
  if (!name.empty()) txtApplicationName.text = name;
  if (!project_->VersionCompanyName.empty()) txtCompanyName.text = project_->VersionCompanyName;
  std::string version;
  for (const std::string& part : {project_->MajorVer, project_->MinorVer, project_->RevisionVer}) {
    if (part.empty()) continue;
    if (!version.empty()) version += '.';
    version += part;
  }
  if (!version.empty()) txtApplicationVersion.text = version;
  proposedApplicationName_ = txtApplicationName.text;
  proposedCompanyName_ = txtCompanyName.text;

  cboApplicationType.items.clear();
  for (const TextId type : kApplicationTypes)
    cboApplicationType.items.push_back(platform_.strings.Text(type));
  const std::string output = project_->OutputPath();
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
  Handle([this] {
    const CallStackEntry entry("frmPanel2!txtApplicationName_Change");
    UpdateInformationNext();
  });
}

void frmMain::txtCompanyName_Change() {
  Handle([this] {
    const CallStackEntry entry("frmPanel2!txtCompanyName_Change");
    UpdateInformationNext();
  });
}

void frmMain::txtApplicationVersion_Change() {
  Handle([this] {
    const CallStackEntry entry("frmPanel2!txtApplicationVersion_Change");
    UpdateInformationNext();
  });
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
  Handle([&] { RefuseCharacter(character, TextId::IllegalApplicationName, txtApplicationName); });
}

void frmMain::txtCompanyName_KeyPress(char32_t& character) {
  Handle([&] { RefuseCharacter(character, TextId::IllegalCompanyName, txtCompanyName); });
}

// What the code page cannot hold would be written as "?".
bool frmMain::FitsCodePage(const std::string& text) const {
  return platform_.codePage.Decode(platform_.codePage.Encode(text)) == text;
}

void frmMain::NoteUnwritableAnswers() {
  for (const Control* box : {static_cast<const Control*>(&cboApplicationType),
                             static_cast<const Control*>(&txtApplicationVersion)}) {
    if (!FitsCodePage(box->text)) AddFinding(FindingId::TextNotInCodePage, {box->text});
  }
}

// What was pasted or given never met the key press. A proposal that was left alone is accepted as it is,
// since it was cleaned or only names the company ("Acme Inc."), unless the system would not make a folder of
// that name.
bool frmMain::NamesAreLegal() {
  const std::string& name = txtApplicationName.text;
  const bool nameGiven = name != proposedApplicationName_;
  const auto refuse = [this](TextId message, TextBox& box) {
    ShowMessage({message, kStyleExclamation, platform_.strings.Text(message), ""});
    focus = &box;
    view_->Refresh();
    return false;
  };
  if (IsReservedBySystem(name) || !FitsCodePage(name) ||
      (nameGiven && (HasIllegalCharacter(name) || EndsWith(name, " ")))) {
    return refuse(TextId::IllegalApplicationName, txtApplicationName);
  }
  if (!FitsCodePage(txtCompanyName.text) ||
      (txtCompanyName.text != proposedCompanyName_ && HasIllegalCharacter(txtCompanyName.text))) {
    return refuse(TextId::IllegalCompanyName, txtCompanyName);
  }
  return true;
}

}  // namespace bxvbwiz
