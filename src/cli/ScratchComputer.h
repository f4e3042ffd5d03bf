#pragma once

#include <memory>

#include "cli/Computer.h"
#include "platform/CallHook.h"

namespace bxvbwiz {

// A computer on which a run makes a setup project that is thrown away: `source`, with the folders that the
// run makes in a scratch machine, where it finds again what it wrote. `source` stays as it is. `hook` sees
// what the run asks the registry, the files and the profile strings for. Both must outlive the result.
// Throws MachineError.
std::unique_ptr<Computer> MakeScratchComputer(Computer& source, CallHook& hook = NoHook());

}  // namespace bxvbwiz
