#pragma once

#include "analysis/AuditSubject.h"
#include "analysis/SetupContents.h"

// The audit: one small check a rule. Each holds what was decided against a fact that decided nothing, and
// adds findings to those of the session. No check changes what is installed.
namespace bxvbwiz {

// Checks the files and libraries of an analysis.
void AuditAnalysis(const AuditSubject& subject);

// Checks what was written for them: `setup` is the setup project as it lies on the disk.
void AuditSetup(const AuditSubject& subject, const SetupContents& setup);

}  // namespace bxvbwiz
