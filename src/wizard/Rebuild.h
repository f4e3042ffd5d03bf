#pragma once

#include "project/CProject.h"
#include "wizard/WizardCore.h"

namespace bxvbwiz {

// Compiles the project with the Visual Basic command line. False when that failed; the user has seen a
// message, unless no Visual Basic is registered. When the compiler leaves no log, the message's detail has
// the cause, and `advice`.
bool RebuildProject(WizardCore& core, User& user, const CProject& project, TextId advice = {});

}  // namespace bxvbwiz
