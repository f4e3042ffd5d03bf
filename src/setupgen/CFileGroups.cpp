#include "setupgen/CFileGroups.h"

#include <memory>

#include "project/basDependency.h"
#include "setupgen/CComponents.h"
#include "setupgen/Destinations.h"
#include "setupgen/Patches.h"
#include "setupgen/SetupFiles.h"
#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/Findings.h"
#include "sysinfo/Key.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kBuffer = 255;
constexpr std::size_t kFileListBuffer = 254;  // of the lists of files and groups

constexpr const char* kRedistributableIndex = "corecomp.ini";

// Has the reasons of the rules collected while it lives.
class ReasonScope {
 public:
  ReasonScope(std::vector<Sentence>*& place, std::vector<Sentence>& reasons) : place_(place) {
    reasons.clear();
    place_ = &reasons;
  }
  ~ReasonScope() { place_ = nullptr; }
  ReasonScope(const ReasonScope&) = delete;
  ReasonScope& operator=(const ReasonScope&) = delete;

 private:
  std::vector<Sentence>*& place_;
};

}  // namespace

void CFileGroups::GetFileGroupInfo(const std::string& destination, const std::string& filePath,
                                   const std::string& depFile, const FileRecord* existing,
                                   FileRecord& target) {
  constexpr char kRoutine[] = "CFileGroups:GetFileGroupInfo";
  const CallStackEntry entry(kRoutine);
  LogAndGoOn(kRoutine, [&] {
    if (existing != nullptr) {
      static_cast<InstallationFacts&>(target) = static_cast<const InstallationFacts&>(*existing);
      return;
    }
    const ReasonScope reasons(reasons_, target.reasons);
    const std::string name = GetPathFileName(filePath);
    const std::string found = FindDepSection(platform_, depFile, name);
    const std::string& section = found.empty() ? name : found;
    target.doubts.clear();
    DecideDestination(destination, filePath, depFile, section, target);
    target.SharedFile = IsSharedFile(target, filePath);

    std::string folder = GetPathFolder(filePath);
    if (folder.empty())
      folder = ConvertBXDestSymbolToPath(ConvertDestMacroToBXDestSymbol(target.Destination));
    target.FileLinkPath = ResolveLinkPath(folder, name, target.LinkResolves);
    if (!depFile.empty()) {
      DecideRegistration(filePath, depFile, section, target);
    } else {
      // The copy that will be shipped may lie elsewhere than its source was expected.
      const bool isInFolder = FolderHoldsFile(platform_.files, FixPath(folder), name);
      target.SelfRegister = CheckSelfRegister(FixPath(isInFolder ? folder : target.FileLinkPath) + name);
    }
    target.FileGroup = CreateFileGroupName(name, target);
  });
}

void CFileGroups::DecideDestination(const std::string& destination, const std::string& filePath,
                                    const std::string& depFile, const std::string& section,
                                    FileRecord& target) {
  std::string macro = destination;
  if (macro.empty() && !depFile.empty())
    macro = NormalPath(platform_.files, platform_.profiles.GetString(section, "Dest", "", kBuffer, depFile));
  const bool isOfDepFile = destination.empty() && !macro.empty();
  const std::string folder = GetPathFolder(filePath);
  const bool isSearched = macro.empty();
  if (isSearched) macro = SearchForDestPath(folder, GetPathFileName(filePath));
  const bool isFound = !macro.empty();
  if (!isFound && !depFile.empty()) macro = kApplicationMacro;
  const bool hasSymbol = ConvertDestMacroToBXDestSymbol(macro).find('>') != std::string::npos;
  if (!hasSymbol) {
    Because(TextId::DestinationWithoutSymbol, {kApplicationMacro, macro});
    if (isOfDepFile)
      target.doubts.push_back({FindingId::DestinationUnknown, {filePath, macro, depFile}, CurrentOrigin()});
    target.Destination = kApplicationMacro;
    return;
  }
  const bool isOfPath = !folder.empty() && EqualsIgnoreCase(FixPath(macro), FixPath(folder));
  if (isOfDepFile) {
    Because(TextId::DestinationOfDepFile, {macro, section, depFile});
  } else if (!isFound) {
    Because(depFile.empty() ? TextId::DestinationNowhere : TextId::DestinationByDefault, {macro, depFile});
  } else if (isOfPath) {
    Because(TextId::DestinationOfPath, {macro});
  } else {
    Because(isSearched ? TextId::DestinationOfSearch : TextId::DestinationOfProgram, {macro});
  }
  target.Destination = macro;
}

