#pragma once

#include "cli/Options.h"

namespace bxvbwiz {

// machine check: prints what a run on the machine folder `options.machine` would trip over. Gives the exit
// code, kExitNotFinished when a run would fail.
int CheckMachine(const Options& options);

}  // namespace bxvbwiz
