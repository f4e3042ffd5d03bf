#pragma once

#include "cli/Computer.h"
#include "cli/Options.h"

namespace bxvbwiz {

// analyse, generate and capture: runs the wizard on the machine folder and prints what came out. Gives the
// exit code.
int RunWizard(const Options& options);
// The same on a computer that was opened.
int RunWizardOn(const Options& options, Computer& computer);

}  // namespace bxvbwiz
