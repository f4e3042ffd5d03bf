#pragma once

#include <vector>

#include "cli/Inspection.h"
#include "cli/Options.h"
#include "cli/Outcome.h"

namespace bxvbwiz {

// Prints the JSON document of a run on standard output.
void PrintJson(const Options& options, const Outcome& outcome, const StringTable& strings);
// Prints the JSON array of inspect.
void PrintJson(const std::vector<Inspection>& inspections);

}  // namespace bxvbwiz
