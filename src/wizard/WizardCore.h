#pragma once

#include <string>

#include "project/basGlobal.h"
#include "support/basLogging.h"
#include "support/CheckedPlatform.h"

namespace bxvbwiz {

// What every way of running the wizard needs: the machine, with its failures reported, the session, and what
// was found out about the machine. Lives as long as the program, or as the automation server is loaded.
class WizardCore {
 public:
  WizardCore(Platform& platform, StartMode mode);
  ~WizardCore();
  WizardCore(const WizardCore&) = delete;
  WizardCore& operator=(const WizardCore&) = delete;

  Platform& platform() { return platform_; }
  Session& session() { return session_; }
  basGlobal& global() { return global_; }
  // Sets who answers messages from now on (null: nothing does). The user must outlive its use.
  void SetUser(User* user);
  // Keeps a build log open until the end, so that a later rebuild cannot delete it.
  void HoldBuildLog(const std::string& path);

 private:
  CheckedPlatform checked_;
  Platform& platform_ = checked_.platform();
  Session session_;
  basGlobal global_;
  FileHandle buildLog_ = kInvalidFile;
};

}  // namespace bxvbwiz
