#include "analysis/Analysis.h"

#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/basStr.h"

namespace bxvbwiz {
namespace {

constexpr const char* kLoadTrees = "frmPanel3.LoadTrees";
constexpr const char* kFileGroupsKey = "FileGroups";

// Does something when a scope ends, for whatever reason.
template <class Action>
class AtEnd {
 public:
  explicit AtEnd(Action action) : action_(std::move(action)) {}
  ~AtEnd() { action_(); }
  AtEnd(const AtEnd&) = delete;
  AtEnd& operator=(const AtEnd&) = delete;

 private:
  Action action_;
};

bool InstallAlike(const InstallationFacts& left, const InstallationFacts& right) {
  return left.SharedFile == right.SharedFile && left.SelfRegister == right.SelfRegister &&
         EqualsIgnoreCase(left.Destination, right.Destination);
}

}  // namespace

Analysis::Analysis(Platform& platform, User& user, basGlobal& global)
    : remembered_(platform.files, user),
      platform_(WithParts(platform, remembered_)),
      user_(user),
      findings_(platform.strings),
      lists_(platform.profiles),
      executables_(platform_),
      fileGroups_(
          platform_, global, [this] { return projectFile_; }, lists_, executables_),
      files_(platform.codePage),
      context_{platform_, user, global, fileGroups_, executables_, &passedOver_},
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
  const AtEnd clearStatus([this] {
    try {
      user_.ShowStatus("");
    } catch (...) {
      return;  // the next change shows it
    }
  });
  TellUnwrittenLog();
  projectFile_ = projectFile;
  platform_.files.FullPath(projectFile, projectFile_);
  // Project files name others relative to their own folder.
  const AtEnd returnToFolder(
      [this, previous = platform_.files.CurrentDirectory()] { platform_.files.ChangeDirectory(previous); });
  const std::string folder = GetPathFolder(projectFile_);
  if (!folder.empty()) platform_.files.ChangeDirectory(folder);
  remembered_.Remember(true);
  const AtEnd forget([this] { remembered_.Remember(false); });

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
  return project_ == nullptr ? DataAccessNeeds() : DataAccessOf(*project_);
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
  constexpr std::pair<std::int16_t, TextId> kRefused[] = {
      {0, TextId::NoVisualBasicProject},
      {CProject::PTUserControl, TextId::UserControlProject},
      {CProject::PTActiveXDocExe, TextId::ActiveXDocumentProject},
      {CProject::PTActiveXDocDll, TextId::ActiveXDocumentProject},
  };
  for (const auto& [type, message] : kRefused) {
    if (project_->ProjectType != type) continue;
    user_.ShowStatus("");
    Show(message, kStyleExclamation);
    return true;
  }
  return false;
}

Button Analysis::Show(TextId message, int style) {
  return user_.ShowMessage({message, style, platform_.strings.Text(message), ""});
}

// False when the project cannot be read again after it was built.
bool Analysis::RebuildIfNeeded(const Rebuild& rebuild) {
  if (!project_->NeedsRebuild) return true;
  if (!rebuild) return true;
  const bool rebuilt = rebuild(*project_);
  remembered_.Remember(true);
  user_.CheckCancelled();
  if (rebuilt) {
    project_->NeedsRebuild = false;
    if (!ReadProject()) return false;
    if (!project_->NeedsRebuild) return true;
    Show(TextId::RebuildFailed, kStyleCritical);
    CancelWizard(user_);
  }
  if (Show(TextId::ContinueWithoutRebuild, FindQuestion(TextId::ContinueWithoutRebuild)->style) == Button::No)
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

  const auto addControl = [this](TreeNode& parent, CObject& control) {
    AddLibrary(parent, "", GetPathFileName(control.Name), NodeImage::Control, control);
  };
  TreeNode& forms = projectView_.Add(root, "Forms", "Forms", NodeImage::Heading);
  for (CForm& form : project_->Forms()) {
    TreeNode& node = projectView_.Add(forms, "", form.Name(), NodeImage::Form);
    for (CObject& control : form.Objects()) addControl(node, control);
    EndStep();
  }
  TreeNode& objects = projectView_.Add(root, "Objects", "Objects", NodeImage::Heading);
  for (CObject& control : project_->Objects()) {
    addControl(objects, control);
    EndStep();
  }
  TreeNode& references = projectView_.Add(root, "References", "References", NodeImage::Heading);
  for (CReference& reference : project_->References()) {
    if (reference.Include)
      AddLibrary(references, reference.Key, reference.Name, NodeImage::TypeLibrary, reference);
    EndStep();
  }
  FillFileGroupView();
}

void Analysis::AddOutputFile() {
  const std::string output = project_->OutputPath();
  FileRecord facts;
  const OriginScope origin({TextId::OriginOutput, {projectFile_}});
  facts.AddAsker(CurrentOrigin());
  fileGroups_.GetFileGroupInfo("$(APPPATH)", output, "", nullptr, facts);
  AddFile(output, facts);
}

void Analysis::AddLibrary(TreeNode& parent, const std::string& key, const std::string& text, NodeImage image,
                          Library& library) {
  const bool isFound = library.Include && library.LinkResolves;
  TreeNode& node = projectView_.Add(parent, key, text, isFound ? image : NodeImage::MissingFile);
  if (!library.Include) return;
  AddFile(library.Name, library);
  for (CDependency& dependency : library.Dependencies()) {
    projectView_.Add(node, "", GetPathFileName(dependency.Name),
                     dependency.LinkResolves ? NodeImage::File : NodeImage::MissingFile);
    AddFile(dependency.Name, dependency);
  }
}

// Enters a file once per key into the collection: the first one stays, found or not. A different file whose
// key is taken cannot be installed as well, which is reported.
void Analysis::AddFile(const std::string& name, const FileRecord& facts) {
  const std::string location = facts.SourceOf(name);
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
    const std::string taken = file->Source();
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
