#include "wizard/WizardCore.h"

namespace bxvbwiz {

WizardCore::WizardCore(Platform& platform, StartMode mode)
    : registry_(platform.registry),
      facts_(platform.facts),
      files_(platform.files),
      profiles_(platform.profiles),
      platform_{registry_,
                facts_,
                files_,
                profiles_,
                platform.processes,
                platform.guids,
                platform.settings,
                platform.clock,
                platform.codePage,
                platform.strings},
      session_(platform_, mode),
      global_(platform_) {}

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
