#pragma once

#include "cli/Options.h"

namespace bxvbwiz {

// inspect: prints what is known about the files. Gives 0, or 1 when one of them could not be read at all.
int InspectFiles(const Options& options);

}  // namespace bxvbwiz
