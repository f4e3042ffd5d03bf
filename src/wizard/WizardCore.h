#pragma once

#include <string>

#include "project/basGlobal.h"
#include "support/basLogging.h"
#include "support/CheckedPlatform.h"

namespace bxvbwiz {

// What every way of running the wizard stands on: the machine, whose failures are not lost, the session, and
// what was found out about the machine. Lives as long as the program, or as the automation server is loaded.
class WizardCore {
 public:
  WizardCore(Platform& platform, StartMode mode);
  ~WizardCore();
  WizardCore(const WizardCore&) = delete;
  WizardCore& operator=(const WizardCore&) = delete;

  Platform& platform() { return platform_; }
  Session& session() { return session_; }
  basGlobal& global() { return global_; }
  // Who answers messages from now on; null for nobody. Must outlive its use.
  void SetUser(User* user);
  // Keeps a build log open until the end, which keeps a later rebuild from deleting it.
  void HoldBuildLog(const std::string& path);

 private:
  CheckedPlatform checked_;
  Platform& platform_ = checked_.platform();
  Session session_;
  basGlobal global_;
  FileHandle buildLog_ = kInvalidFile;
};

}  // namespace bxvbwiz
