#include "analysis/SetupChecks.h"

#include <algorithm>
#include <set>
#include <unordered_set>

#include "analysis/RegistrationChecks.h"
#include "setupgen/Destinations.h"
#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr const char* kTarget = "TARGET";

const SetupGroup* FindGroup(const SetupContents& setup, const std::string& name) {
  for (const SetupGroup& group : setup.groups) {
    if (EqualsIgnoreCase(group.name, name)) return &group;
  }
  return nullptr;
}

bool Holds(const std::vector<std::string>& names, const std::string& name) {
  return std::any_of(names.begin(), names.end(),
                     [&](const std::string& other) { return EqualsIgnoreCase(name, other); });
}

// Calls `check` with each file and its group, when the group can be read.
template <class Check>
void ForEachMember(const AuditSubject& subject, const SetupContents& setup, Check&& check) {
  for (const CFile& file : subject.files) {
    const SetupGroup* const group = FindGroup(setup, file.FileGroup);
    if (group != nullptr && !group->settings.empty()) check(file, *group);
  }
}

bool Says(const SetupGroup& group, const char* key) {
  return EqualsIgnoreCase(ValueOf(group.settings, key), "Yes");
}

std::string FirstFile(const SetupGroup& group) {
  return group.files.empty() ? "" : group.files.front();
}

void TellRegistration(const AuditSubject& subject, const CFile& file, const SetupGroup& group) {
  const std::string source = AuditSubject::SourceOf(file);
  const bool registers = Says(group, "SELFREGISTERING");
  if (file.SelfRegister == kRegisterDll && !registers) {
    AddFinding({FindingId::GroupNotRegistered, {source, group.name, FirstFile(group)}, file.FirstAsker()});
  }
  if (!registers || !file.LinkResolves || file.SelfRegister == kRegisterTypeLibrary) return;
  const ExecutableFacts& facts = subject.executables.Of(source);
  // What a library lacks is told already.
  if (facts.isReadable && !facts.exportsRegistration && !subject.IsLibrary(file))
    AddFinding({FindingId::NothingToRegister, {source, group.name}, file.FirstAsker()});
}

// Names the first symbol of a target; empty when it begins with none.
std::string SymbolOf(const std::string& target) {
  const std::size_t end = target.find('>');
  return StartsWith(target, "<") && end != std::string::npos ? target.substr(0, end + 1) : "";
}

bool IsBuiltIn(const std::string& symbol) {
  return FindDestination([&](const Destination& place) {
           return !place.isVariable && EqualsIgnoreCase(symbol, place.symbol);
         }) != nullptr;
}

void TellUnusableTarget(const SetupContents& setup, const std::string& name, const std::string& target) {
  const std::string symbol = SymbolOf(target);
  const auto substitution = setup.substitutions.find(symbol);
  const bool isVariable = Holds(setup.folders, symbol) || substitution != setup.substitutions.end();
  if (!IsBuiltIn(symbol) && !isVariable && !IsAbsolutePath(target)) {
    AddFinding(FindingId::TargetUnknown, {name, target});
  } else if (substitution != setup.substitutions.end() && substitution->second.empty()) {
    AddFinding(FindingId::VariableWithoutValue, {symbol, name});
  }
}

const SetupComponent* FindComponent(const SetupContents& setup, const std::string& name) {
  for (const SetupComponent& component : setup.components) {
    if (EqualsIgnoreCase(component.name, name)) return &component;
  }
  return nullptr;
}

// The components that a setup type installs, in upper case: those that it names, and what they need.
std::set<std::string> InstalledWith(const SetupContents& setup, const std::string& setupType) {
  std::set<std::string> installed;
  const auto type = setup.setupTypes.find(setupType);
  std::vector<std::string> open;
  if (type != setup.setupTypes.end()) open = type->second;
  while (!open.empty()) {
    const std::string name = open.back();
    open.pop_back();
    if (!installed.insert(UpperCase(name)).second) continue;
    const SetupComponent* const component = FindComponent(setup, name);
    if (component == nullptr) continue;
    open.insert(open.end(), component->required.begin(), component->required.end());
    open.insert(open.end(), component->members.begin(), component->members.end());
  }
  return installed;
}

// Whether the component itself installs what the project needs.
bool IsNeeded(const AuditSubject& subject, const SetupComponent& component) {
  for (const CFile& file : subject.files) {
    if (Holds(component.groups, file.FileGroup)) return true;
  }
  return false;
}

bool IsNeededByOthers(const AuditSubject& subject, const SetupContents& setup, const std::string& name) {
  return std::any_of(setup.components.begin(), setup.components.end(), [&](const SetupComponent& other) {
    return Holds(other.required, name) && IsNeeded(subject, other);
  });
}

}  // namespace

