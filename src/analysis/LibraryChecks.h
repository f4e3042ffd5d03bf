#pragma once

#include "analysis/AuditSubject.h"

// Checks of the libraries that the project names, and of the run time that it needs.
namespace bxvbwiz {

// Another run time of Visual Basic than the one that the setup installs.
void TellOtherRuntime(const AuditSubject& subject);
// Libraries of another version than the project asks for, taken without a question.
void TellVersionsNotAsked(const AuditSubject& subject);
// Data access that the wizard does not recognise as such.
void TellUnknownDataAccess(const AuditSubject& subject);

}  // namespace bxvbwiz
