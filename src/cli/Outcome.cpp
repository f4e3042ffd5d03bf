#include "cli/Outcome.h"

#include "ui/frmMain.h"

namespace bxvbwiz {
namespace {

std::vector<TreeText> CopyTree(const std::vector<std::unique_ptr<TreeNode>>& nodes) {
  std::vector<TreeText> copies;
  copies.reserve(nodes.size());
  for (const auto& node : nodes) copies.push_back({node->text, CopyTree(node->children)});
  return copies;
}

void TakeProject(CProject& project, ProjectFacts& facts) {
  facts.fileName = project.FileName();
  facts.name = project.Name;
  facts.projectType = project.ProjectType;
  facts.exeName = project.ExeName;
  facts.exePath = project.ExePath;
  facts.majorVer = project.MajorVer;
  facts.minorVer = project.MinorVer;
  facts.revisionVer = project.RevisionVer;
  facts.versionCompanyName = project.VersionCompanyName;
  facts.needsRebuild = project.NeedsRebuild;
}

// The generation sets the form's boxes; an analysis ends before that, so the references tell.
DataAccessNeeds DataAccessOf(frmMain& form) {
  DataAccessNeeds needs{form.chkDAOJet.checked, form.chkDAOODBCDirect.checked, form.chkRDO.checked,
                        form.chkADO.checked};
  for (const CReference& reference : form.Project()->References()) {
    needs.daoJet = needs.daoJet || reference.DAO;
    needs.rdo = needs.rdo || reference.RDO;
    needs.ado = needs.ado || reference.ADO;
  }
  needs.daoOdbcDirect = needs.daoOdbcDirect || (needs.daoJet && needs.rdo);
  return needs;
}

void TakeResults(frmMain& form, Outcome& outcome) {
  outcome.setupFolder = form.setupFolder;
  outcome.scriptDefinedVariables = form.scriptDefinedVariables;
  outcome.report = form.report;
  if (form.Project() == nullptr) return;
  TakeProject(*form.Project(), outcome.project);
  outcome.dataAccess = DataAccessOf(form);
  outcome.projectView = CopyTree(form.tvwDependencies.Nodes());
  outcome.fileGroupView = CopyTree(form.tvwFiles.Nodes());
  outcome.files.clear();
  for (const CFile& file : form.Files()) {
    outcome.files.push_back(
        {file.FileName, file.Destination, form.FileGroups().ConvertDestMacroToBXDestSymbol(file.Destination),
         file.SharedFile, file.SelfRegister, file.FileLinkPath, file.LinkResolves, file.FileGroup});
  }
}

}  // namespace

void TakeFromForm(frmMain& form, Outcome& outcome) {
  TakeResults(form, outcome);
  outcome.incomplete = form.Found().Texts();  // last: the results ask the machine, which may fail
}

}  // namespace bxvbwiz
