#pragma once

#include <string>

namespace bxvbwiz {

// machine new: lays out a machine folder with the product, a template setup project and a registered Visual
// Basic 6. `folder` must be new or empty. Gives the exit code.
int MakeMachine(const std::string& folder);

}  // namespace bxvbwiz
