#pragma once

#include <optional>

#include "analysis/Analysis.h"
#include "setupgen/SetupAnswers.h"

namespace bxvbwiz {

// The refusal of a setup project's name that makes a path longer than the system allows: that of the folder,
// of a file that the wizard writes, or of one that it copies from the template. What cannot be found out,
// because the product's keys or the template are missing, refuses nothing.
std::optional<NameRefusal> RefusalOfLength(Platform& platform, const Analysis& analysis,
                                           const std::string& name);

}  // namespace bxvbwiz
