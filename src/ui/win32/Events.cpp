#include "ui/win32/Events.h"

#include "ui/win32/ControlIds.h"

namespace bxvbwiz {

namespace {

struct HandlerRow {
  int id;
  void (frmMain::*handler)();
};

constexpr HandlerRow kClicks[] = {
    {kIdCancel, &frmMain::cmdCancel_Click},
    {kIdHelp, &frmMain::cmdHelp_Click},
    {kIdOk, &frmMain::cmdOK_Click},
    {kIdBrowse, &frmMain::cmdBrowse_Click},
    {kIdFileView, &frmMain::optFileView_Click},
    {kIdProjectView, &frmMain::optProjectView_Click},
};

constexpr HandlerRow kChanges[] = {
    {kIdProjectFile, &frmMain::txtVBPname_Change},
    {kIdApplicationName, &frmMain::txtApplicationName_Change},
    {kIdCompanyName, &frmMain::txtCompanyName_Change},
    {kIdApplicationVersion, &frmMain::txtApplicationVersion_Change},
};

struct KeyPressRow {
  int id;
  void (frmMain::*handler)(char32_t&);
};

constexpr KeyPressRow kKeyPresses[] = {
    {kIdApplicationName, &frmMain::txtApplicationName_KeyPress},
    {kIdCompanyName, &frmMain::txtCompanyName_KeyPress},
};

// The panel of a button that each has; -1 when `id` is another control's.
int PanelOf(int id, int first) {
  return id >= first && id < first + static_cast<int>(kPanelsWithNext) ? id - first : -1;
}

}  // namespace

void ForwardClick(frmMain& form, int id) {
  if (const int next = PanelOf(id, kIdNext); next >= 0)
    return form.cmdNext_Click(static_cast<std::int16_t>(next));
  if (const int back = PanelOf(id, kIdBack); back >= 0)
    return form.cmdBack_Click(static_cast<std::int16_t>(back));
  for (const HandlerRow& row : kClicks) {
    if (row.id == id) return (form.*row.handler)();
  }
}

void ForwardChange(frmMain& form, int id) {
  for (const HandlerRow& row : kChanges) {
    if (row.id == id) return (form.*row.handler)();
  }
}

void ForwardKeyPress(frmMain& form, int id, char32_t& character) {
  for (const KeyPressRow& row : kKeyPresses) {
    if (row.id == id) return (form.*row.handler)(character);
  }
}

bool FollowsKeyPress(int id) {
  for (const KeyPressRow& row : kKeyPresses) {
    if (row.id == id) return true;
  }
  return false;
}

}  // namespace bxvbwiz
