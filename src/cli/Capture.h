#pragma once

#include <functional>

#include "cli/Computer.h"
#include "cli/Options.h"

namespace bxvbwiz {

// Runs the wizard on a computer and gives the exit code.
using WizardRun = std::function<int(const Options&, Computer&)>;

// capture: runs the wizard on `computer` without writing a setup project, and makes a machine folder of what
// that asked for, from which generate gives the same setup project elsewhere. Gives the exit code; not
// finished as well when something could not be captured.
int Capture(const Options& options, Computer& computer, const WizardRun& run);

}  // namespace bxvbwiz
