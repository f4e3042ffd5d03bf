#pragma once

#include "project/CProject.h"
#include "wizard/WizardCore.h"

namespace bxvbwiz {

// Compiles the project with the Visual Basic command line. False when that failed; the user has seen a
// message, unless no Visual Basic is registered.
bool RebuildProject(WizardCore& core, User& user, const CProject& project);

}  // namespace bxvbwiz
