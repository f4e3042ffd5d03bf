#pragma once

#include <windows.h>

#include <memory>

#include "ui/FormPartners.h"

namespace bxvbwiz {

// A view that shows the form with real windows. `module` is the program or library with the pictures, beside
// which the help file lies.
std::unique_ptr<FormView> MakeWin32View(frmMain& form, HINSTANCE module);

}  // namespace bxvbwiz
