#include "com/WizardView.h"

#include "com/Module.h"
#include "ui/win32/Win32View.h"

namespace bxvbwiz {

std::unique_ptr<FormView> MakeWizardView(frmMain& form) {
  return MakeWin32View(form, ThisModule());
}

}  // namespace bxvbwiz
