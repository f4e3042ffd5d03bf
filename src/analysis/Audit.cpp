#include "analysis/Audit.h"

#include "analysis/FileChecks.h"
#include "analysis/LibraryChecks.h"
#include "analysis/RegistrationChecks.h"
#include "analysis/SetupChecks.h"

namespace bxvbwiz {
namespace {

using AnalysisCheck = void (*)(const AuditSubject&);
using SetupCheck = void (*)(const AuditSubject&, const SetupContents&);

constexpr AnalysisCheck kAnalysisChecks[] = {
    TellMissingFiles,        TellDoubts,
    TellOtherFacts,          TellCopiesBesideLibraries,
    TellOtherCopies,         TellMissingIndex,
    TellWindowsFiles,        TellUsesAfterGaps,
    TellOtherMachines,       TellUnregistrable,
    TellUnregisteredServers, TellOtherRuntime,
    TellVersionsNotAsked,    TellUnknownDataAccess,
};

constexpr SetupCheck kSetupChecks[] = {
    TellFilesNotListed,  TellGroupsNotEntered, TellGroupsAgainstFiles,     TellUnregisteredTypeLibraries,
    TellUnusableTargets, TellUnresolvedLinks,  TellComponentsNotInstalled, TellShortcutsWithoutTarget,
};

}  // namespace

void AuditAnalysis(const AuditSubject& subject) {
  const CallStackEntry entry("AuditAnalysis");
  for (const AnalysisCheck check : kAnalysisChecks) LogAndGoOn("AuditAnalysis", [&] { check(subject); });
}

void AuditSetup(const AuditSubject& subject, const SetupContents& setup) {
  const CallStackEntry entry("AuditSetup");
  for (const SetupCheck check : kSetupChecks) LogAndGoOn("AuditSetup", [&] { check(subject, setup); });
}

}  // namespace bxvbwiz
