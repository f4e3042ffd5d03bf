#pragma once

#include <string>

namespace bxvbwiz {

// Whether a DLL belongs to Windows, or comes with the run-time component of Visual Basic. `name` has no
// folder; without an extension it means ".dll".
bool IsWindowsDll(const std::string& name);

}  // namespace bxvbwiz
