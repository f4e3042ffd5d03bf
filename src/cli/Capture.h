#pragma once

#include "cli/Computer.h"
#include "cli/Options.h"

namespace bxvbwiz {

// capture: runs the wizard on `computer` without writing a setup project, and records everything that it
// reads in a machine folder. On that folder generate makes the same setup project. Gives the exit code,
// kExitNotFinished also when something could not be captured.
int Capture(const Options& options, Computer& computer, const WizardRun& run);

}  // namespace bxvbwiz
