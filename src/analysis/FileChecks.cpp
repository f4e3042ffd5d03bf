#include "analysis/FileChecks.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "project/basDependency.h"
#include "setupgen/Destinations.h"
#include "support/basFile.h"
#include "sysinfo/WindowsFiles.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kListBuffer = 0xFFFF;
constexpr std::size_t kUsesBuffer = 254;
constexpr std::string_view kUses = "USES";

// The facts of a record as the setup project has them.
std::string Properties(CFileGroups& groups, const FileRecord& record) {
  return "TARGET=" + groups.FolderSymbol(record) + ", FILETYPE=" + (record.SharedFile ? "Yes" : "No") +
         ", SELFREGISTERING=" + (record.SelfRegister == kRegisterDll ? "Yes" : "No");
}

// Whether the setup is the worse for it that `file` decided and not `rival`. A library's own record knows it
// best; what merely needs the file says little of the place.
bool IsWorse(CFileGroups& groups, const CFile& file, const FileRecord& rival) {
  if (rival.SharedFile && !file.SharedFile) return true;
  if (rival.SelfRegister == kRegisterDll && file.SelfRegister != kRegisterDll) return true;
  const bool isLibrary = rival.kind == RecordKind::Control || rival.kind == RecordKind::TypeLibrary;
  return isLibrary && !EqualsIgnoreCase(groups.FolderSymbol(file), groups.FolderSymbol(rival));
}

bool Differ(Executables& executables, const std::string& path, const std::string& other) {
  const ExecutableFacts& first = executables.Of(path);
  const ExecutableFacts& second = executables.Of(other);
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

// The numbers of the keys "Uses1", "Uses2", ... that a section has.
std::set<int> UsesNumbers(ProfileStrings& profiles, const std::string& depFile, const std::string& section) {
  std::set<int> numbers;
  const std::string keys = profiles.GetString(section, std::nullopt, "", kListBuffer, depFile);
  for (std::size_t start = 0; start < keys.size();) {
    const std::string key = keys.substr(start, keys.find('\0', start) - start);
    start += key.size() + 1;
    if (!StartsWith(UpperCase(key), kUses)) continue;
    int number = 0;
    const char* end = key.data() + key.size();
    const auto [rest, error] = std::from_chars(key.data() + kUses.size(), end, number);
    if (error == std::errc() && rest == end) numbers.insert(number);
  }
  return numbers;
}

class UsesCheck {
 public:
  explicit UsesCheck(const AuditSubject& subject) : subject_(subject) {}

  // Takes the section of `depFile` that describes the file.
  void Take(const std::string& depFile, const std::string& name) {
    if (depFile.empty() || !taken_.insert(UpperCase(depFile) + '\n' + UpperCase(name)).second) return;
    const std::string section = FindDepSection(subject_.platform, depFile, name);
    if (section.empty()) return;
    const std::set<int> numbers = UsesNumbers(subject_.platform.profiles, depFile, section);
    if (numbers.empty() || IsTaken(depFile, section, *numbers.rbegin())) return;
    int end = 1;
    while (numbers.count(end) != 0 && !Value(depFile, section, end).empty()) ++end;
    for (auto number = numbers.upper_bound(end); number != numbers.end(); ++number) {
      const std::string value = Value(depFile, section, *number);
      if (value.empty() || subject_.global.IsSystemFile(value) || subject_.Installed(value) != nullptr)
        continue;
      AddFinding({FindingId::UsesAfterGap,
                  {value, "Uses" + std::to_string(end)},
                  {TextId::OriginUses, {depFile, section, "Uses" + std::to_string(*number)}}});
    }
  }

 private:
  // Whether the list was read as far as this number, for a file that the setup installs.
  bool IsTaken(const std::string& depFile, const std::string& section, int number) {
    const CFile* const file = subject_.Installed(Value(depFile, section, number));
    const std::vector<std::string> origin{depFile, section, "Uses" + std::to_string(number)};
    return file != nullptr && std::any_of(file->askers.begin(), file->askers.end(),
                                          [&](const Origin& asker) { return asker.values == origin; });
  }

  // Empty when the list ends there.
  std::string Value(const std::string& depFile, const std::string& section, int number) {
    const std::string value = subject_.platform.profiles.GetString(section, "Uses" + std::to_string(number),
                                                                   "", kUsesBuffer, depFile);
    return value == "NONE" ? "" : std::string(TrimBlanks(value));
  }

  const AuditSubject& subject_;
  std::set<std::string> taken_;
};

}  // namespace

