#include "analysis/RegistrationChecks.h"

#include <algorithm>

#include "project/EXEFile.h"
#include "support/basMisc.h"
#include "support/Conversion.h"
#include "text/Text.h"

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

// What a file that must register itself lacks for it. Other registrations than none are told where they were
// decided.
void TellUnregistered(const AuditSubject& subject, const CFile& file, bool mustRegister) {
  const ExecutableFacts& facts = subject.executables.Of(AuditSubject::SourceOf(file));
  if (!facts.isReadable || IsForOtherMachine(facts)) return;
  const std::string source = AuditSubject::SourceOf(file);
  const bool isUnregistered = file.SelfRegister == kRegisterNone || file.SelfRegister == kRegisterTypeLibrary;
  if (facts.exeType != kExeTypePE) {
    AddFinding({FindingId::NotAnExecutable, {source}, file.FirstAsker()});
  } else if (facts.registersUnderOtherName || (mustRegister && !facts.exportsRegistration)) {
    AddFinding({FindingId::CannotRegisterItself, {source}, file.FirstAsker()});
  } else if (facts.exportsRegistration && isUnregistered) {
    AddFinding({FindingId::LibraryNotRegistered, {source}, file.FirstAsker()});
  }
}

}  // namespace

bool EndsInOneOf(const std::string& file, std::initializer_list<std::string_view> endings) {
  const std::string upper = UpperCase(file);
  return std::any_of(endings.begin(), endings.end(),
                     [&](std::string_view ending) { return EndsWith(upper, ending); });
}

void TellOtherMachines(const AuditSubject& subject) {
  for (const CFile& file : subject.files) {
    if (!file.LinkResolves || !IsLoaded(file) || IsBareTypeLibrary(file.FileName)) continue;
    const std::string source = AuditSubject::SourceOf(file);
    const ExecutableFacts& facts = subject.executables.Of(source);
    if (!IsForOtherMachine(facts)) continue;
    AddFinding({FindingId::OtherMachineType, {source, Hexadecimal(facts.machine)}, file.FirstAsker()});
  }
}

void TellUnregistrable(const AuditSubject& subject) {
  const CFile* const output = subject.Output();
  if (output != nullptr && output->LinkResolves && subject.project.ProjectType == CProject::PTActiveXDLL) {
    TellUnregistered(subject, *output, true);
  }
  for (const AuditedLibrary& library : subject.libraries) {
    const CFile* const file = subject.Installed(library);
    if (file == nullptr || !file->LinkResolves) continue;
    if (library.isControl || EndsInOneOf(file->FileName, {".DLL", ".OCX"}))
      TellUnregistered(subject, *file, library.isControl || file->SelfRegister == kRegisterDll);
  }
}

void TellUnregisteredServers(const AuditSubject& subject) {
  const auto tell = [](const CFile* file) {
    if (file == nullptr || !file->LinkResolves || file->SelfRegister != kRegisterNone) return;
    AddFinding({FindingId::ServerNotRegistered, {AuditSubject::SourceOf(*file)}, file->FirstAsker()});
  };
  if (subject.project.ProjectType == CProject::PTActiveXExe) tell(subject.Output());
  for (const AuditedLibrary& library : subject.libraries) {
    const CFile* const file = subject.Installed(library);
    if (file == nullptr || library.isControl || !EndsInOneOf(library.name, {".EXE"})) continue;
    // A program among the installed ones belongs to a product, which registers it.
    if (!StartsWith(subject.groups.FolderSymbol(*file), "<PROGRAMFILES>")) tell(file);
  }
}

}  // namespace bxvbwiz
