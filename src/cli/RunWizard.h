#pragma once

#include "cli/Computer.h"
#include "cli/Options.h"

namespace bxvbwiz {

// analyse, generate, explain, check and capture: runs the wizard on the machine and for each of the projects
// that the options name, and prints how the runs ended. Gives the worst exit code: 2, then 1, 3, 4 and 0.
int RunWizard(const Options& options);
// The same on a computer that is already open.
int RunWizardOn(const Options& options, Computer& computer);

}  // namespace bxvbwiz
