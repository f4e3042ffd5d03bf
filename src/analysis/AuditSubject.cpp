#include "analysis/AuditSubject.h"

#include <algorithm>
#include <unordered_set>

#include "project/basDependency.h"
#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

template <class Library>
AuditedLibrary LibraryOf(Library& library, bool isControl) {
  return {library,   library.Name,    library.RawName(),     library.DepFile,
          isControl, library.Include, library.Dependencies()};
}

}  // namespace

AuditSubject::AuditSubject(const AnalysisContext& context, CProject& auditedProject,
                           const CFiles& auditedFiles, CFileGroups& fileGroups)
    : platform(context.platform),
      global(context.global),
      project(auditedProject),
      files(auditedFiles),
      executables(context.executables),
      groups(fileGroups) {
  std::unordered_set<const CObject*> known;
  const auto addControls = [&](CObjects& controls) {
    for (CObject& control : controls) {
      if (known.insert(&control).second) libraries.push_back(LibraryOf(control, true));
    }
  };
  for (CForm& form : project.Forms()) addControls(form.Objects());
  addControls(project.Objects());
  for (CReference& reference : project.References()) libraries.push_back(LibraryOf(reference, false));
  const std::string systemFolder = SystemFolder(platform);
  for (const AuditedLibrary& library : libraries) FindCopiesBeside(library, systemFolder);
}

std::string AuditSubject::SourceOf(const CFile& file) {
  return FixPath(file.FileLinkPath) + GetPathFileName(file.FileName);
}

const CFile* AuditSubject::Installed(const AuditedLibrary& library) const {
  if (!library.isIncluded) return nullptr;
  const CFile* file = Installed(library.name);
  const bool isIt =
      file != nullptr && EqualsIgnoreCase(GetPathFileName(file->FileName), GetPathFileName(library.name));
  return isIt ? file : nullptr;
}

bool AuditSubject::IsLibrary(const CFile& file) const {
  return std::any_of(libraries.begin(), libraries.end(),
                     [&](const AuditedLibrary& library) { return Installed(library) == &file; });
}

std::string AuditSubject::CopyBesideLibrary(const CFile& file) const {
  const auto copy = copies_.find(&file);
  return copy == copies_.end() ? "" : copy->second;
}

// Files in the system folder are found there anyway.
void AuditSubject::FindCopiesBeside(const AuditedLibrary& library, const std::string& systemFolder) {
  const std::string folder = FixPath(GetPathFolder(library.name));
  if (!library.isIncluded || folder == "\\" || EqualsIgnoreCase(folder, systemFolder)) return;
  for (const CDependency& dependency : library.dependencies) {
    if (dependency.FirstAsker().id != TextId::OriginUses) continue;
    const std::string name = GetPathFileName(dependency.Name);
    const CFile* file = Installed(name);
    if (file == nullptr || EqualsIgnoreCase(SourceOf(*file), folder + name)) continue;
    if (FolderHoldsFile(platform.files, folder, name)) copies_.emplace(file, folder + name);
  }
}

}  // namespace bxvbwiz
