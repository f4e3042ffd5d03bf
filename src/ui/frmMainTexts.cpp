#include <cstdlib>

#include "support/basParse.h"
#include "ui/frmMain.h"

// What the form shows before the user does anything.
namespace bxvbwiz {

namespace {

constexpr TextId kNoText{};

// What a control carries about its texts.
std::string Tag(TextId text, TextId toolTip = kNoText) {
  const auto item = [](const char* name, TextId id) {
    return id == kNoText ? std::string() : name + std::to_string(NumberOf(id));
  };
  return item("Resource=", text) + item(text == kNoText ? "Tooltip=" : ";Tooltip=", toolTip);
}

// The text that an item of a control's tag names; false when the tag lacks the item or the item is empty.
bool TextOfTag(const StringTable& strings, const std::string& tag, const char* item, std::string& text) {
  bool found = false;
  const std::optional<std::string> number = GetItem(tag, item, found);
  if (!number.has_value()) return false;
  text = strings.Text(static_cast<TextId>(std::strtoul(number->c_str(), nullptr, 10)));
  return true;
}

void LoadControl(const StringTable& strings, Control& control, const std::string& tag) {
  control.tag = tag;
  TextOfTag(strings, control.tag, "Resource", control.text);
  TextOfTag(strings, control.tag, "Tooltip", control.toolTip);
}

}  // namespace

void frmMain::LoadTexts() {
  struct Row {
    Control& control;
    std::string tag;
  };
  const Row rows[] = {
      {cmdNext[0], Tag(TextId::Next)},
      {cmdNext[1], Tag(TextId::Next)},
      {cmdNext[2], Tag(TextId::Finish)},
      {cmdNext[3], Tag(TextId::Next)},
      {cmdBack[0], Tag(TextId::Back)},
      {cmdBack[1], Tag(TextId::Back)},
      {cmdBack[2], Tag(TextId::Back)},
      {cmdBack[3], Tag(TextId::Back)},
      {cmdCancel, Tag(TextId::Cancel)},
      {cmdHelp, Tag(TextId::Help)},
      {cmdOK, Tag(TextId::Ok)},
      {lblPanel1Inst, Tag(TextId::WelcomeInstruction)},
      {lblVBP, Tag(TextId::VisualBasicProjectFile)},
      {txtVBPname, Tag(kNoText, TextId::ProjectFileTip)},
      {cmdBrowse, Tag(TextId::Browse, TextId::BrowseTip)},
      {chkRebuild, Tag(TextId::RebuildProject, TextId::RebuildTip)},
      {lblPanel2Inst, Tag(TextId::ProjectInformationInstruction)},
      {lblApplicationName, Tag(TextId::ApplicationName)},
      {txtApplicationName, Tag(TextId::YourApplicationName, TextId::ApplicationNameTip)},
      {lblCompanyName, Tag(TextId::CompanyName)},
      {txtCompanyName, Tag(TextId::YourCompany, TextId::CompanyNameTip)},
      {lblApplicationType, Tag(TextId::ApplicationType)},
      {cboApplicationType, Tag(TextId::DatabaseApplication, TextId::ApplicationTypeTip)},
      {lblApplicationVersion, Tag(TextId::ApplicationVersion)},
      {txtApplicationVersion, Tag(TextId::FirstVersion, TextId::ApplicationVersionTip)},
      {lblExeCaption, Tag(TextId::ApplicationExecutable)},
      {lblExeName, Tag(TextId::ApplicationExecutable)},
      {Frame5, Tag(TextId::DataAccessOptions)},
      {lblPanel3Inst, Tag(TextId::DataAccessInstruction)},
      {lblPanel3Instr, Tag(TextId::SummaryInstruction)},
      {optFileView, Tag(TextId::FileGroupView)},
      {optProjectView, Tag(TextId::ProjectView)},
      {chkDAOJet, Tag(TextId::DaoWithJet)},
      {chkDAOODBCDirect, Tag(TextId::DaoWithOdbcDirect)},
      {chkRDO, Tag(TextId::Rdo)},
      {chkADO, Tag(TextId::Ado)},
  };
  for (const Row& row : rows) LoadControl(platform_.strings, row.control, row.tag);
  font = platform_.strings.Text(TextId::FormFont);
  lblBranding.text = "Borvex";
}

void frmMain::Form_Load() {
  LoadTexts();
  for (Frame* frame : {&fraPanel1, &fraPanel2, &fraPanel3, &fraPanel4, &fraReport}) frame->visible = false;
  cmdNext[kPanelWelcome].enabled = false;
  cmdBack[kPanelWelcome].enabled = false;
  pbrProgress.visible = false;
  optProjectView.checked = true;
  tvwFiles.visible = false;
  global_.ResetProgress(static_cast<std::int16_t>(pbrProgress.maximum));
  ShowPanel(kPanelWelcome);
}

void frmMain::Form_Activate() {
  Handle([this] {
    InitPanel(kPanelWelcome);
    view_->Refresh();
  });
}

}  // namespace bxvbwiz
