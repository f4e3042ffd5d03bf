#include "support/User.h"

#include "support/Errors.h"

namespace bxvbwiz {

void EndWizard(User& user) {
  user.WizardHasEnded();
  throw WizardEnded{};
}

void CancelWizard(User& user) {
  user.SetReturnCode(0);
  EndWizard(user);
}

}  // namespace bxvbwiz
