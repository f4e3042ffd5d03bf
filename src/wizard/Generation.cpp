#include "wizard/Generation.h"

#include "setupgen/CComponents.h"
#include "setupgen/Patches.h"
#include "setupgen/Report.h"
#include "setupgen/VBRuntimeObject.h"
#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/basMisc.h"
#include "support/Findings.h"
#include "wizard/ProductValues.h"

namespace bxvbwiz {
namespace {

constexpr const char* kRoutine = "cmdNext_Click";
constexpr int kStepsBesidesCopying = 5;

// Adds a finding for each object of data access that the report asks the user to insert.
void NoteDataAccess(const Analysis& analysis, const DataAccessNeeds& needs) {
  const struct {
    bool isNeeded;
    bool CReference::*family;
    const char* object;
  } objects[] = {{needs.ado, &CReference::ADO, "MDAC"},
                 {needs.daoJet || needs.daoOdbcDirect, &CReference::DAO, "DAO"},
                 {needs.rdo, &CReference::RDO, "RDO"}};
  for (const auto& object : objects) {
    if (!object.isNeeded) continue;
    Finding finding{FindingId::DataAccessToInsert, {object.object}, {}};
    for (const CReference& reference : analysis.Project()->References()) {
      if (finding.origin.id == TextId{} && reference.*object.family) finding.origin = reference.FirstAsker();
    }
    AddFinding(std::move(finding));
  }
}

}  // namespace

std::string ChooseSetupProjectName(Platform& platform, User& user, const std::string& applicationName) {
  return RetryOrCancel(kRoutine, [&] {
    const std::string dataFolder = DataFolder(platform, user);
    std::string name = applicationName;
    for (int n = 1; !Dir(platform.files, dataFolder + name + "\\*.*", true).empty(); ++n) {
      name = applicationName + "-" + std::to_string(n);
    }
    return name;
  });
}

void NoteInitialTexts(const StringTable& strings, const Analysis& analysis, const SetupAnswers& answers) {
  const SetupAnswers initial = InitialAnswers(strings);
  const struct {
    std::string SetupAnswers::*answer;
    FindingId finding;
  } boxes[] = {{&SetupAnswers::applicationName, FindingId::InitialTextLeft},
               {&SetupAnswers::companyName, FindingId::InitialTextLeft},
               {&SetupAnswers::applicationVersion, FindingId::InitialVersionLeft}};
  for (const auto& box : boxes) {
    if (answers.*box.answer != initial.*box.answer) continue;
    AddFinding(
        {box.finding, {answers.*box.answer}, {TextId::OriginProject, {analysis.Project()->FileName()}}});
  }
}

Generation::Generation(Platform& platform, basGlobal& global, User& user, Analysis& analysis,
                       SetupAnswers answers, std::string name, GeneratedSetup& setup)
    : platform_(platform),
      global_(global),
      user_(user),
      analysis_(analysis),
      answers_(std::move(answers)),
      name_(std::move(name)),
      setup_(setup) {}

void Generation::MakeSetupProject() {
  NoteUnwritableAnswers(platform_.codePage, answers_);
  user_.ExpectSteps(kStepsBesidesCopying);
  user_.ShowProgress(platform_.strings.Text(TextId::CreatingInstallation));
  MakeSetupFolder();
  CopyTemplate();
  user_.ShowProgress(platform_.strings.Text(TextId::UpdatingFiles));
  RenameAndPatchProjectFile();
  MakeFileGroups();
  analysis_.Audit(setup_.folder);
  NoteDataAccess(analysis_, answers_.dataAccess);
  setup_.report = AssembleReport(platform_.strings, answers_.dataAccess, setup_.scriptDefinedVariables);
}

void Generation::MakeSetupFolder() {
  const std::string folder = RetryOrCancel(kRoutine, [this] { return DataFolder(platform_, user_); }) + name_;
  RetryOrCancel(kRoutine, [&] { CheckSystem(platform_.files.MakeDirectory(folder), folder); });
  setup_.folder = FixPath(folder);
}

void Generation::CopyTemplate() {
  std::string source = RetryOrCancel(kRoutine, [this] { return TemplateFolder(platform_, user_); });
  templateProjectFile_ = RetryOrCancel(kRoutine, [&] {
    std::string found = Dir(platform_.files, source + "*.bxp");
    if (found.empty()) throw RuntimeError(kErrorFileNotFound, "File not found: " + source + "*.bxp");
    return found;
  });
  user_.ExpectSteps(kStepsBesidesCopying + StepsOfCopy(platform_.files, source));
  user_.ShowProgress(platform_.strings.Text(TextId::CopyingFiles));
  std::string target = setup_.folder;
  CopyFileTree(platform_.files, user_, source, target);
}

void Generation::RenameAndPatchProjectFile() {
  const std::string copied = setup_.folder + templateProjectFile_;
  const std::string projectFile = setup_.folder + name_ + ".bxp";
  if (copied != projectFile) {
    RetryOrCancel(kRoutine, [&] { CheckSystem(platform_.files.Rename(copied, projectFile), projectFile); });
  }
  PatchIpr(platform_, analysis_.Lists(), answers_, projectFile);
  platform_.profiles.Flush();
  SetFileTimesToNow(platform_.files, platform_.clock, projectFile);
  user_.SetProjectFile(projectFile);
}

void Generation::MakeFileGroups() {
  std::int16_t before = 0;
  std::int16_t after = 0;
  FindScriptDefinedVariables(platform_, setup_.folder, before);
  CreateFileGroups();
  AddVBRuntimeObject(global_, setup_.folder);
  FindScriptDefinedVariables(platform_, setup_.folder, after);
  setup_.scriptDefinedVariables = ScriptDefinedVariableNames(before, after);
  user_.ShowProgress(platform_.strings.Text(TextId::UpdatingFiles));
  PatchShl(platform_, answers_, setup_.folder);
  platform_.profiles.Flush();
  user_.AdvanceProgress();
}

void Generation::CreateFileGroups() {
  for (const CFile& file : analysis_.Files()) {
    user_.DoEvents();
    const OriginScope origin(file.FirstAsker());
    if (analysis_.FileGroups().CreateFileGroup(setup_.folder, file)) continue;
    AddFinding(FindingId::FileNotInGroup, {file.FileName});
  }
  // The runtime component is entered by a routine that reads the lists itself.
  analysis_.Lists().Forget();
}

void Generation::SaveReport() {
  RetryOrCancel(kRoutine, [this] {
    WriteReport(platform_, setup_.folder, setup_.report, analysis_.ProjectView().Nodes());
  });
  RetryOrCancel(kRoutine, [this] { WriteLeftToDo(platform_, setup_.folder, analysis_.Found()); });
}

}  // namespace bxvbwiz