void TellMissingFiles(const AuditSubject& subject) {
  for (const CFile& file : subject.files) {
    if (file.LinkResolves) continue;
    if (subject.project.ReadsUnbuilt && &file == subject.Output()) {
      if (!subject.project.IsMisread)
        AddFinding({FindingId::OutputMissing, {file.FileName}, file.FirstAsker()});
      continue;
    }
    std::string path = subject.CopyBesideLibrary(file);
    if (path.empty()) path = subject.platform.files.Search(GetPathFileName(file.FileName));
    if (path.empty())
      AddFinding({FindingId::FileMissing, {file.FileName}, file.FirstAsker()});
    else
      AddFinding({FindingId::FileElsewhere, {file.FileName, path}, file.FirstAsker()});
  }
}

void TellDoubts(const AuditSubject& subject) {
  for (const CFile& file : subject.files) {
    for (const Finding& doubt : file.doubts) AddFinding(doubt);
  }
}

void TellOtherFacts(const AuditSubject& subject) {
  for (const CFile& file : subject.files) {
    for (const FileRecord& rival : file.rivals) {
      if (!IsWorse(subject.groups, file, rival)) continue;
      AddFinding({FindingId::FactsDiffer,
                  {AuditSubject::SourceOf(file), Properties(subject.groups, file),
                   Properties(subject.groups, rival)},
                  rival.FirstAsker()});
    }
  }
}

void TellCopiesBesideLibraries(const AuditSubject& subject) {
  for (const CFile& file : subject.files) {
    const std::string copy = subject.CopyBesideLibrary(file);
    const std::string source = AuditSubject::SourceOf(file);
    if (!file.LinkResolves || copy.empty() || !Differ(subject.executables, source, copy)) continue;
    AddFinding({FindingId::CopyBesideLibrary, {source, copy}, file.FirstAsker()});
  }
}

void TellOtherCopies(const AuditSubject& subject) {
  const CFile* output = subject.Output();
  for (const CFile& file : subject.files) {
    const std::string source = AuditSubject::SourceOf(file);
    if (!file.LinkResolves || !IsAbsolutePath(file.FileName) || EqualsIgnoreCase(source, file.FileName))
      continue;
    if (!Differ(subject.executables, source, file.FileName)) continue;
    const FindingId id = &file == output ? FindingId::OtherProgramInstalled : FindingId::OtherCopyInstalled;
    AddFinding({id, {source, file.FileName}, file.FirstAsker()});
  }
}

void TellMissingIndex(const AuditSubject& subject) {
  for (const CFile& file : subject.files) {
    if (file.SharedFile || !IsInSharedFolder(subject.groups, file)) continue;
    std::string index;
    try {
      index = subject.groups.CoreCompIni();
    } catch (const RuntimeError&) {
      return;  // told when the file was looked up in it
    }
    const std::string folder = FixPath(GetPathFolder(index));
    if (FolderHoldsFile(subject.platform.files, folder, GetPathFileName(index))) return;
    return AddFinding(
        {FindingId::SharedIndexMissing, {index, AuditSubject::SourceOf(file)}, file.FirstAsker()});
  }
}

void TellWindowsFiles(const AuditSubject& subject) {
  const CFiles* const list = subject.global.gSystemFiles();
  // Without the list, the setup holds many of them; that is told.
  if (list == nullptr || list->Count() == 0) return;
  for (const CFile& file : subject.files) {
    const WindowsFile* const known = FindWindowsFile(GetPathFileName(file.FileName));
    if (known == nullptr) continue;
    if (known->use == WindowsFileUse::Shared && (file.SharedFile || !IsInSharedFolder(subject.groups, file)))
      continue;
    const FindingId id = known->use == WindowsFileUse::Never    ? FindingId::WindowsFileInstalled
                         : known->use == WindowsFileUse::Shared ? FindingId::RuntimeNotShared
                                                                : FindingId::DebugLibrary;
    AddFinding({id, {file.FileName}, file.FirstAsker()});
  }
}

void TellUsesAfterGaps(const AuditSubject& subject) {
  UsesCheck check(subject);
  for (const AuditedLibrary& library : subject.libraries) {
    if (!library.isIncluded) continue;
    check.Take(library.depFile, GetPathFileName(library.name));
    for (const CDependency& dependency : library.dependencies)
      check.Take(dependency.FileName, dependency.Name);
  }
}

}  // namespace bxvbwiz
