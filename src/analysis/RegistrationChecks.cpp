#include <algorithm>

#include "analysis/Audit.h"
#include "project/EXEFile.h"
#include "support/basFile.h"
#include "support/Conversion.h"

namespace bxvbwiz {
namespace {

constexpr std::uint16_t kMachineIntel386 = 0x14C;  // IMAGE_FILE_MACHINE_I386

bool IsForOtherMachine(const ExecutableFacts& facts) {
  return facts.exeType == kExeTypePE && facts.machine != 0 && facts.machine != kMachineIntel386;
}

// A .dep file may name files that no program loads.
bool IsLoaded(const CFile& file) {
  return std::any_of(file.askers.begin(), file.askers.end(),
                     [](const Origin& asker) { return asker.id != TextId::OriginUses; });
}

// Files for another kind of processor than the program.
void TellOtherMachine(const AuditSubject& subject, const CFile& file) {
  const ExecutableFacts& facts = subject.FactsOf(file);
  if (IsForOtherMachine(facts) && IsLoaded(file) && !HasExtension(file.FileName, {".TLB", ".OLB"}))
    AddFinding(FindingId::OtherMachineType, {file.Source(), Hexadecimal(facts.machine)});
}

// Libraries that cannot register themselves, or that could but are not registered. Other registrations than
// none are told where they were decided.
void TellUnregistrable(const AuditSubject& subject, const CFile& file) {
  const Library* const library = subject.LibraryOf(file);
  const bool isControl = library != nullptr && library->kind == RecordKind::Control;
  const bool isServer = &file == subject.output && subject.project.ProjectType == CProject::PTActiveXDLL;
  const bool isLibrary = library != nullptr && HasExtension(file.FileName, {".DLL", ".OCX"});
  const ExecutableFacts& facts = subject.FactsOf(file);
  if (!(isControl || isServer || isLibrary) || !facts.isReadable || IsForOtherMachine(facts)) return;
  const bool mustRegister = isControl || isServer || file.SelfRegister == kRegisterDll;
  const bool isUnregistered = file.SelfRegister == kRegisterNone || file.SelfRegister == kRegisterTypeLibrary;
  if (facts.exeType != kExeTypePE) {
    AddFinding(FindingId::NotAnExecutable, {file.Source()});
  } else if (facts.registersUnderOtherName || (mustRegister && !facts.exportsRegistration)) {
    AddFinding(FindingId::CannotRegisterItself, {file.Source()});
  } else if (facts.exportsRegistration && isUnregistered) {
    AddFinding(FindingId::LibraryNotRegistered, {file.Source()});
  }
}

// Programs that offer objects, which no file group registers.
void TellUnregisteredServer(const AuditSubject& subject, const CFile& file) {
  if (!file.LinkResolves || file.SelfRegister != kRegisterNone) return;
  const Library* const library = subject.LibraryOf(file);
  // A program among the installed ones belongs to a product, which registers it.
  const bool isReferenced = library != nullptr && library->kind == RecordKind::TypeLibrary &&
                            HasExtension(file.FileName, {".EXE"}) &&
                            !StartsWith(subject.groups.FolderSymbol(file), "<PROGRAMFILES>");
  const bool isOutput = &file == subject.output && subject.project.ProjectType == CProject::PTActiveXExe;
  if (isReferenced || isOutput) AddFinding(FindingId::ServerNotRegistered, {file.Source()});
}

}  // namespace

AuditChecks RegistrationChecks() {
  return {ForEachFile<TellOtherMachine>, ForEachFile<TellUnregistrable>, ForEachFile<TellUnregisteredServer>};
}

}  // namespace bxvbwiz