void CFileGroups::DecideRegistration(const std::string& filePath, const std::string& depFile,
                                     const std::string& section, FileRecord& target) {
  const std::string macro = platform_.profiles.GetString(section, "Register", "", kBuffer, depFile);
  const std::int16_t code = ConvertRegisterMacro(macro);
  Because(macro.empty() ? TextId::NotRegisteredByDepFile : TextId::RegisteredByDepFile,
          {std::to_string(code), macro, section, depFile});
  if (code != kRegisterNone && code != kRegisterDll && code != kRegisterTypeLibrary) {
    target.doubts.push_back({FindingId::NotRegistered, {filePath, depFile, macro}, CurrentOrigin()});
  }
  target.SelfRegister = code;
}

std::string CFileGroups::FolderSymbol(const FileRecord& file) {
  return StripTrailingBackslash(ConvertDestMacroToBXDestSymbol(file.Destination));
}

std::string CFileGroups::CreateFileGroupName(const std::string& /*fileName*/, const FileRecord& file) {
  constexpr char kRoutine[] = "CFileGroups:CreateFileGroupName";
  const CallStackEntry entry(kRoutine);
  std::string groupName;
  LogAndGoOn(kRoutine, [&] {
    const Destination* place = DestinationOfSymbol(FolderSymbol(file));
    std::string base = place != nullptr ? place->groupBase : ProperCaseFolderName(file.FileLinkPath);
    if (base.empty()) {
      groupName = "Program Files";
      Because(TextId::GroupByDefault, {groupName});
      return;
    }
    if (file.SelfRegister == kRegisterDll || file.SelfRegister == kRegisterTypeLibrary) base += " Self-reg";
    if (file.SharedFile) base += " Shared";
    groupName = base + " Files";
    Because(place != nullptr ? TextId::GroupByDestination : TextId::GroupByFolder,
            {groupName, place != nullptr ? place->symbol : file.FileLinkPath});
  });
  return groupName;
}

bool CFileGroups::IsSharedFile(const FileRecord& file, const std::string& filePath) {
  constexpr char kRoutine[] = "CFileGroups:IsSharedFile";
  const CallStackEntry entry(kRoutine);
  bool isShared = false;
  LogAndGoOn(kRoutine, [&] {
    const std::string place = SharedPlace(StripTrailingBackslash(UpperCase(file.Destination)));
    if (place.empty()) {
      Because(TextId::NotSharedByFolder, {});
    } else if (file.kind == RecordKind::Control || file.kind == RecordKind::TypeLibrary) {
      isShared = true;
      Because(TextId::SharedByKind, {place});
    } else {
      isShared = !CheckCoreCompIni(GetPathFileName(filePath)).empty();
      Because(isShared ? TextId::SharedByIndex : TextId::NotSharedByIndex, {kRedistributableIndex, place});
    }
  });
  return isShared;
}

// The machine's folders are asked for only when no macro or symbol fits.
std::string CFileGroups::SharedPlace(const std::string& destination) {
  for (const Destination& place : kDestinations) {
    const std::string symbol = UpperCase(place.symbol);
    const bool isNamed = BeginsWithOneOf(destination, {symbol, place.macro, place.otherMacro});
    if (place.sharing != 0 && isNamed) return place.symbol;
  }
  if (destination.empty() || StartsWith(destination, "$")) return {};
  for (int turn = 1;; ++turn) {
    const Destination* place = FindDestination([&](const Destination& it) { return it.sharing == turn; });
    if (place == nullptr) return {};
    const std::string beginning = StripTrailingBackslash(UpperCase((System().*place->folder)()));
    if (!beginning.empty() && StartsWith(destination, beginning)) return place->symbol;
  }
}

std::string CFileGroups::CoreCompIni() {
  constexpr const char* kIndexFolder =
      "Redistributable\\Compressed Files\\Language Independent\\OS Independent\\";
  const auto root = Key::Root(platform_.registry, RegConstants::HKeyLocalMachine);
  const auto key = root->OpenSubKeyForReading(kBorvexMainKey);
  if (key == nullptr)
    EndWithMissingKey(*global_.user, platform_.strings, root->Name() + "\\" + kBorvexMainKey);
  return FixPath(key->RequiredText("Path")) + kIndexFolder + kRedistributableIndex;
}

std::string CFileGroups::CheckCoreCompIni(const std::string& filePath) {
  constexpr char kRoutine[] = "CFileGroups:CheckCoreCompIni";
  const CallStackEntry entry(kRoutine);
  std::string found;
  LogAndGoOn(kRoutine, [&] {
    found = platform_.profiles.GetString("Win32", GetPathFileName(filePath), "", kBuffer, CoreCompIni());
  });
  return found;
}

