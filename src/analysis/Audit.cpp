#include "analysis/Audit.h"

#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {

AuditSubject::AuditSubject(const AnalysisContext& context, CProject& auditedProject,
                           const CFiles& auditedFiles, CFileGroups& fileGroups)
    : platform(context.platform),
      global(context.global),
      project(auditedProject),
      files(auditedFiles),
      executables(context.executables),
      groups(fileGroups) {
  for (const CFile& file : files) byName_.emplace(UpperCase(GetPathFileName(file.FileName)), &file);
  for (CObject& control : project.AllControls()) libraries.push_back(&control);
  for (CReference& reference : project.References()) libraries.push_back(&reference);
  for (Library* const library : libraries) {
    libraryOf_.emplace(Installed(*library), library);
    FindCopiesBeside(*library);
  }
  output = Installed(project.OutputPath());
}

// Names that differ in case only are those of two files.
const CFile* AuditSubject::Installed(const std::string& path) const {
  const CFile* const exact = files.FindItem(files.KeyOf(path)).get();
  const std::string name = GetPathFileName(path);
  if (exact != nullptr && EqualsIgnoreCase(GetPathFileName(exact->FileName), name)) return exact;
  const auto known = byName_.find(UpperCase(name));
  return known == byName_.end() ? nullptr : known->second;
}

const CFile* AuditSubject::Installed(const Library& library) const {
  return library.Include ? Installed(library.Name) : nullptr;
}

const Library* AuditSubject::LibraryOf(const CFile& file) const {
  const auto known = libraryOf_.find(&file);
  return known == libraryOf_.end() ? nullptr : known->second;
}

const ExecutableFacts& AuditSubject::FactsOf(const CFile& file) const {
  return executables.Of(file.LinkResolves ? file.Source() : "");
}

bool AuditSubject::Exists(const std::string& path) const {
  return FolderHoldsFile(platform.files, FixPath(GetPathFolder(path)), GetPathFileName(path));
}

// What lies in the system folder is found there anyway.
void AuditSubject::FindCopiesBeside(Library& library) {
  const std::string folder = FixPath(GetPathFolder(library.Name));
  if (!library.Include || folder == "\\" || EqualsIgnoreCase(folder, project.WinSysDir)) return;
  for (const CDependency& dependency : library.Dependencies()) {
    const CFile* const file = Installed(dependency.Name);
    const std::string copy = folder + GetPathFileName(dependency.Name);
    if (dependency.FirstAsker().id != TextId::OriginUses || file == nullptr) continue;
    if (!EqualsIgnoreCase(file->Source(), copy) && Exists(copy)) copiesBeside.emplace(file, copy);
  }
}

void AuditAnalysis(const AuditSubject& subject) {
  const CallStackEntry entry("AuditAnalysis");
  for (const AuditChecks& checks : {SourceChecks(), FileChecks(), RegistrationChecks(), LibraryChecks()}) {
    for (const auto check : checks) LogAndGoOn("AuditAnalysis", [&] { check(subject); });
  }
}

void AuditSetup(const AuditSubject& subject, const SetupContents& setup) {
  const CallStackEntry entry("AuditSetup");
  for (const auto check : SetupChecks()) LogAndGoOn("AuditSetup", [&] { check(subject, setup); });
}

}  // namespace bxvbwiz
