#pragma once

#include <memory>

#include "ui/FormPartners.h"

namespace bxvbwiz {

// The view that the server and the program show the form in.
std::unique_ptr<FormView> MakeWizardView(frmMain& form);

}  // namespace bxvbwiz
