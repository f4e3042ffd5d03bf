#pragma once

#include <functional>

#include "cli/Outcome.h"
#include "cli/ProjectList.h"

namespace bxvbwiz {

// Gets the outcome of a run, which lives as long as the call, and the exit code.
using ShowOutcome = std::function<void(const Outcome& outcome, int code)>;

// Runs the wizard on a project and stores what it changed on the computer.
void RunProject(const Options& options, Computer& computer, const ListedProject& project,
                const ShowOutcome& show);

}  // namespace bxvbwiz
