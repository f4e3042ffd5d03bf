#include "ui/win32/Layout.h"

#include "ui/win32/ControlIds.h"

namespace bxvbwiz {

namespace {

using Kind = ControlKind;

// What each row of a page repeats.
class Page {
 public:
  Page(std::vector<LaidControl>& rows, std::int16_t panel) : rows_(rows), panel_(panel) {}
  void Add(int id, Kind kind, Control& control, Place place) {
    rows_.push_back({id, panel_, kind, &control, nullptr, place});
  }

 private:
  std::vector<LaidControl>& rows_;
  std::int16_t panel_;
};

void LayOutWelcome(frmMain& form, std::vector<LaidControl>& rows) {
  Page page(rows, kPanelWelcome);
  page.Add(kIdWelcomeText, Kind::Label, form.lblPanel1Inst, {10, 10, 310, 28});
  page.Add(kIdProjectFileLabel, Kind::Label, form.lblVBP, {10, 50, 310, 9});
  page.Add(kIdProjectFile, Kind::TextBox, form.txtVBPname, {10, 62, 250, 12});
  page.Add(kIdBrowse, Kind::Button, form.cmdBrowse, {266, 61, 54, 14});
  page.Add(kIdRebuild, Kind::CheckBox, form.chkRebuild, {10, 84, 310, 10});
  page.Add(kIdStatus, Kind::PathLabel, form.lblStatus, {10, 176, 310, 9});
}

void LayOutInformation(frmMain& form, std::vector<LaidControl>& rows) {
  Page page(rows, kPanelInformation);
  page.Add(kIdInformationText, Kind::Label, form.lblPanel2Inst, {10, 10, 310, 20});
  page.Add(kIdApplicationNameLabel, Kind::Label, form.lblApplicationName, {10, 42, 90, 9});
  page.Add(kIdApplicationName, Kind::TextBox, form.txtApplicationName, {104, 40, 216, 12});
  page.Add(kIdCompanyNameLabel, Kind::Label, form.lblCompanyName, {10, 64, 90, 9});
  page.Add(kIdCompanyName, Kind::TextBox, form.txtCompanyName, {104, 62, 216, 12});
  page.Add(kIdApplicationTypeLabel, Kind::Label, form.lblApplicationType, {10, 86, 90, 9});
  page.Add(kIdApplicationType, Kind::ComboBox, form.cboApplicationType, {104, 84, 216, 90});
  page.Add(kIdApplicationVersionLabel, Kind::Label, form.lblApplicationVersion, {10, 108, 90, 9});
  page.Add(kIdApplicationVersion, Kind::TextBox, form.txtApplicationVersion, {104, 106, 80, 12});
  page.Add(kIdExeCaption, Kind::Label, form.lblExeCaption, {10, 130, 90, 9});
  page.Add(kIdExeName, Kind::PathLabel, form.lblExeName, {104, 130, 216, 9});
}

void LayOutSummary(frmMain& form, std::vector<LaidControl>& rows) {
  Page page(rows, kPanelSummary);
  page.Add(kIdSummaryText, Kind::Label, form.lblPanel3Instr, {10, 10, 310, 20});
  page.Add(kIdFileView, Kind::FirstOptionButton, form.optFileView, {10, 34, 110, 10});
  page.Add(kIdProjectView, Kind::OptionButton, form.optProjectView, {130, 34, 110, 10});
  page.Add(kIdFiles, Kind::Tree, form.tvwFiles, {10, 48, 310, 122});
  page.Add(kIdDependencies, Kind::Tree, form.tvwDependencies, {10, 48, 310, 122});
  page.Add(kIdProgressText, Kind::PathLabel, form.lblProgress, {10, 177, 120, 9});
  page.Add(kIdProgress, Kind::ProgressBar, form.pbrProgress, {134, 176, 186, 10});
}

void LayOutDataAccess(frmMain& form, std::vector<LaidControl>& rows) {
  Page page(rows, kPanelDataAccess);
  page.Add(kIdDataAccessText, Kind::Label, form.lblPanel3Inst, {10, 10, 310, 20});
  page.Add(kIdDataAccessFrame, Kind::GroupBox, form.Frame5, {10, 36, 310, 84});
  page.Add(kIdDaoJet, Kind::CheckBox, form.chkDAOJet, {20, 52, 280, 10});
  page.Add(kIdDaoOdbcDirect, Kind::CheckBox, form.chkDAOODBCDirect, {20, 68, 280, 10});
  page.Add(kIdRdo, Kind::CheckBox, form.chkRDO, {20, 84, 280, 10});
  page.Add(kIdAdo, Kind::CheckBox, form.chkADO, {20, 100, 280, 10});
}

// The row of buttons below every page: the Back and Next of all panels stand in one place each.
void LayOutButtons(frmMain& form, std::vector<LaidControl>& rows) {
  const auto add = [&rows](int id, Kind kind, Control* control, const Frame* frame, Place place) {
    rows.push_back({id, kOnEveryPanel, kind, control, frame, place});
  };
  add(kIdBranding, Kind::Branding, &form.lblBranding, nullptr, {10, 195, 30, 9});
  add(kIdLine, Kind::Line, nullptr, nullptr, {40, 199, 280, 1});
  constexpr Place kBackPlace{102, 208, 50, 14};
  constexpr Place kNextPlace{152, 208, 50, 14};
  for (std::size_t panel = 0; panel < kPanelsWithNext; ++panel) {
    const auto number = static_cast<std::int16_t>(panel);
    add(kIdBack + number, Kind::Button, &form.cmdBack[panel], &FrameOf(form, number), kBackPlace);
    add(kIdNext + number, Kind::Button, &form.cmdNext[panel], &FrameOf(form, number), kNextPlace);
  }
  add(kIdOk, Kind::Button, &form.cmdOK, &form.fraReport, kNextPlace);
  add(kIdCancel, Kind::Button, &form.cmdCancel, nullptr, {211, 208, 50, 14});
  add(kIdHelp, Kind::Button, &form.cmdHelp, nullptr, {270, 208, 50, 14});
}

}  // namespace

Frame& FrameOf(frmMain& form, std::int16_t panel) {
  switch (panel) {
    case kPanelWelcome:
      return form.fraPanel1;
    case kPanelInformation:
      return form.fraPanel2;
    case kPanelSummary:
      return form.fraPanel3;
    case kPanelDataAccess:
      return form.fraPanel4;
    default:
      return form.fraReport;
  }
}

std::vector<LaidControl> LayOut(frmMain& form) {
  std::vector<LaidControl> rows;
  LayOutWelcome(form, rows);
  LayOutInformation(form, rows);
  LayOutSummary(form, rows);
  LayOutDataAccess(form, rows);
  Page(rows, kPanelReport).Add(kIdReport, Kind::ReportBox, form.txtReport, {10, 10, 310, 176});
  LayOutButtons(form, rows);
  return rows;
}

}  // namespace bxvbwiz
