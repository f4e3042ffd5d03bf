#include "analysis/Analysis.h"

#include "analysis/Audit.h"
#include "analysis/SourceFindings.h"
#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/basStr.h"

namespace bxvbwiz {
namespace {

constexpr const char* kLoadTrees = "frmPanel3.LoadTrees";
constexpr const char* kFileGroupsKey = "FileGroups";

// Makes a folder the current directory while it lives: project files name others relative to their own
// folder.
class CurrentDirectoryScope {
 public:
  CurrentDirectoryScope(FileSystem& files, const std::string& folder)
      : files_(files), previous_(files.CurrentDirectory()) {
    if (!folder.empty()) files_.ChangeDirectory(folder);
  }
  ~CurrentDirectoryScope() { files_.ChangeDirectory(previous_); }
  CurrentDirectoryScope(const CurrentDirectoryScope&) = delete;
  CurrentDirectoryScope& operator=(const CurrentDirectoryScope&) = delete;

 private:
  FileSystem& files_;
  std::string previous_;
};

// Clears the status text when the analysis ends, for whatever reason.
class StatusScope {
 public:
  explicit StatusScope(User& user) : user_(user) {}
  ~StatusScope() {
    try {
      user_.ShowStatus("");
    } catch (...) {
      return;  // the next change shows it
    }
  }
  StatusScope(const StatusScope&) = delete;
  StatusScope& operator=(const StatusScope&) = delete;

