#pragma once

#include <windows.h>

#include <memory>

#include "ui/FormPartners.h"
#include "ui/win32/Owned.h"

namespace bxvbwiz {

// A view that shows the form with real windows. `module` is the program or library beside which the help file
// lies. `ledger` counts what is open, when somebody wants to know.
std::unique_ptr<FormView> MakeWin32View(frmMain& form, HINSTANCE module,
                                        Ledger ledger = std::make_shared<OpenObjects>());

}  // namespace bxvbwiz
