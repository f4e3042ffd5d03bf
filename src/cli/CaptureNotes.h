#pragma once

#include <memory>

#include "cli/CapturedMachine.h"
#include "platform/CallHook.h"

namespace bxvbwiz {

// Notes what a run asks a machine for in a captured machine. It asks the machine once more for what the call
// gave, so that what is only in the scratch machine is not noted. Both must outlive the result.
std::unique_ptr<CallHook> MakeCaptureNotes(Platform& source, CapturedMachine& captured);

}  // namespace bxvbwiz
