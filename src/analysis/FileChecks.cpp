#include "analysis/Audit.h"
#include "setupgen/Destinations.h"
#include "setupgen/SetupFiles.h"
#include "support/basFile.h"
#include "sysinfo/WindowsFiles.h"

namespace bxvbwiz {
namespace {

// The facts of a record as the setup project has them.
std::string Properties(CFileGroups& groups, const FileRecord& record) {
  return "TARGET=" + groups.FolderSymbol(record) + ", FILETYPE=" + YesOrNo(record.SharedFile) +
         ", SELFREGISTERING=" + YesOrNo(record.SelfRegister == kRegisterDll);
}

// Whether the setup is the worse for it that `file` decided and not `rival`. A library's own record knows it
// best; what merely needs the file says little of the place.
bool IsWorse(CFileGroups& groups, const CFile& file, const FileRecord& rival) {
  if (rival.SharedFile && !file.SharedFile) return true;
  if (rival.SelfRegister == kRegisterDll && file.SelfRegister != kRegisterDll) return true;
  const bool isLibrary = rival.kind == RecordKind::Control || rival.kind == RecordKind::TypeLibrary;
  return isLibrary && !EqualsIgnoreCase(groups.FolderSymbol(file), groups.FolderSymbol(rival));
}

// Whether the source copy of a file is another one than the copy that lies elsewhere.
bool Differs(const AuditSubject& subject, const CFile& file, const std::string& copy) {
  const ExecutableFacts& first = subject.FactsOf(file);
  const ExecutableFacts& second = subject.executables.Of(copy);
  return first.isReadable && second.isReadable &&
         (first.size != second.size || first.linkTime != second.linkTime);
}

// Whether several programs may use the file where it is installed.
bool IsInSharedFolder(CFileGroups& groups, const CFile& file) {
  const std::string symbol = groups.FolderSymbol(file);
  return FindDestination([&](const Destination& place) {
           return place.sharing != 0 && StartsWith(symbol, place.symbol);
         }) != nullptr;
}

// Files that were not found where the wizard looks, with the place where they lie.
void TellMissingFile(const AuditSubject& subject, const CFile& file) {
  if (file.LinkResolves) return;
  if (subject.project.ReadsUnbuilt && &file == subject.output) {
    if (!subject.project.IsMisread) AddFinding(FindingId::OutputMissing, {file.FileName});
    return;
  }
  const auto copy = subject.copiesBeside.find(&file);
  const std::string path = copy != subject.copiesBeside.end()
                               ? copy->second
                               : subject.platform.files.Search(GetPathFileName(file.FileName));
  if (path.empty()) return AddFinding(FindingId::FileMissing, {file.FileName});
  AddFinding(FindingId::FileElsewhere, {file.FileName, path});
}

// What is wrong with the facts by which a file is installed.
void TellDoubts(const AuditSubject& /*subject*/, const CFile& file) {
  for (const Finding& doubt : file.doubts) AddFinding(doubt);
}

// The first that names a file decides its facts; another knew better.
void TellOtherFacts(const AuditSubject& subject, const CFile& file) {
  for (const FileRecord& rival : file.rivals) {
    if (!IsWorse(subject.groups, file, rival)) continue;
    AddFinding({FindingId::FactsDiffer,
                {file.Source(), Properties(subject.groups, file), Properties(subject.groups, rival)},
                rival.FirstAsker()});
  }
}

// Another copy than the one beside the library that needs it.
void TellCopyBesideLibrary(const AuditSubject& subject, const CFile& file) {
  const auto copy = subject.copiesBeside.find(&file);
  if (copy != subject.copiesBeside.end() && Differs(subject, file, copy->second))
    AddFinding(FindingId::CopyBesideLibrary, {file.Source(), copy->second});
}

// A copy of the redistributables in place of the one that was asked for.
void TellOtherCopy(const AuditSubject& subject, const CFile& file) {
  if (!IsAbsolutePath(file.FileName) || EqualsIgnoreCase(file.Source(), file.FileName)) return;
  if (!Differs(subject, file, file.FileName)) return;
  const bool isOutput = &file == subject.output;
  AddFinding(isOutput ? FindingId::OtherProgramInstalled : FindingId::OtherCopyInstalled,
             {file.Source(), file.FileName});
}

// Nothing can be known to be shared.
void TellMissingIndex(const AuditSubject& subject) {
  for (const CFile& file : subject.files) {
    if (file.SharedFile || !IsInSharedFolder(subject.groups, file)) continue;
    std::string index;
    try {
      index = subject.groups.CoreCompIni();
    } catch (const RuntimeError&) {
      return;  // told when the file was looked up in it
    }
    if (subject.Exists(index)) return;
    return AddFinding({FindingId::SharedIndexMissing, {index, file.Source()}, file.FirstAsker()});
  }
}

// Parts of Windows, shared run-time libraries and debug libraries.
void TellWindowsFile(const AuditSubject& subject, const CFile& file) {
  // Without the list of system files, the setup holds many of them; that is told.
  const CFiles* const list = subject.global.gSystemFiles();
  const std::optional<WindowsFileUse> use = UseOfWindowsFile(GetPathFileName(file.FileName));
  if (list == nullptr || list->Count() == 0) return;
  if (use == WindowsFileUse::Never) AddFinding(FindingId::WindowsFileInstalled, {file.FileName});
  if (use == WindowsFileUse::Debug) AddFinding(FindingId::DebugLibrary, {file.FileName});
  if (use == WindowsFileUse::Shared && !file.SharedFile && IsInSharedFolder(subject.groups, file))
    AddFinding(FindingId::RuntimeNotShared, {file.FileName});
}

// What a .dep file names behind a number that is missing.
void TellUsesAfterGap(const AuditSubject& subject, const CDependencies& dependencies) {
  for (const Finding& finding : dependencies.afterGap) {
    const std::string& name = finding.values.front();
    if (!subject.global.IsSystemFile(name) && subject.Installed(name) == nullptr) AddFinding(finding);
  }
}

void TellUsesAfterGaps(const AuditSubject& subject, Library& library) {
  if (!library.Include) return;
  TellUsesAfterGap(subject, library.Dependencies());
  for (CDependency& dependency : library.Dependencies()) TellUsesAfterGap(subject, dependency.Dependencies());
}

}  // namespace

AuditChecks FileChecks() {
  return {ForEachFile<TellMissingFile>,       ForEachFile<TellDoubts>,          ForEachFile<TellOtherFacts>,
          ForEachFile<TellCopyBesideLibrary>, ForEachFile<TellOtherCopy>,       TellMissingIndex,
          ForEachFile<TellWindowsFile>,       ForEachLibrary<TellUsesAfterGaps>};
}

}  // namespace bxvbwiz
