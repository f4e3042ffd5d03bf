// The form without a window: a test drives it. The letters of BXVBWIZ_KEYS are pressed once it is shown, and
// others arrive as WM_APP messages of the thread. "x" alone: it cannot be shown; "y" alone: it cannot even be
// made.
#include <windows.h>

#include <stdexcept>

#include "com/WizardView.h"
#include "ui/frmMain.h"

namespace bxvbwiz {
namespace {

std::string KeysToPress() {
  char keys[32] = "";
  GetEnvironmentVariableA("BXVBWIZ_KEYS", keys, sizeof keys);
  return keys;
}

class DrivenView : public FormView {
 public:
  explicit DrivenView(frmMain& form) : form_(form) {}

  void ShowModal() override {
    std::string keys = KeysToPress();
    if (keys == "x") throw std::runtime_error("This view cannot be shown");
    MSG message;
    while (!unloaded_) {
      if (!keys.empty()) {
        Press(keys.front());
        keys.erase(0, 1);
      } else if (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.hwnd == nullptr && message.message == WM_APP) Press(static_cast<char>(message.wParam));
        DispatchMessageW(&message);
      }
    }
  }
  Button ShowMessage(const Message& message, const std::string&) override {
    return (message.style & 15) == kStyleYesNo ? Button::No : Button::Ok;
  }
  void Refresh() override {}
  void ProcessEvents() override {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) DispatchMessageW(&message);
  }
  void SetPointer(Pointer) override {}
  std::string BrowseForFile(const std::string&, const std::string&) override { return {}; }
  void OpenHelp(const std::string&) override {}
  int TextWidth(const std::string&) const override { return 0; }
  int ExeLabelWidth() const override { return 0; }
  void Unload(const frmMain&) override { unloaded_ = true; }

 private:
  void Press(char key) {
    switch (key) {
      case 'n':
        if (form_.fraPanel1.visible) return form_.cmdNext_Click(kPanelWelcome);
        return form_.cmdNext_Click(form_.fraPanel2.visible ? kPanelInformation : kPanelSummary);
      case 'o':
        return form_.cmdOK_Click();
      default:
        return form_.cmdCancel_Click();
    }
  }

  frmMain& form_;
  bool unloaded_ = false;
};

}  // namespace

std::unique_ptr<FormView> MakeWizardView(frmMain& form) {
  if (KeysToPress() == "y") throw std::runtime_error("This view cannot be made");
  return std::make_unique<DrivenView>(form);
}

}  // namespace bxvbwiz
