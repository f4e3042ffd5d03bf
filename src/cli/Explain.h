#pragma once

#include <string>

#include "cli/Outcome.h"

namespace bxvbwiz {

// Finds everything that an analysis knows of `name`: a file name or path, case ignored, or the description or
// identifier of a library. `outcome` holds the finished analysis; `list` is the path of the list of system
// files.
Explanation Explain(const Outcome& outcome, const StringTable& strings, const std::string& name,
                    const std::string& list);

}  // namespace bxvbwiz
