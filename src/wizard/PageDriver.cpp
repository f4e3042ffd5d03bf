#include "wizard/PageDriver.h"

#include "support/basFile.h"
#include "sysinfo/Values.h"
#include "wizard/Generation.h"

namespace bxvbwiz {

namespace {

constexpr const char* kNext = "cmdNext_Click";
constexpr const char* kBack = "cmdBack_Click";

}  // namespace

std::string ProductValue(Platform& platform, User& user, RegistryHandle root, const std::string& path,
                         const std::string& valueName) {
  const auto rootKey = Key::Root(platform.registry, root);
  const std::string fullPath = rootKey->Name() + "\\" + path;
  const auto key = rootKey->OpenSubKeyForReading(path);
  if (key == nullptr) EndWithMissingKey(user, platform.strings, fullPath);
  return key->RequiredText(valueName);
}

std::string DataFolder(Platform& platform, User& user) {
  return FixPath(ProductValue(platform, user, RegConstants::HKeyCurrentUser, kBorvexMainKey, "DataFile"));
}

void PageDriver::LeavePage(std::int16_t panel) {
  const CallStackEntry entry(kNext);
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
  const std::string project = form_.txtVBPname.text;
  const bool rebuilds = form_.chkRebuild.checked;
  if (!form_.LoadTrees(project)) return;
  // What the user changed meanwhile is not what was analysed.
  form_.txtVBPname.text = project;
  form_.txtVBPname_Change();
  form_.chkRebuild.checked = rebuilds;
  form_.InitPanel(kPanelInformation);
  form_.ShowPanel(form_.App != nullptr && form_.App->ShowsPage2() ? kPanelInformation : kPanelSummary);
  form_.HidePanel(kPanelWelcome);
}

void PageDriver::LeaveInformation() {
  if (!form_.NamesAreLegal()) return;
  form_.ShowPanel(kPanelSummary);
  form_.HidePanel(kPanelInformation);
  Reporting(kNext, [this] { ChooseSetupProjectName(); });
}

// The first of "Name", "Name-1", "Name-2", ... that is no folder yet, so that no setup project of the user is
// overwritten.
void PageDriver::ChooseSetupProjectName() {
  FileSystem& files = component_.platform().files;
  const std::string dataFolder = DataFolder(component_.platform(), form_);
  const std::string applicationName = form_.txtApplicationName.text;
  std::string name = applicationName;
  for (int n = 1; !Dir(files, dataFolder + name + "\\*.*", true).empty(); ++n) {
    name = applicationName + "-" + std::to_string(n);
  }
  form_.setupProjectName = name;
}

void PageDriver::Finish() {
  if (form_.Project() == nullptr) return;
  // Without the project-information page the name was neither checked nor chosen.
  if (form_.setupProjectName.empty()) {
    if (!form_.NamesAreLegal()) return;
    Reporting(kNext, [this] { ChooseSetupProjectName(); });
  }
  form_.NoteUnwritableAnswers();
  form_.generating = true;
  Generation(component_.platform(), component_.global(), form_).Run();
}

void PageDriver::GoBack(std::int16_t panel) {
  const CallStackEntry entry(kBack);
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
