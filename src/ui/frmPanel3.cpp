#include "support/basFile.h"
#include "support/basStr.h"
#include "ui/frmMain.h"

// The analysis step: reads the project, decides on a rebuild, and fills the two trees of the summary page.
namespace bxvbwiz {

namespace {

constexpr const char* kLoadTrees = "frmPanel3.LoadTrees";
constexpr const char* kFileGroupsKey = "FileGroups";

// Makes a folder the current directory while it lives, because project files name others relative to their
// own folder.
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

// Takes away what a label says at the end, however that comes.
class LabelScope {
 public:
  LabelScope(Label& label, FormView& view) : label_(label), view_(view) {}
  ~LabelScope() {
    label_.text.clear();
    try {
      view_.Refresh();
    } catch (...) {
      return;  // the next change shows it
    }
  }
  LabelScope(const LabelScope&) = delete;
  LabelScope& operator=(const LabelScope&) = delete;

 private:
  Label& label_;
  FormView& view_;
};

// Where the facts say that a file lies.
std::string LocationOf(const std::string& name, const FileRecord& facts) {
  return FixPath(facts.FileLinkPath) + GetPathFileName(name);
}

}  // namespace

bool frmMain::LoadTrees(const std::string& projectFile) {
  const CallStackEntry entry(kLoadTrees);
  const LabelScope status(lblStatus, *view_);
  std::string path = projectFile;
  platform_.files.FullPath(projectFile, path);
  const CurrentDirectoryScope folder(platform_.files, GetPathFolder(path));

  project_.reset();
  context_.reset();
  lists_.Forget();
  findings_.Clear();
  setupProjectName.clear();
  fileGroups_ = std::make_unique<CFileGroups>(
      platform_, global_, [path] { return path; }, lists_);
  files_ = std::make_unique<CFiles>(platform_.codePage);
  locations_.clear();
  leftOut_.clear();
  context_ = std::make_unique<AnalysisContext>(AnalysisContext{platform_, *this, global_, *fileGroups_});
  project_ = Reporting(kLoadTrees, [this] { return std::make_unique<CProject>(*context_); });
  project_->NeedsRebuild = chkRebuild.checked;
  CheckCancelled();

  fileName_ = path;
  if (!ReadProject() || RefuseProjectKind()) return false;
  CheckCancelled();
  if (!RebuildIfNeeded()) return false;
  FillTrees();
  return true;
}

// False when the file cannot be read: the user was told and may choose another.
bool frmMain::ReadProject() {
  return Reporting(kLoadTrees, [this] {
    try {
      project_->SetFileName(fileName_);
      return true;
    } catch (const RuntimeError& error) {
      if (error.Number() != kProjectReadError) throw;
      ShowStatus("");
      ShowMessage({TextId::ProjectFileMissing, kStyleExclamation,
                   TokenReplace(platform_.strings.Text(TextId::ProjectFileMissing), {fileName_}),
                   error.what()});
      return false;
    }
  });
}

// True when the project is of a kind that the wizard cannot package.
bool frmMain::RefuseProjectKind() {
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
  ShowStatus("");
  ShowMessage({message, kStyleExclamation, platform_.strings.Text(message), ""});
  return true;
}

// False when the project cannot be read again after it was built.
bool frmMain::RebuildIfNeeded() {
  if (!project_->NeedsRebuild) return true;
  const bool rebuilt = flow_->RebuildProject();
  CheckCancelled();
  if (rebuilt) {
    project_->NeedsRebuild = false;
    if (!ReadProject()) return false;
    if (!project_->NeedsRebuild) return true;
    ShowMessage({TextId::RebuildFailed, kStyleCritical, platform_.strings.Text(TextId::RebuildFailed), ""});
    CancelWizard(*this);
  }
  const TextId question = TextId::ContinueWithoutRebuild;
  if (ShowMessage({question, kStyleYesNo, platform_.strings.Text(question), ""}) == Button::No)
    CancelWizard(*this);
  AddFinding(FindingId::ProjectNotRebuilt, {fileName_});
  return true;
}

void frmMain::FillTrees() {
  std::string title = project_->Name;
  if (title.empty()) title = ParsePath(fileName_, PathPart::Title);
  tvwFiles.Clear();
  tvwFiles.Add(kFileGroupsKey, title + " File Groups", NodeImage::Project);
  tvwDependencies.Clear();
  TreeNode& root = tvwDependencies.Add("", title, NodeImage::Project);
  AddOutputFile();

  TreeNode& forms = tvwDependencies.Add(root, "Forms", "Forms", NodeImage::Heading);
  for (CForm& form : project_->Forms()) {
    TreeNode& node = tvwDependencies.Add(forms, "", form.Name(), NodeImage::Form);
    for (CObject& control : form.Objects()) AddControl(node, control);
    DoEvents();
    CheckCancelled();
  }
  TreeNode& objects = tvwDependencies.Add(root, "Objects", "Objects", NodeImage::Heading);
  for (CObject& control : project_->Objects()) {
    AddControl(objects, control);
    DoEvents();
    CheckCancelled();
  }
  TreeNode& references = tvwDependencies.Add(root, "References", "References", NodeImage::Heading);
  for (CReference& reference : project_->References()) {
    if (reference.Include) AddReference(references, reference);
    DoEvents();
    CheckCancelled();
  }
  FillFileView();
}

void frmMain::AddOutputFile() {
  const std::string output = project_->OutputPath();
  FileRecord facts;
  fileGroups_->GetFileGroupInfo("$(APPPATH)", output, "", nullptr, facts);
  AddFile(output, facts);
}

void frmMain::AddControl(TreeNode& parent, CObject& control) {
  TreeNode& node = tvwDependencies.Add(
      parent, "", GetPathFileName(control.Name),
      control.Include && control.LinkResolves ? NodeImage::Control : NodeImage::MissingFile);
  if (!control.Include) return;
  AddFile(control.Name, control);
  AddDependencies(node, control.Dependencies());
}

void frmMain::AddReference(TreeNode& parent, CReference& reference) {
  TreeNode& node =
      tvwDependencies.Add(parent, reference.Key, reference.Name,
                          reference.LinkResolves ? NodeImage::TypeLibrary : NodeImage::MissingFile);
  AddFile(reference.Name, reference);
  AddDependencies(node, reference.Dependencies());
}

void frmMain::AddDependencies(TreeNode& owner, CDependencies& dependencies) {
  for (CDependency& dependency : dependencies) {
    tvwDependencies.Add(owner, "", GetPathFileName(dependency.Name),
                        dependency.LinkResolves ? NodeImage::File : NodeImage::MissingFile);
    AddFile(dependency.Name, dependency);
  }
}

// Enters a file once per key into the collection. Another file whose key is taken cannot be installed beside
// the first one, so the user is told that it was left out; but one that was found takes the place of one that
// was not.
void frmMain::AddFile(const std::string& name, const FileRecord& facts) {
  const std::string location = LocationOf(name, facts);
  // One file may be named in several spellings, which have keys of their own; it is installed once.
  const std::string place = UpperCase(location);
  if (facts.LinkResolves && locations_.count(place) != 0) return;
  std::shared_ptr<CFile> file = files_->FindItem(files_->KeyOf(name));
  if (file == nullptr) {
    file = files_->Add(name);
  } else {
    const bool isSameName = EqualsIgnoreCase(GetPathFileName(file->FileName), GetPathFileName(name));
    // A copy that was not found is no other file: the one that is there serves.
    if (isSameName && !facts.LinkResolves) return;
    const std::string taken = LocationOf(file->FileName, *file);
    if (EqualsIgnoreCase(location, taken)) return;
    if (!isSameName || file->LinkResolves) {
      leftOut_.emplace_back(place, Finding{FindingId::FileLeftOut, {location, taken}});
      return;
    }
    file->FileName = name;
  }
  if (facts.LinkResolves) locations_.insert(place);
  fileGroups_->GetFileGroupInfo("", name, "", &facts, *file);
}

// Shows every file of the collection under its group.
void frmMain::FillFileView() {
  // Another spelling of the name may have had a free key after all.
  for (const auto& [place, finding] : leftOut_) {
    if (locations_.count(place) == 0) findings_.Add(finding);
  }
  for (const CFile& file : *files_) {
    if (!file.LinkResolves) AddFinding(FindingId::FileMissing, {file.FileName});
    TreeAdd(file);
  }
}

void frmMain::TreeAdd(const CFile& file) {
  if (tvwFiles.Find(file.Key) != nullptr) return;
  // The backslash keeps the keys of groups apart from those of files, which are alphanumeric.
  const std::string groupKey = std::string(kFileGroupsKey) + "\\" + file.FileGroup;
  TreeNode* group = tvwFiles.Find(groupKey);
  if (group == nullptr) {
    group = &tvwFiles.Add(*tvwFiles.Find(kFileGroupsKey), groupKey, file.FileGroup, NodeImage::FileGroup);
  }
  tvwFiles.Add(*group, file.Key, GetPathFileName(file.FileName),
               file.LinkResolves ? NodeImage::File : NodeImage::MissingFile);
}

}  // namespace bxvbwiz
