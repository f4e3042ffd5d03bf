#pragma once

#include "cli/Inspection.h"
#include "cli/Options.h"
#include "cli/Outcome.h"

namespace bxvbwiz {

// Prints the trees, and after a generation also the report and the files written, on standard output.
void PrintText(const Options& options, const Outcome& outcome, const StringTable& strings);
void PrintText(const Explanation& explanation, const StringTable& strings);
void PrintText(const Inspection& inspection);

}  // namespace bxvbwiz
