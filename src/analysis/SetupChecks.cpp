#include <set>
#include <unordered_set>

#include "analysis/Audit.h"
#include "setupgen/Destinations.h"
#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr const char* kTarget = "TARGET";

// A file and the group that is to install it, as it was written.
struct Member {
  const AuditSubject& subject;
  const SetupContents& setup;
  const CFile& file;
  const SetupGroup& group;
};

// A check that is called for each file that has a group.
template <void (*kCheck)(const Member& member)>
void ForEachMember(const AuditSubject& subject, const SetupContents& setup) {
  for (const CFile& file : subject.files) {
    const SetupGroup* const group = FindNamed(setup.groups, file.FileGroup);
    const OriginScope origin(file.FirstAsker());
    if (group != nullptr) kCheck({subject, setup, file, *group});
  }
}

bool Says(const SetupGroup& group, const char* key) {
  return EqualsIgnoreCase(ValueOf(group.settings, key), "Yes");
}

std::string FirstFile(const SetupGroup& group) {
  return group.files.empty() ? "" : group.files.front();
}

// The first symbol of a target; empty when it begins with none.
std::string SymbolOf(const std::string& target) {
  const std::size_t end = target.find('>');
  return StartsWith(target, "<") && end != std::string::npos ? target.substr(0, end + 1) : "";
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
    const SetupComponent* const component = FindNamed(setup.components, name);
    if (!installed.insert(UpperCase(name)).second || component == nullptr) continue;
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

// Files that are not in the list of their group.
void TellFilesNotListed(const AuditSubject& subject, const SetupContents& setup) {
  std::unordered_set<std::string> listed;
  for (const SetupGroup& group : setup.groups) {
    for (const std::string& file : group.files) listed.insert(UpperCase(group.name + '\n' + file));
  }
  for (const CFile& file : subject.files) {
    const SetupGroup* const group = FindNamed(setup.groups, file.FileGroup);
    const bool isListed = listed.count(UpperCase(file.FileGroup + '\n' + file.Source())) != 0;
    const bool isOpen = group != nullptr && group->isUnreadable;
    if (!isListed && !isOpen) AddFinding({FindingId::FileNotInGroup, {file.FileName}, file.FirstAsker()});
  }
}

// Groups that are not among those of the setup project.
void TellGroupNotEntered(const Member& member) {
  if (!member.group.isEntered) AddFinding(FindingId::GroupNotEntered, {member.group.name});
}

// Files that need another folder, sharing or registration than their group has.
void TellGroupAgainstFile(const Member& member) {
  const auto& [subject, setup, file, group] = member;
  if (group.settings.empty()) return;
  const std::string source = file.Source();
  const std::string wanted = subject.groups.FolderSymbol(file);
  const std::string target = ValueOf(group.settings, kTarget);
  const bool registers = Says(group, "SELFREGISTERING");
  if (!EqualsIgnoreCase(wanted, target) && !target.empty())
    AddFinding(FindingId::FolderOfGroupDiffers, {source, wanted, group.name, target});
  if (file.SharedFile && !Says(group, "FILETYPE"))
    AddFinding(FindingId::GroupNotShared, {source, group.name, FirstFile(group)});
  if (file.SelfRegister == kRegisterDll && !registers)
    AddFinding(FindingId::GroupNotRegistered, {source, group.name, FirstFile(group)});
  if (!registers || file.SelfRegister == kRegisterTypeLibrary) return;
  const ExecutableFacts& facts = subject.FactsOf(file);
  // What a library lacks is told already.
  if (facts.isReadable && !facts.exportsRegistration && subject.LibraryOf(file) == nullptr)
    AddFinding(FindingId::NothingToRegister, {source, group.name});
}

// Type libraries, which a group that registers DLLs does not register.
void TellUnregisteredTypeLibrary(const Member& member) {
  const auto& [subject, setup, file, group] = member;
  if (file.SelfRegister != kRegisterTypeLibrary || group.settings.empty()) return;
  // A .dep file asks for the registration because something needs it at run time. Without one it is the
  // file's extension that does: the compiler needed the library, and the program only where its objects are
  // used by another process.
  const bool isAskedFor =
      file.FirstAsker().id == TextId::OriginUses || !HasExtension(file.FileName, {".TLB", ".OLB"});
  // An object library belongs to a product, which registers it.
  if (!isAskedFor && HasExtension(file.FileName, {".OLB"})) return;
  AddFinding(isAskedFor ? FindingId::TypeLibraryNotRegistered : FindingId::TypeLibraryUnregistered,
             {file.Source(), group.name});
}

// Folders of groups that no symbol stands for, or one that has no value.
void TellUnusableTarget(const Member& member) {
  const auto& [subject, setup, file, group] = member;
  if (group.settings.empty()) return;
  const std::string target = ValueOf(group.settings, kTarget);
  const std::string symbol = SymbolOf(target);
  const auto substitution = setup.substitutions.find(symbol);
  const bool isSubstituted = substitution != setup.substitutions.end();
  const bool isBuiltIn = FindDestination([&](const Destination& place) {
                           return !place.isVariable && EqualsIgnoreCase(symbol, place.symbol);
                         }) != nullptr;
  if (!isBuiltIn && !isSubstituted && !Holds(setup.folders, symbol) && !IsAbsolutePath(target)) {
    AddFinding(FindingId::TargetUnknown, {group.name, target});
  } else if (isSubstituted && substitution->second.empty()) {
    AddFinding(FindingId::VariableWithoutValue, {symbol, group.name});
  }
}

// Files of the template that are not there.
void TellUnresolvedLinks(const AuditSubject& subject, const SetupContents& setup) {
  std::unordered_set<std::string> known;
  for (const CFile& file : subject.files) known.insert(UpperCase(file.Source()));
  for (const SetupGroup& group : setup.groups) {
    for (const std::string& file : group.files) {
      if (IsAbsolutePath(file) && known.insert(UpperCase(file)).second && !subject.Exists(file))
        AddFinding({FindingId::FileMissing, {file}, {TextId::OriginGroup, {group.name}}});
    }
  }
}

// Components that a setup type lacks.
void TellComponentsNotInstalled(const AuditSubject& subject, const SetupContents& setup) {
  for (const SetupComponent& component : setup.components) {
    // One that others need comes with them, and they are told.
    const bool comesWithOthers =
        std::any_of(setup.components.begin(), setup.components.end(), [&](const SetupComponent& other) {
          return Holds(other.required, component.name) && IsNeeded(subject, other);
        });
    if (comesWithOthers || !IsNeeded(subject, component)) continue;
    std::string lacking;
    for (const char* const setupType : {"TYPICAL", "COMPACT", "CUSTOM"}) {
      if (InstalledWith(setup, setupType).count(UpperCase(component.name)) != 0) continue;
      lacking += (lacking.empty() ? "" : ", ") + std::string(setupType);
    }
    if (!lacking.empty()) AddFinding(FindingId::ComponentNotInSetupType, {component.name, lacking});
  }
}

// Shortcuts of the template to files that the setup does not install.
void TellShortcutsWithoutTarget(const AuditSubject& /*subject*/, const SetupContents& setup) {
  std::unordered_set<std::string> names;
  for (const SetupGroup& group : setup.groups) {
    for (const std::string& file : group.files) names.insert(UpperCase(GetPathFileName(file)));
  }
  for (const auto& [section, target] : setup.targets) {
    if (!SymbolOf(target).empty() && names.count(UpperCase(GetPathFileName(target))) == 0)
      AddFinding(FindingId::ShortcutTargetMissing, {section, target});
  }
}

}  // namespace

AuditSetupChecks SetupChecks() {
  return {TellFilesNotListed,
          ForEachMember<TellGroupNotEntered>,
          ForEachMember<TellGroupAgainstFile>,
          ForEachMember<TellUnregisteredTypeLibrary>,
          ForEachMember<TellUnusableTarget>,
          TellUnresolvedLinks,
          TellComponentsNotInstalled,
          TellShortcutsWithoutTarget};
}

}  // namespace bxvbwiz
