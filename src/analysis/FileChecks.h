#pragma once

#include "analysis/AuditSubject.h"

// Checks of the files that a setup installs.
namespace bxvbwiz {

// Files that were not found where the wizard looks, with the place where they lie.
void TellMissingFiles(const AuditSubject& subject);
// What is wrong with the facts by which a file is installed.
void TellDoubts(const AuditSubject& subject);
// The first that names a file decides its facts; another knew better.
void TellOtherFacts(const AuditSubject& subject);
// Another copy than the one beside the library that needs it.
void TellCopiesBesideLibraries(const AuditSubject& subject);
// A copy of the redistributables in place of the one that was asked for.
void TellOtherCopies(const AuditSubject& subject);
// Nothing can be known to be shared.
void TellMissingIndex(const AuditSubject& subject);
// Parts of Windows, shared run-time libraries and debug libraries.
void TellWindowsFiles(const AuditSubject& subject);
// What a .dep file names behind a number that is missing.
void TellUsesAfterGaps(const AuditSubject& subject);

}  // namespace bxvbwiz
