#pragma once

#include "cli/Computer.h"
#include "cli/Options.h"

namespace bxvbwiz {

// analyse, generate, check and capture: runs the wizard on the machine that the options name and prints the
// outcome. Gives the exit code.
int RunWizard(const Options& options);
// The same on a computer that is already open.
int RunWizardOn(const Options& options, Computer& computer);

}  // namespace bxvbwiz
