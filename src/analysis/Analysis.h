#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "analysis/Audit.h"
#include "analysis/Tree.h"
#include "project/AnalysisContext.h"
#include "project/CFiles.h"
#include "project/CProject.h"
#include "setupgen/CFileGroups.h"
#include "setupgen/SetupAnswers.h"
#include "support/Findings.h"
#include "support/RememberedFiles.h"

namespace bxvbwiz {

// One analysis of a project and its result: the project, the file records of all that a setup installs, the
// trees that show them, and the data access that the project needs. The result fills while the analysis runs,
// so that an analysis that ends early shows how far it got.
class Analysis {
 public:
  enum class Result {
    Done,
    Unreadable,  // the project file; the user has seen a message
    WrongKind,   // the project is of a kind that cannot be packaged; the user has seen a message
  };
  // Compiles the project; false when that failed. Without one a project is read as if it were built.
  using Rebuild = std::function<bool(const CProject&)>;

  // All arguments must outlive the analysis. While it lives, the findings of the current session go to it.
  Analysis(Platform& platform, User& user, basGlobal& global);
  ~Analysis();
  Analysis(const Analysis&) = delete;
  Analysis& operator=(const Analysis&) = delete;

  // Reads the project, has it rebuilt when `needsRebuild` is set or its output is missing, and decides what
  // is installed. Call it once. May end the wizard.
  Result LoadTrees(const std::string& projectFile, bool needsRebuild, const Rebuild& rebuild);

  // Null before the project was created.
  const CProject* Project() const { return project_.get(); }
  const CFiles& Files() const { return files_; }
  const Tree& ProjectView() const { return projectView_; }
  const Tree& FileGroupView() const { return fileGroupView_; }
  const PassedOver& SystemFiles() const { return passedOver_; }
  // What the project's references need; nothing while there is no project.
  DataAccessNeeds DataAccess() const;
  // What was found wrong or is left to do, by the analysis and by those who worked with its result.
  const Findings& Found() const { return findings_; }
  // What is known of the executables that were read. It reads others when it is asked for them.
  Executables& Programs() { return executables_; }
  // Checks the setup project in `folder` that was made from this analysis.
  void Audit(const std::string& folder);
  // The builder that decided the files' facts, and the numbered lists that it keeps of a setup project.
  CFileGroups& FileGroups() { return fileGroups_; }
  NumberedKeys& Lists() { return lists_; }

 private:
  void TellUnwrittenLog() const;
  bool ReadProject();
  bool RefuseProjectKind();
  Button Show(TextId message, int style);
  bool RebuildIfNeeded(const Rebuild& rebuild);
  void FillTrees();
  void AddOutputFile();
  // Adds a library's node and file, and those of what it needs.
  void AddLibrary(TreeNode& parent, const std::string& key, const std::string& text, NodeImage image,
                  Library& library);
  void AddFile(const std::string& name, const FileRecord& facts);
  void FillFileGroupView();
  void TreeAdd(const CFile& file);
  void EndStep();

  RememberedFiles remembered_;
  Platform platform_;
  User& user_;
  Findings findings_;
  std::string projectFile_;  // full path
  NumberedKeys lists_;
  Executables executables_;
  CFileGroups fileGroups_;
  CFiles files_;
  // Names of the files that were found, by their locations in upper case.
  std::unordered_map<std::string, std::string> locations_;
  // Locations of files whose key another file has, and what to report about them.
  std::vector<std::pair<std::string, Finding>> leftOut_;
  PassedOver passedOver_;
  AnalysisContext context_;
  Session* const session_;  // whose findings are collected here; null for none
  std::unique_ptr<CProject> project_;
  std::unique_ptr<AuditSubject> subject_;
  Tree projectView_;
  Tree fileGroupView_;
};

}  // namespace bxvbwiz