std::int16_t CFileGroups::CheckSelfRegister(const std::string& filePath) {
  constexpr char kRoutine[] = "CFileGroups:CheckSelfRegister";
  const CallStackEntry entry(kRoutine);
  std::int32_t code = kRegisterNone;
  LogAndGoOn(kRoutine, [&] {
    if (HasExtension(filePath, {".TLB", ".OLB"})) {
      code = kRegisterTypeLibrary;
      Because(TextId::RegisteredAsTypeLibrary, {});
      return;
    }
    const ExecutableFacts& facts = executables_.Of(filePath);
    if (facts.RegistersItself()) code = kRegisterDll;
    Because(facts.RegistersItself() ? TextId::RegistersItself
            : facts.isOpened        ? TextId::RegistersNothing
                                    : TextId::RegistersUnread,
            {filePath});
  });
  return static_cast<std::int16_t>(code);
}

bool CFileGroups::CreateFileGroup(const std::string& projectDir, const CFile& file) {
  constexpr char kRoutine[] = "CFileGroups:CreateFileGroup";
  const CallStackEntry entry(kRoutine);
  bool made = false;
  LogAndGoOn(kRoutine, [&] {
    const std::string listName = file.FileGroup + ".fgl";
    const std::string folder = GroupsFolder(projectDir);
    const NumberedKeys::List list = ListOf(folder + listName, "TopDir", "file", kFileListBuffer);
    const std::string source = file.Source();
    // A list with entries exists. Looking it up for each of its files would store it as often.
    if (!lists_.Entries(list).empty() || FolderHoldsFile(platform_.files, folder, listName)) {
      lists_.AppendIfMissing(list, source);
    } else if (AddFileGroupToProject(projectDir, file)) {
      lists_.Append(list, source);
    } else {
      return;
    }
    made = AddFileGroupToComponent(projectDir, file);
  });
  return made;
}

bool CFileGroups::AddFileGroupToProject(const std::string& projectDir, const FileRecord& file) {
  constexpr char kRoutine[] = "CFileGroups:AddFileGroupToProject";
  const CallStackEntry entry(kRoutine);
  bool added = false;
  LogAndGoOn(kRoutine, [&] {
    if (file.FileGroup.find(']') != std::string::npos)
      AddFinding(FindingId::GroupUnreadable, {file.FileGroup});
    const std::string list = GroupsFolder(projectDir) + file.FileGroup + ".fgl";
    WriteSetting(platform_.profiles, list, "General", "Type", "FILELIST");
    WriteSetting(platform_.profiles, list, "General", "Version", "1.00.000");
    const std::string definitions = GroupsFolder(projectDir) + "Default.fdf";
    lists_.AppendIfMissing(ListOf(definitions, "FileGroups", "group", kFileListBuffer), file.FileGroup);
    WriteGroupProperties(definitions, file);
    added = true;
  });
  return added;
}

// Rewrites the group's section. The setup builder reads these keys; most are the defaults of a new group.
void CFileGroups::WriteGroupProperties(const std::string& definitions, const FileRecord& file) {
  const auto write = [&](const char* key, const std::string& value) {
    WriteSetting(platform_.profiles, definitions, file.FileGroup, key, value);
  };
  lists_.EmptySection(definitions, file.FileGroup);
  write("FILETYPE", YesOrNo(file.SharedFile));
  write("SELFREGISTERING", YesOrNo(file.SelfRegister == kRegisterDll));
  write("POTENTIALLY", "Yes");
  write("COMPRESS", "Yes");
  write("OPERATINGSYSTEM", "0000000000000000");
  write("LANGUAGE", LanguageCode(platform_.strings));
  for (const char* key : {"FTPLOCATION", "HTTPLOCATION", "MISC", "COMMENT"}) write(key, "");
  write("INFOTYPE", "Standard");
  write("COMPRESSDLL", "");
  write("TARGET", FolderSymbol(file));
  write("INSTALLATION", "NEWERVERSION\\NEWERDATE");
}

bool CFileGroups::AddFileGroupToComponent(const std::string& projectDir, const FileRecord& file) {
  constexpr char kRoutine[] = "CFileGroups:AddFileGroupToComponent";
  const CallStackEntry entry(kRoutine);
  bool added = false;
  LogAndGoOn(kRoutine, [&] {
    const std::string component = ComponentOf(FolderSymbol(file), file.FileGroup).values.front();
    if (!CComponents(platform_, *this, lists_).CreateComponent(projectDir, component, file)) return;
    lists_.AppendIfMissing(ListOf(ComponentsFile(projectDir), component, "filegroup", kFileListBuffer),
                           file.FileGroup);
    added = true;
  });
  return added;
}

}  // namespace bxvbwiz
