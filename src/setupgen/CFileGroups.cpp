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
constexpr std::size_t kListBuffer = 254;  // of the lists of files and groups

const char* YesOrNo(bool isSo) {
  return isSo ? "Yes" : "No";
}

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
    macro = platform_.profiles.GetString(section, "Dest", "", kBuffer, depFile);
  const bool isOfDepFile = destination.empty() && !macro.empty();
  if (macro.empty()) macro = SearchForDestPath(GetPathFolder(filePath), GetPathFileName(filePath));
  if (macro.empty() && !depFile.empty()) macro = kApplicationMacro;
  const bool isKnown = ConvertDestMacroToBXDestSymbol(macro).find('>') != std::string::npos;
  if (!isKnown && isOfDepFile) {
    target.doubts.push_back({FindingId::DestinationUnknown, {filePath, macro, depFile}, CurrentOrigin()});
  }
  target.Destination = isKnown ? macro : kApplicationMacro;
}

void CFileGroups::DecideRegistration(const std::string& filePath, const std::string& depFile,
                                     const std::string& section, FileRecord& target) {
  const std::string macro = platform_.profiles.GetString(section, "Register", "", kBuffer, depFile);
  const std::int16_t code = ConvertRegisterMacro(macro);
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
      return;
    }
    if (file.SelfRegister == kRegisterDll || file.SelfRegister == kRegisterTypeLibrary) base += " Self-reg";
    if (file.SharedFile) base += " Shared";
    groupName = base + " Files";
  });
  return groupName;
}

bool CFileGroups::IsSharedFile(const FileRecord& file, const std::string& filePath) {
  constexpr char kRoutine[] = "CFileGroups:IsSharedFile";
  const CallStackEntry entry(kRoutine);
  bool isShared = false;
  LogAndGoOn(kRoutine, [&] {
    if (!IsBelowSharedFolder(StripTrailingBackslash(UpperCase(file.Destination)))) return;
    isShared = file.kind == RecordKind::Control || file.kind == RecordKind::TypeLibrary ||
               !CheckCoreCompIni(GetPathFileName(filePath)).empty();
  });
  return isShared;
}

// `destination` in upper case. The machine's folders are asked for only when no macro or symbol fits.
bool CFileGroups::IsBelowSharedFolder(const std::string& destination) {
  for (const Destination& place : kDestinations) {
    const std::string symbol = UpperCase(place.symbol);
    const bool isNamed = BeginsWithOneOf(destination, {symbol, place.macro, place.otherMacro});
    if (place.sharing != 0 && isNamed) return true;
  }
  if (destination.empty() || StartsWith(destination, "$")) return false;
  for (int turn = 1;; ++turn) {
    const Destination* place = FindDestination([&](const Destination& it) { return it.sharing == turn; });
    if (place == nullptr) return false;
    const std::string beginning = StripTrailingBackslash(UpperCase((System().*place->folder)()));
    if (!beginning.empty() && StartsWith(destination, beginning)) return true;
  }
}

std::string CFileGroups::CoreCompIni() {
  constexpr const char* kIndex =
      "Redistributable\\Compressed Files\\Language Independent\\OS Independent\\corecomp.ini";
  const auto root = Key::Root(platform_.registry, RegConstants::HKeyLocalMachine);
  const auto key = root->OpenSubKeyForReading(kBorvexMainKey);
  if (key == nullptr)
    EndWithMissingKey(*global_.user, platform_.strings, root->Name() + "\\" + kBorvexMainKey);
  return FixPath(key->RequiredText("Path")) + kIndex;
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
    const std::string upper = UpperCase(filePath);
    if (EndsWith(upper, ".TLB") || EndsWith(upper, ".OLB")) {
      code = kRegisterTypeLibrary;
      return;
    }
    if (executables_.Of(filePath).registersItself) code = kRegisterDll;
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
    const NumberedKeys::List list = ListOf(folder + listName, "TopDir", "file", kListBuffer);
    const std::string source = FixPath(file.FileLinkPath) + GetPathFileName(file.FileName);
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
    lists_.AppendIfMissing(ListOf(definitions, "FileGroups", "group", kListBuffer), file.FileGroup);
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
    const Destination* place = DestinationOfSymbol(FolderSymbol(file));
    const bool isWindows =
        place != nullptr && BeginsWithOneOf(file.FileGroup, {place->windowsGroup, place->otherWindowsGroup});
    const std::string component = isWindows ? kWindowsFilesComponent : kProgramFilesComponent;
    if (!CComponents(platform_, *this, lists_).CreateComponent(projectDir, component, file)) return;
    lists_.AppendIfMissing(ListOf(ComponentsFile(projectDir), component, "filegroup", kListBuffer),
                           file.FileGroup);
    added = true;
  });
  return added;
}

}  // namespace bxvbwiz
