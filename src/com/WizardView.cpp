#include "com/WizardView.h"

#include <windows.h>

#include "platform/win32/WideText.h"
#include "support/basStr.h"
#include "ui/frmMain.h"

namespace bxvbwiz {
namespace {

// The form without a window: it only shows message boxes. Run refuses to run it.
class WindowlessView : public FormView {
 public:
  void ShowModal() override {}
  Button ShowMessage(const Message& message, const std::string& title) override {
    const std::string text = *ReplaceAll(message.text, "/n", "\n");
    return static_cast<Button>(MessageBoxW(GetActiveWindow(), Widen(text).c_str(), Widen(title).c_str(),
                                           static_cast<UINT>(message.style)));
  }
  void Refresh() override {}
  void ProcessEvents() override {}
  void SetPointer(Pointer) override {}
  std::string BrowseForFile(const std::string&, const std::string&) override { return {}; }
  void OpenHelp(const std::string&) override {}
  int TextWidth(const std::string&) const override { return 0; }
  int ExeLabelWidth() const override { return 0; }
  void Unload(const frmMain&) override {}
};

}  // namespace

std::unique_ptr<FormView> MakeWizardView(frmMain&) {
  return std::make_unique<WindowlessView>();
}

}  // namespace bxvbwiz
