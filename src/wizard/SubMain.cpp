#include "wizard/SubMain.h"

#include "wizard/Application.h"

namespace bxvbwiz {

void SubMain(FormHost& host, const std::string& commandLine, const std::function<void()>& afterLogging) {
  Session& session = host.core().session();
  const SessionScope scope(session);
  {
    const CallStackEntry entry("Sub Main");
    session.log.Init();
    if (afterLogging) afterLogging();
    if (session.startMode() != StartMode::StandAlone) return;
    host.gApplication = std::make_shared<Application>(host, commandLine);
  }
  if (host.Form() == nullptr) {
    host.gApplication.reset();  // the answer to an error during its creation ended it
  } else {
    host.ShowForm();
  }
}

}  // namespace bxvbwiz
