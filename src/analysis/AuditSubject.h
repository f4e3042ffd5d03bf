#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "project/CFiles.h"
#include "project/CProject.h"
#include "setupgen/CFileGroups.h"

namespace bxvbwiz {

// A control or type library of the project.
struct AuditedLibrary {
  const FileRecord& record;
  const std::string& name;  // the path of its file; the name on the line when it was not found
  const std::string& rawName;
  const std::string& depFile;  // empty when it has none
  bool isControl;
  bool isIncluded;
  CDependencies& dependencies;
};

// The parts of an analysis that the checks of the audit look at.
class AuditSubject {
 public:
  // All must outlive the subject.
  AuditSubject(const AnalysisContext& context, CProject& auditedProject, const CFiles& auditedFiles,
               CFileGroups& fileGroups);

  // The source copy of a file.
  static std::string SourceOf(const CFile& file);
  // What the file collection installs for a library; null when that is another file, or none.
  const CFile* Installed(const AuditedLibrary& library) const;
  // What the file collection installs for the name or path of a file; null when it holds none.
  const CFile* Installed(const std::string& name) const { return files.FindItem(files.KeyOf(name)).get(); }
  // Whether a control or type library of the project is installed as this file.
  bool IsLibrary(const CFile& file) const;
  // The project's own program; null when the collection does not hold it.
  const CFile* Output() const { return Installed(project.OutputPath()); }
  // The copy of a file that lies beside the library whose .dep file names it; empty when there is none or
  // when the setup installs it.
  std::string CopyBesideLibrary(const CFile& file) const;

  Platform& platform;
  basGlobal& global;
  CProject& project;
  const CFiles& files;
  Executables& executables;
  CFileGroups& groups;
  std::vector<AuditedLibrary> libraries;  // each once

 private:
  void FindCopiesBeside(const AuditedLibrary& library, const std::string& systemFolder);

  std::unordered_map<const CFile*, std::string> copies_;
};

}  // namespace bxvbwiz
