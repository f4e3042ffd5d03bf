#include "wizard/Generation.h"

#include "setupgen/CComponents.h"
#include "support/basFile.h"
#include "support/basMisc.h"
#include "sysinfo/RegConstants.h"
#include "wizard/PageDriver.h"

namespace bxvbwiz {

namespace {

constexpr const char* kRoutine = "cmdNext_Click";

}  // namespace

void Generation::Run() {
  DetectDataAccess();
  form_.ShowProgress(TextId::CreatingInstallation);
  MakeSetupFolder();
  CopyTemplate();
  form_.ShowProgress(TextId::UpdatingFiles);
  RenameAndPatchProjectFile();
  MakeFileGroups();
  ShowReport();
}

// The boxes are only ever set here: the user's own choice stays.
void Generation::DetectDataAccess() {
  bool ado = false;
  bool dao = false;
  bool rdo = false;
  for (const CReference& reference : form_.Project()->References()) {
    ado = ado || reference.ADO;
    dao = dao || reference.DAO;
    rdo = rdo || reference.RDO;
  }
  if (dao && rdo) form_.chkDAOODBCDirect.checked = true;
  if (ado) form_.chkADO.checked = true;
  if (dao) form_.chkDAOJet.checked = true;
  if (rdo) form_.chkRDO.checked = true;
}

void Generation::MakeSetupFolder() {
  const std::string dataFolder = Reporting(kRoutine, [this] { return DataFolder(platform_, form_); });
  const std::string folder = dataFolder + form_.setupProjectName;
  Reporting(kRoutine, [&] { CheckSystem(platform_.files.MakeDirectory(folder), folder); });
  form_.setupFolder = FixPath(folder);
}

void Generation::CopyTemplate() {
  templateFolder_ = FixPath(Reporting(kRoutine, [this] {
    return ProductValue(platform_, form_, RegConstants::HKeyLocalMachine, kBorvexWizardKey, "TemplateSource");
  }));
  templateProjectFile_ = Reporting(kRoutine, [this] {
    std::string found = Dir(platform_.files, templateFolder_ + "*.bxp");
    if (found.empty()) throw RuntimeError(kErrorFileNotFound, "File not found: " + templateFolder_ + "*.bxp");
    return found;
  });
  form_.ShowProgress(TextId::CopyingFiles);
  std::string target = form_.setupFolder;
  CopyFileTree(platform_.files, form_, templateFolder_, target);
}

void Generation::RenameAndPatchProjectFile() {
  const std::string copied = form_.setupFolder + templateProjectFile_;
  const std::string projectFile = form_.setupFolder + form_.setupProjectName + ".bxp";
  if (copied != projectFile) {
    Reporting(kRoutine, [&] { CheckSystem(platform_.files.Rename(copied, projectFile), projectFile); });
  }
  PatchIpr(platform_, form_.Lists(), form_.Answers(), projectFile);
  platform_.profiles.Flush();
  SetFileTimesToNow(platform_.files, platform_.clock, projectFile);
  if (form_.App != nullptr) form_.App->SetProjectFile(projectFile);
}

void Generation::MakeFileGroups() {
  std::int16_t before = 0;
  std::int16_t after = 0;
  FindScriptDefinedVariables(platform_, form_.setupFolder, before);
  CreateFileGroups();
  global_.AddVBRuntimeObject(form_.setupFolder);
  FindScriptDefinedVariables(platform_, form_.setupFolder, after);
  form_.scriptDefinedVariables = ScriptDefinedVariableNames(before, after);
  form_.ShowProgress(TextId::UpdatingFiles);
  PatchShl(platform_, form_.Answers(), form_.setupFolder);
  platform_.profiles.Flush();
  form_.AdvanceProgress();
}

void Generation::CreateFileGroups() {
  for (const CFile& file : form_.Files()) {
    form_.DoEvents();
    if (form_.FileGroups().CreateFileGroup(form_.setupFolder, file)) continue;
    AddFinding(FindingId::FileNotInGroup, {file.FileName});
  }
  // The runtime component is entered by a routine that reads the lists itself.
  form_.Lists().Forget();
}

void Generation::ShowReport() {
  const DataAccessNeeds needs{form_.chkDAOJet.checked, form_.chkDAOODBCDirect.checked, form_.chkRDO.checked,
                              form_.chkADO.checked};
  form_.report = AssembleReport(platform_.strings, needs, form_.scriptDefinedVariables);
  form_.txtReport.text = LeftToDo(platform_.strings, form_.Found().Texts()) + form_.report;
  form_.ShowPanel(kPanelReport);
  form_.HidePanel(kPanelSummary);
  Reporting(kRoutine, [this] {
    WriteReport(platform_, form_.setupFolder, form_.report, form_.tvwDependencies.Nodes());
  });
  form_.generating = false;
}

}  // namespace bxvbwiz
