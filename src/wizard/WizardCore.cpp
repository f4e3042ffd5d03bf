#include "wizard/WizardCore.h"

namespace bxvbwiz {

WizardCore::WizardCore(Platform& platform, StartMode mode)
    : checked_(platform), session_(platform_, mode), global_(platform_) {}

WizardCore::~WizardCore() {
  if (buildLog_ != kInvalidFile) platform_.files.Close(buildLog_);
}

void WizardCore::SetUser(User* user) {
  session_.user = global_.user = user;
}

void WizardCore::HoldBuildLog(const std::string& path) {
  if (buildLog_ != kInvalidFile) return;
  buildLog_ = platform_.files.Open(path, kGenericRead, kShareRead, kOpenExisting, kAttributeNormal);
}

}  // namespace bxvbwiz
