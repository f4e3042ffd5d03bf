#pragma once

#include "cli/Options.h"

namespace bxvbwiz {

// Enters the type libraries of `options.components` into the registry of the machine folder
// `options.machine`, as registering them on a Windows machine would. Gives the exit code.
int RegisterComponents(const Options& options);

}  // namespace bxvbwiz
