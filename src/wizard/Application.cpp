#include "wizard/Application.h"

#include <cstdlib>

#include "support/CCmdOptions.h"
#include "sysinfo/Key.h"

namespace bxvbwiz {

namespace {

// Results of a stand-alone start go below this key of HKEY_CURRENT_USER.
constexpr const char* kResultsKey = "SOFTWARE\\Borvex\\Borvex Professional\\6.0\\";

}  // namespace

Application::Application(FormHost& host, std::string commandLine)
    : host_(host), commandLine_(std::move(commandLine)) {
  constexpr const char* kRoutine = "Application.Class_Initialize";
  const SessionScope scope(host_.core().session());
  const CallStackEntry entry(kRoutine);
  frmMain& form = host_.LoadForm(*this);
  if (host_.core().session().startMode() != StartMode::StandAlone) return;
  // A command line that cannot be parsed must not prevent the creation. It is reported, which needs the form,
  // and the properties keep their initial values.
  try {
    ReadCommandLine();
  } catch (const RuntimeError& error) {
    form.Report(kRoutine, error);
  }
}

Application::~Application() {
  constexpr const char* kRoutine = "Application.Class_Terminate";
  const SessionScope scope(host_.core().session());
  const CallStackEntry entry(kRoutine);
  try {
    if (host_.core().session().startMode() == StartMode::StandAlone)
      RetryOrCancel(kRoutine, [this] { WriteResults(); });
    host_.Detach(*this);
  } catch (const WizardEnded&) {
    // A failed write was answered with Cancel; the object is destroyed anyway.
  }
}

void Application::Run() {
  if (!stillExecuting_) return;
  const SessionScope scope(host_.core().session());
  // Another object of the host may have taken over the form, or ended it.
  host_.LoadForm(*this);
  host_.ShowForm();
  if (stillExecuting_) throw RuntimeError(kErrorInvalidCall, "There is no window to show the wizard in");
}

void Application::ReadCommandLine() {
  const CCmdOptions options(commandLine_);
  if (options.TagExists("I")) ID = options.Item("I").Text();
  if (options.TagExists("P")) Project = options.Item("P").Text();
  if (options.TagExists("S")) ShowPage2 = options.Item("S").Text() != "0";
  if (options.TagExists("A")) AppName = options.Item("A").Text();
  if (options.TagExists("V")) VBScript = options.Item("V").Text() != "0";
}

void Application::WriteResults() {
  const auto root = Key::Root(host_.core().platform().registry, RegConstants::HKeyCurrentUser);
  const auto key = root->SubKeys().Add(kResultsKey + ID);
  if (key == nullptr)
    throw RuntimeError(kErrorObjectNotSet, "Cannot create the key HKEY_CURRENT_USER\\" + (kResultsKey + ID));
  const auto write = [&](const char* name, const std::string& text) {
    if (key->Values().Add(name, RegConstants::RegSz)->Set(text)) return;
    throw RuntimeError(kErrorPathFileAccess, "Cannot write " + key->FullPath() + ", " + name);
  };
  write("ReturnCode", std::to_string(std::abs(returnCode_)));
  write("Project", projectFile_);
}

}  // namespace bxvbwiz
