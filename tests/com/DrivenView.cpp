// The form without a window: a test drives it. The letters of BXVBWIZ_KEYS are pressed once it is shown, and
// others arrive as WM_APP messages of the message-only window "BxvbwizDriven". "x" alone: it cannot be shown;
// "y" alone: it cannot even be made.
#include <windows.h>

#include <stdexcept>

#include "com/WizardView.h"
#include "ui/frmMain.h"

namespace bxvbwiz {
namespace {

constexpr const wchar_t* kWindowClass = L"BxvbwizDriven";

std::string KeysToPress() {
  char keys[32] = "";
  GetEnvironmentVariableA("BXVBWIZ_KEYS", keys, sizeof keys);
  return keys;
}

class DrivenView : public FormView {
 public:
  explicit DrivenView(frmMain& form) : form_(form) {}

  void ShowModal() override {
    keys_ = KeysToPress();
    if (keys_ == "x") throw std::runtime_error("This view cannot be shown");
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &Receive;
    windowClass.lpszClassName = kWindowClass;
    RegisterClassW(&windowClass);
    HWND window = CreateWindowW(kWindowClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    PressNext(window);
    MSG message;
    while (!unloaded_ && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    DestroyWindow(window);
    UnregisterClassW(kWindowClass, nullptr);
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
  static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM key, LPARAM data) {
    auto* const view = reinterpret_cast<DrivenView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message != WM_APP || view == nullptr || view->unloaded_)
      return DefWindowProcW(window, message, key, data);
    view->Press(static_cast<char>(key));
    view->PressNext(window);
    return 0;
  }

  // One at a time: while a handler runs, others are ignored.
  void PressNext(HWND window) {
    if (keys_.empty()) return;
    PostMessageW(window, WM_APP, static_cast<WPARAM>(keys_.front()), 0);
    keys_.erase(0, 1);
  }

  void Press(char key) {
    switch (key) {
      case 'n':
        if (form_.fraPanel1.visible) return form_.cmdNext_Click(kPanelWelcome);
        return form_.cmdNext_Click(form_.fraPanel2.visible ? kPanelInformation : kPanelSummary);
      case 'o':
        return form_.cmdOK_Click();
      case 'c':
        return form_.cmdCancel_Click();
      case 'e':
        return form_.Form_KeyDown(kKeyEscape);
      default:
        return form_.Form_QueryUnload();
    }
  }

  frmMain& form_;
  std::string keys_;
  bool unloaded_ = false;
};

}  // namespace

std::unique_ptr<FormView> MakeWizardView(frmMain& form) {
  if (KeysToPress() == "y") throw std::runtime_error("This view cannot be made");
  return std::make_unique<DrivenView>(form);
}

}  // namespace bxvbwiz
