#pragma once

#include "cli/Options.h"

namespace bxvbwiz {

// analyse and generate: runs the wizard on the machine folder and prints what came out. Gives the exit code.
int RunWizard(const Options& options);

}  // namespace bxvbwiz
