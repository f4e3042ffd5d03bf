#include "com/LogMonitor.h"
#include "com/Module.h"
#include "text/win32/WideText.h"
#include "ui/win32/Win32View.h"
#include "win32/Win32Platform.h"
#include "wizard/SubMain.h"

namespace bxvbwiz {
namespace {

// A wizard that never ended leaves the results of a cancelled one.
void CancelLeftWizard(FormHost& host) {
  if (host.gApplication != nullptr) host.gApplication->SetReturnCode(0);
  if (host.Form() != nullptr) host.Form()->cmdCancel_Click();
}

// The stand-alone start. `options` is the command line after the program's name. Throws when the wizard
// cannot be shown.
void RunStandAlone(const std::wstring& options) {
  Win32Platform platform(ThisModule());
  WizardCore core(platform.platform(), StartMode::StandAlone);
  FormHost host(core, [](frmMain& form) { return MakeWin32View(form, ThisModule()); });
  ComPtr<IDispatch> logMonitor;
  try {
    SubMain(host, Narrow(options), [&] { logMonitor = MakeLogMonitor(core.session()); });
  } catch (const WizardEnded&) {
    // The user knows why.
  } catch (...) {
    CancelLeftWizard(host);
    throw;
  }
  if (host.Form() == nullptr) return;
  CancelLeftWizard(host);
  throw RuntimeError(kErrorInvalidCall, "There is no window to show the wizard in");
}

}  // namespace
}  // namespace bxvbwiz

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR options, int) {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  int code = 0;
  try {
    bxvbwiz::RunStandAlone(options);
  } catch (...) {
    code = 1;
    const std::wstring text = bxvbwiz::Widen(bxvbwiz::CurrentError().what());
    const bxvbwiz::Win32StringTable strings(bxvbwiz::ThisModule());
    MessageBoxW(nullptr, text.c_str(), bxvbwiz::Widen(strings.Text(bxvbwiz::TextId::WizardTitle)).c_str(),
                MB_ICONERROR);
  }
  CoUninitialize();
  return code;
}
