#include <cstdlib>

#include "support/basParse.h"
#include "ui/frmMain.h"

// What the form shows before the user does anything.
namespace bxvbwiz {

namespace {

// The text that an item of a control's tag names; false when the tag lacks the item or the item is empty.
bool TextOfTag(const StringTable& strings, const std::string& tag, const char* item, std::string& text) {
  bool found = false;
  const std::optional<std::string> number = GetItem(tag, item, found);
  if (!number.has_value()) return false;
  text = strings.Text(static_cast<unsigned>(std::strtoul(number->c_str(), nullptr, 10)));
  return true;
}

void LoadControl(const StringTable& strings, Control& control, const char* tag) {
  control.tag = tag;
  TextOfTag(strings, control.tag, "Resource", control.text);
  TextOfTag(strings, control.tag, "Tooltip", control.toolTip);
}

}  // namespace

void frmMain::LoadTexts() {
  struct Row {
    Control& control;
    const char* tag;
  };
  const Row rows[] = {
      {cmdNext[0], "Resource=1006"},
      {cmdNext[1], "Resource=1006"},
      {cmdNext[2], "Resource=1012"},
      {cmdNext[3], "Resource=1006"},
      {cmdBack[0], "Resource=1005"},
      {cmdBack[1], "Resource=1005"},
      {cmdBack[2], "Resource=1005"},
      {cmdBack[3], "Resource=1005"},
      {cmdCancel, "Resource=1007"},
      {cmdHelp, "Resource=1008"},
      {cmdOK, "Resource=1024"},
      {lblPanel1Inst, "Resource=1002"},
      {lblVBP, "Resource=1003"},
      {txtVBPname, "Tooltip=1066"},
      {cmdBrowse, "Resource=1004;Tooltip=1067"},
      {chkRebuild, "Resource=1027;Tooltip=1068"},
      {lblPanel2Inst, "Resource=1030"},
      {lblApplicationName, "Resource=1013"},
      {txtApplicationName, "Resource=1014;Tooltip=1069"},
      {lblCompanyName, "Resource=1031"},
      {txtCompanyName, "Resource=1043;Tooltip=1070"},
      {lblApplicationType, "Resource=1032"},
      {cboApplicationType, "Resource=1035;Tooltip=1071"},
      {lblApplicationVersion, "Resource=1039"},
      {txtApplicationVersion, "Resource=1044;Tooltip=1072"},
      {lblExeCaption, "Resource=1049"},
      {lblExeName, "Resource=1049"},
      {Frame5, "Resource=1078"},
      {lblPanel3Inst, "Resource=1077"},
      {lblPanel3Instr, "Resource=1081"},
      {optFileView, "Resource=1010"},
      {optProjectView, "Resource=1011"},
      {chkDAOJet, "Resource=1096"},
      {chkDAOODBCDirect, "Resource=1097"},
      {chkRDO, "Resource=1098"},
      {chkADO, "Resource=1099"},
  };
  for (const Row& row : rows) LoadControl(platform_.strings, row.control, row.tag);
  font = platform_.strings.Text(600);
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
