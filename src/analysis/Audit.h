#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "analysis/SetupContents.h"
#include "project/CFiles.h"
#include "project/CProject.h"
#include "setupgen/CFileGroups.h"

// The audit: one small check a rule. Each holds what was decided against a fact that decided nothing, and
// adds findings to those of the session. No check changes what is installed.
namespace bxvbwiz {

// The parts of an analysis that the checks of the audit look at.
class AuditSubject {
 public:
  // All must outlive the subject.
  AuditSubject(const AnalysisContext& context, CProject& auditedProject, const CFiles& auditedFiles,
               CFileGroups& fileGroups);

  // What the setup installs for the name or path of a file, and for a library; null when that is nothing.
  const CFile* Installed(const std::string& path) const;
  const CFile* Installed(const Library& library) const;
  // The library of the project that is installed as this file; null when none is.
  const Library* LibraryOf(const CFile& file) const;
  // What is known of the source copy of a file; nothing when it was not found.
  const ExecutableFacts& FactsOf(const CFile& file) const;
  // Whether a file lies at a full path.
  bool Exists(const std::string& path) const;

  Platform& platform;
  basGlobal& global;
  CProject& project;
  const CFiles& files;
  Executables& executables;
  CFileGroups& groups;
  std::vector<Library*> libraries;  // each once, the controls first
  const CFile* output;              // the project's own program; null when it is not installed
  // Copies that lie beside the library whose .dep file names them, where the setup has another or none.
  std::unordered_map<const CFile*, std::string> copiesBeside;

 private:
  void FindCopiesBeside(Library& library);

  std::unordered_map<std::string, const CFile*> byName_;  // the first of each name in upper case
  std::unordered_map<const CFile*, const Library*> libraryOf_;
};

// Checks the files and libraries of an analysis. The project's folder must be the current directory.
void AuditAnalysis(const AuditSubject& subject);
// Checks what was written for them: `setup` is the setup project as it lies on the disk.
void AuditSetup(const AuditSubject& subject, const SetupContents& setup);

// The checks, in the order in which they are made.
using AuditChecks = std::vector<void (*)(const AuditSubject& subject)>;
AuditChecks SourceChecks();        // what the source files ask for, and what the project names
AuditChecks FileChecks();          // the files that the setup installs
AuditChecks RegistrationChecks();  // what these files say of their registration
AuditChecks LibraryChecks();       // the run time and the libraries that the project names
using AuditSetupChecks = std::vector<void (*)(const AuditSubject& subject, const SetupContents& setup)>;
AuditSetupChecks SetupChecks();  // the setup project, against what the files need

// A check that is called for each file, which its findings come from.
template <auto kCheck>
void ForEachFile(const AuditSubject& subject) {
  for (const CFile& file : subject.files) {
    const OriginScope origin(file.FirstAsker());
    kCheck(subject, file);
  }
}

// The same for each library.
template <auto kCheck>
void ForEachLibrary(const AuditSubject& subject) {
  for (Library* const library : subject.libraries) {
    const OriginScope origin(library->FirstAsker());
    kCheck(subject, *library);
  }
}

}  // namespace bxvbwiz