 private:
  User& user_;
};

// The path of a file, as its facts give it.
std::string LocationOf(const std::string& name, const FileRecord& facts) {
  return FixPath(facts.FileLinkPath) + GetPathFileName(name);
}

bool InstallAlike(const InstallationFacts& left, const InstallationFacts& right) {
  return left.SharedFile == right.SharedFile && left.SelfRegister == right.SelfRegister &&
         EqualsIgnoreCase(left.Destination, right.Destination);
}

}  // namespace

Analysis::Analysis(Platform& platform, User& user, basGlobal& global)
    : platform_(platform),
      user_(user),
      findings_(platform.strings),
      lists_(platform.profiles),
      executables_(platform),
      fileGroups_(
          platform, global, [this] { return projectFile_; }, lists_, executables_),
      files_(platform.codePage),
      context_{platform, user, global, fileGroups_, executables_, &passedOver_},
      session_(CurrentSession()) {
  global.StartAnalysis();
  if (session_ != nullptr) session_->findings = &findings_;
}

Analysis::~Analysis() {
  if (session_ != nullptr && session_->findings == &findings_) session_->findings = nullptr;
}

Analysis::Result Analysis::LoadTrees(const std::string& projectFile, bool needsRebuild,
                                     const Rebuild& rebuild) {
  const CallStackEntry entry(kLoadTrees);
  const StatusScope status(user_);
  TellUnwrittenLog();
  projectFile_ = projectFile;
  platform_.files.FullPath(projectFile, projectFile_);
  const CurrentDirectoryScope folder(platform_.files, GetPathFolder(projectFile_));

  project_ = RetryOrCancel(kLoadTrees, [this] { return std::make_unique<CProject>(context_); });
  project_->NeedsRebuild = needsRebuild;
  project_->ReadsUnbuilt = !rebuild;
  user_.CheckCancelled();
  if (!ReadProject()) return Result::Unreadable;
  if (RefuseProjectKind()) return Result::WrongKind;
  user_.CheckCancelled();
  if (!RebuildIfNeeded(rebuild)) return Result::Unreadable;
  FillTrees();
  subject_ = std::make_unique<AuditSubject>(context_, *project_, files_, fileGroups_);
  AuditAnalysis(*subject_);
  return Result::Done;
}

void Analysis::Audit(const std::string& folder) {
  // What could not be written is told, and what follows from it need not be.
  for (const Finding& finding : findings_.All()) {
    if (finding.id == FindingId::FileNotWritten) return;
  }
  if (subject_ != nullptr) AuditSetup(*subject_, ReadSetup(platform_, folder));
}

// The log is opened before anything collects findings.
void Analysis::TellUnwrittenLog() const {
  if (session_ == nullptr || session_->log.OpenError() == SystemError::Success) return;
  AddFinding(FindingId::LogNotWritten, {session_->log.Path(), ErrorCode(session_->log.OpenError())});
}

// A step may have taken long.
void Analysis::EndStep() {
  user_.DoEvents();
  user_.CheckCancelled();
}

DataAccessNeeds Analysis::DataAccess() const {
  DataAccessNeeds needs;
  if (project_ == nullptr) return needs;
  for (const CReference& reference : project_->References()) {
    needs.ado = needs.ado || reference.ADO;
    needs.daoJet = needs.daoJet || reference.DAO;
    needs.rdo = needs.rdo || reference.RDO;
  }
  needs.daoOdbcDirect = needs.daoJet && needs.rdo;
  return needs;
}

// False when the file cannot be read; the user has seen why and may choose another.
bool Analysis::ReadProject() {
  return RetryOrCancel(kLoadTrees, [this] {
    try {
      project_->SetFileName(projectFile_);
      return true;
    } catch (const RuntimeError& error) {
      if (error.Number() != kProjectReadError) throw;
      user_.ShowStatus("");
      user_.ShowMessage({TextId::ProjectFileMissing, kStyleExclamation,
                         TokenReplace(platform_.strings.Text(TextId::ProjectFileMissing), {projectFile_}),
                         error.what()});
      return false;
    }
  });
}

// True when the project is of a kind that the wizard cannot package.
bool Analysis::RefuseProjectKind() {
  TextId message{};
  switch (project_->ProjectType) {
    case 0:
      message = TextId::NoVisualBasicProject;
      break;
    case CProject::PTUserControl:
      message = TextId::UserControlProject;
      break;
    case CProject::PTActiveXDocExe:
    case CProject::PTActiveXDocDll:
      message = TextId::ActiveXDocumentProject;
      break;
    default:
      return false;
  }
  user_.ShowStatus("");
  user_.ShowMessage({message, kStyleExclamation, platform_.strings.Text(message), ""});
  return true;
}

// False when the project cannot be read again after it was built.
bool Analysis::RebuildIfNeeded(const Rebuild& rebuild) {
  if (!project_->NeedsRebuild) return true;
  if (!rebuild) return true;
  const bool rebuilt = rebuild(*project_);
  user_.CheckCancelled();
  if (rebuilt) {
    project_->NeedsRebuild = false;
    if (!ReadProject()) return false;
    if (!project_->NeedsRebuild) return true;
    user_.ShowMessage(
        {TextId::RebuildFailed, kStyleCritical, platform_.strings.Text(TextId::RebuildFailed), ""});
    CancelWizard(user_);
  }
  if (user_.ShowMessage({TextId::ContinueWithoutRebuild, FindQuestion(TextId::ContinueWithoutRebuild)->style,
                         platform_.strings.Text(TextId::ContinueWithoutRebuild), ""}) == Button::No)
    CancelWizard(user_);
  AddFinding(FindingId::ProjectNotRebuilt, {projectFile_});
  return true;
}

void Analysis::FillTrees() {
  std::string title = project_->Name;
  if (title.empty()) title = ParsePath(projectFile_, PathPart::Title);
  fileGroupView_.Add(kFileGroupsKey, title + " File Groups", NodeImage::Project);
  TreeNode& root = projectView_.Add("", title, NodeImage::Project);
  AddOutputFile();

  TreeNode& forms = projectView_.Add(root, "Forms", "Forms", NodeImage::Heading);
  for (CForm& form : project_->Forms()) {
    TreeNode& node = projectView_.Add(forms, "", form.Name(), NodeImage::Form);
    for (CObject& control : form.Objects()) AddControl(node, control);
    EndStep();
  }
  TreeNode& objects = projectView_.Add(root, "Objects", "Objects", NodeImage::Heading);
  for (CObject& control : project_->Objects()) {
    AddControl(objects, control);
    EndStep();
  }
  TreeNode& references = projectView_.Add(root, "References", "References", NodeImage::Heading);
  for (CReference& reference : project_->References()) {
    if (reference.Include) AddReference(references, reference);
    EndStep();
  }
  FillFileGroupView();
  TellOfSources(context_, *project_, files_);
}

void Analysis::AddOutputFile() {
  const std::string output = project_->OutputPath();
  FileRecord facts;
  const OriginScope origin({TextId::OriginOutput, {projectFile_}});
  facts.AddAsker(CurrentOrigin());
  fileGroups_.GetFileGroupInfo("$(APPPATH)", output, "", nullptr, facts);
  AddFile(output, facts);
}

void Analysis::AddControl(TreeNode& parent, CObject& control) {
  TreeNode& node =
      projectView_.Add(parent, "", GetPathFileName(control.Name),
                       control.Include && control.LinkResolves ? NodeImage::Control : NodeImage::MissingFile);
  if (!control.Include) return;
  AddFile(control.Name, control);
  AddDependencies(node, control.Dependencies());
}

void Analysis::AddReference(TreeNode& parent, CReference& reference) {
  TreeNode& node = projectView_.Add(parent, reference.Key, reference.Name,
                                    reference.LinkResolves ? NodeImage::TypeLibrary : NodeImage::MissingFile);
  AddFile(reference.Name, reference);
  AddDependencies(node, reference.Dependencies());
}

void Analysis::AddDependencies(TreeNode& owner, CDependencies& dependencies) {
  for (CDependency& dependency : dependencies) {
    projectView_.Add(owner, "", GetPathFileName(dependency.Name),
                     dependency.LinkResolves ? NodeImage::File : NodeImage::MissingFile);
    AddFile(dependency.Name, dependency);
  }
}

// Enters a file once per key into the collection: the first one stays, found or not. A different file whose
// key is taken cannot be installed as well, which is reported.
void Analysis::AddFile(const std::string& name, const FileRecord& facts) {
  const std::string location = LocationOf(name, facts);
  const std::string place = UpperCase(location);
  std::shared_ptr<CFile> file = files_.FindItem(files_.KeyOf(name));
  if (file == nullptr) {
    file = files_.Add(name);
    if (facts.LinkResolves) {
      const auto [first, isNew] = locations_.emplace(place, name);
      if (!isNew) AddFinding({FindingId::FileNamedTwice, {location, first->second}, facts.FirstAsker()});
    }
    fileGroups_.GetFileGroupInfo("", name, "", &facts, *file);
  } else {
    const std::string taken = LocationOf(file->FileName, *file);
    const bool isSameName = EqualsIgnoreCase(GetPathFileName(file->FileName), GetPathFileName(name));
    // A copy that was not found is not a different file.
    const bool isOther = !EqualsIgnoreCase(location, taken) && !(isSameName && !facts.LinkResolves);
    if (isOther) {
      const bool isBetter = facts.LinkResolves && !file->LinkResolves;
      const FindingId id = isBetter ? FindingId::FoundFileLeftOut : FindingId::FileLeftOut;
      leftOut_.emplace_back(place, Finding{id, {location, taken}, facts.FirstAsker()});
      return;
    }
    if (!InstallAlike(facts, *file)) file->rivals.push_back(facts);
  }
  for (const Origin& asker : facts.askers) file->AddAsker(asker);
}

// Shows every file of the collection under its group.
void Analysis::FillFileGroupView() {
  // Another spelling of the name may have had a free key after all.
  for (const auto& [place, finding] : leftOut_) {
    if (locations_.count(place) == 0) AddFinding(finding);
  }
  for (const CFile& file : files_) TreeAdd(file);
}

void Analysis::TreeAdd(const CFile& file) {
  if (fileGroupView_.Find(file.Key) != nullptr) return;
  // The backslash keeps the keys of groups apart from those of files, which are alphanumeric.
  const std::string groupKey = std::string(kFileGroupsKey) + "\\" + file.FileGroup;
  TreeNode* group = fileGroupView_.Find(groupKey);
  if (group == nullptr) {
    group = &fileGroupView_.Add(*fileGroupView_.Find(kFileGroupsKey), groupKey, file.FileGroup,
                                NodeImage::FileGroup);
  }
  fileGroupView_.Add(*group, file.Key, GetPathFileName(file.FileName),
                     file.LinkResolves ? NodeImage::File : NodeImage::MissingFile);
}

}  // namespace bxvbwiz