void TellFilesNotListed(const AuditSubject& subject, const SetupContents& setup) {
  std::unordered_set<std::string> listed;
  for (const SetupGroup& group : setup.groups) {
    for (const std::string& file : group.files) listed.insert(UpperCase(group.name + '\n' + file));
  }
  for (const CFile& file : subject.files) {
    if (listed.count(UpperCase(file.FileGroup + '\n' + AuditSubject::SourceOf(file))) != 0) continue;
    const SetupGroup* const group = FindGroup(setup, file.FileGroup);
    if (group != nullptr && group->isUnreadable) continue;
    AddFinding({FindingId::FileNotInGroup, {file.FileName}, file.FirstAsker()});
  }
}

void TellGroupsNotEntered(const AuditSubject& subject, const SetupContents& setup) {
  for (const CFile& file : subject.files) {
    const SetupGroup* const group = FindGroup(setup, file.FileGroup);
    if (group == nullptr) continue;  // its files are told
    if (!group->isEntered) AddFinding({FindingId::GroupNotEntered, {group->name}, file.FirstAsker()});
  }
}

void TellGroupsAgainstFiles(const AuditSubject& subject, const SetupContents& setup) {
  ForEachMember(subject, setup, [&](const CFile& file, const SetupGroup& group) {
    const std::string source = AuditSubject::SourceOf(file);
    const std::string wanted = subject.groups.FolderSymbol(file);
    const std::string target = ValueOf(group.settings, kTarget);
    if (!EqualsIgnoreCase(wanted, target) && !target.empty())
      AddFinding({FindingId::FolderOfGroupDiffers, {source, wanted, group.name, target}, file.FirstAsker()});
    if (file.SharedFile && !Says(group, "FILETYPE"))
      AddFinding({FindingId::GroupNotShared, {source, group.name, FirstFile(group)}, file.FirstAsker()});
    TellRegistration(subject, file, group);
  });
}

void TellUnregisteredTypeLibraries(const AuditSubject& subject, const SetupContents& setup) {
  ForEachMember(subject, setup, [&](const CFile& file, const SetupGroup& group) {
    if (file.SelfRegister != kRegisterTypeLibrary) return;
    // A .dep file asks for the registration because something needs it at run time. Without one it is the
    // file's extension that does: the compiler needed the library, and the program only where its objects are
    // used by another process.
    const bool isAskedFor = file.FirstAsker().id == TextId::OriginUses || !IsBareTypeLibrary(file.FileName);
    // An object library belongs to a product, which registers it.
    if (!isAskedFor && EndsInOneOf(file.FileName, {".OLB"})) return;
    AddFinding({isAskedFor ? FindingId::TypeLibraryNotRegistered : FindingId::TypeLibraryUnregistered,
                {AuditSubject::SourceOf(file), group.name},
                file.FirstAsker()});
  });
}

void TellUnusableTargets(const AuditSubject& subject, const SetupContents& setup) {
  ForEachMember(subject, setup, [&](const CFile& file, const SetupGroup& group) {
    const OriginScope origin(file.FirstAsker());
    TellUnusableTarget(setup, group.name, ValueOf(group.settings, kTarget));
  });
}

void TellUnresolvedLinks(const AuditSubject& subject, const SetupContents& setup) {
  std::unordered_set<std::string> known;
  for (const CFile& file : subject.files) known.insert(UpperCase(AuditSubject::SourceOf(file)));
  for (const SetupGroup& group : setup.groups) {
    for (const std::string& file : group.files) {
      if (!IsAbsolutePath(file) || !known.insert(UpperCase(file)).second) continue;
      if (FolderHoldsFile(subject.platform.files, FixPath(GetPathFolder(file)), GetPathFileName(file)))
        continue;
      AddFinding({FindingId::FileMissing, {file}, {TextId::OriginGroup, {group.name}}});
    }
  }
}

void TellComponentsNotInstalled(const AuditSubject& subject, const SetupContents& setup) {
  for (const SetupComponent& component : setup.components) {
    // One that others need comes with them, and they are told.
    if (!IsNeeded(subject, component) || IsNeededByOthers(subject, setup, component.name)) continue;
    std::string lacking;
    for (const char* const setupType : {"TYPICAL", "COMPACT", "CUSTOM"}) {
      if (InstalledWith(setup, setupType).count(UpperCase(component.name)) != 0) continue;
      lacking += (lacking.empty() ? "" : ", ") + std::string(setupType);
    }
    if (!lacking.empty()) AddFinding(FindingId::ComponentNotInSetupType, {component.name, lacking});
  }
}

void TellShortcutsWithoutTarget(const AuditSubject&, const SetupContents& setup) {
  std::unordered_set<std::string> names;
  for (const SetupGroup& group : setup.groups) {
    for (const std::string& file : group.files) names.insert(UpperCase(GetPathFileName(file)));
  }
  for (const auto& [section, target] : setup.targets) {
    if (SymbolOf(target).empty() || names.count(UpperCase(GetPathFileName(target))) != 0) continue;
    AddFinding(FindingId::ShortcutTargetMissing, {section, target});
  }
}

}  // namespace bxvbwiz
