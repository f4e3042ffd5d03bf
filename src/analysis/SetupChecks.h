#pragma once

#include "analysis/AuditSubject.h"
#include "analysis/SetupContents.h"

// Checks of a setup project against what the files of an analysis need.
namespace bxvbwiz {

// Files that are not in the list of their group.
void TellFilesNotListed(const AuditSubject& subject, const SetupContents& setup);
// Groups that are not among those of the setup project.
void TellGroupsNotEntered(const AuditSubject& subject, const SetupContents& setup);
// Files that need another folder, sharing or registration than their group has.
void TellGroupsAgainstFiles(const AuditSubject& subject, const SetupContents& setup);
// Type libraries, which a group that registers DLLs does not register.
void TellUnregisteredTypeLibraries(const AuditSubject& subject, const SetupContents& setup);
// Folders of groups and components that no symbol stands for, or one that has no value.
void TellUnusableTargets(const AuditSubject& subject, const SetupContents& setup);
// Files of the template that are not there.
void TellUnresolvedLinks(const AuditSubject& subject, const SetupContents& setup);
// Components that a setup type lacks.
void TellComponentsNotInstalled(const AuditSubject& subject, const SetupContents& setup);
// Shortcuts of the template to files that the setup does not install.
void TellShortcutsWithoutTarget(const AuditSubject& subject, const SetupContents& setup);

}  // namespace bxvbwiz
