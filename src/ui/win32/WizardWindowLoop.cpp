#include <windows.h>

#include "ui/win32/WizardWindow.h"

// The message loop of the wizard's windows.
namespace bxvbwiz {

namespace {

// Keeps the owner from taking input while the form is shown.
class DisabledOwner {
 public:
  explicit DisabledOwner(HWND owner) : owner_(owner != nullptr && IsWindowEnabled(owner) ? owner : nullptr) {
    if (owner_ != nullptr) EnableWindow(owner_, FALSE);
  }
  ~DisabledOwner() {
    if (owner_ != nullptr) EnableWindow(owner_, TRUE);
  }
  DisabledOwner(const DisabledOwner&) = delete;
  DisabledOwner& operator=(const DisabledOwner&) = delete;

 private:
  HWND owner_;
};

// The look of the common controls that the module asks for in its own manifest, when it is a library whose
// host asks for none. The resource has the number that the system keeps for that
// (ISOLATIONAWARE_MANIFEST_RESOURCE_ID in winuser.h).
class ControlsOfModule {
 public:
  explicit ControlsOfModule(HINSTANCE module) {
    const auto manifest = MAKEINTRESOURCEW(2);
    if (FindResourceW(module, manifest, RT_MANIFEST) == nullptr) return;
    ACTCTXW wanted{};
    wanted.cbSize = sizeof(wanted);
    wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    wanted.hModule = module;
    wanted.lpResourceName = manifest;
    context_ = CreateActCtxW(&wanted);
    if (context_ != INVALID_HANDLE_VALUE) isActive_ = ActivateActCtx(context_, &cookie_) != FALSE;
  }
  ~ControlsOfModule() {
    if (isActive_) DeactivateActCtx(0, cookie_);
    if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
  }
  ControlsOfModule(const ControlsOfModule&) = delete;
  ControlsOfModule& operator=(const ControlsOfModule&) = delete;

 private:
  HANDLE context_ = INVALID_HANDLE_VALUE;
  ULONG_PTR cookie_ = 0;
  bool isActive_ = false;
};

}  // namespace

void WizardWindow::RunModal() {
  const auto keep = shared_from_this();
  const HWND owner = GetActiveWindow();
  const ControlsOfModule controls(module_);
  Make(owner);
  const DisabledOwner disabled(owner);
  Refresh();
  if (owner != nullptr) MoveToMiddle(owner);
  if (form_ != nullptr) {
    ShowWindow(window_.get(), SW_SHOW);
    MoveFocus();
    // All windows at once: a message to each of them would cost time.
    RedrawWindow(window_.get(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    Loop();
  }
  if (quitCode_.has_value()) PostQuitMessage(*quitCode_);
}

void WizardWindow::Loop() {
  MSG message{};
  while (form_ != nullptr && window_ != nullptr && !quitCode_.has_value()) {
    const BOOL result = GetMessageW(&message, nullptr, 0, 0);
    if (result == 0) {
      quitCode_ = static_cast<int>(message.wParam);
    } else if (result > 0) {
      Dispatch(message);
    }
  }
  // The thread ends, or the window is gone, and so does the wizard.
  if (form_ != nullptr) form_->Form_QueryUnload();
}

void WizardWindow::ProcessEvents() {
  const auto keep = shared_from_this();
  MSG message{};
  while (window_ != nullptr && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      quitCode_ = static_cast<int>(message.wParam);
      if (form_ != nullptr) form_->Form_QueryUnload();
      return;
    }
    Dispatch(message);
  }
}

void WizardWindow::Dispatch(MSG& message) {
  if (IsKeyOfForm(message) || IsDialogMessageW(window_.get(), &message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

// The keys that the form itself handles, wherever the focus is.
bool WizardWindow::IsKeyOfForm(const MSG& message) {
  if (message.message != WM_KEYDOWN || form_ == nullptr) return false;
  if (message.hwnd != window_.get() && !IsChild(window_.get(), message.hwnd)) return false;
  if (message.wParam == VK_F1) {
    form_->cmdHelp_Click();
    return true;
  }
  if (message.wParam != VK_ESCAPE) return false;
  // An open list is closed first.
  const ControlWindow* list = WindowOf(&form_->cboApplicationType);
  if (list != nullptr && SendMessageW(list->Handle(), CB_GETDROPPEDSTATE, 0, 0) != 0) return false;
  form_->Form_KeyDown(kKeyEscape);
  return true;
}

void WizardWindow::SetPointer(Pointer pointer) {
  pointer_ = pointer;
  SetCursor(LoadCursorW(nullptr, pointer == Pointer::Hourglass ? IDC_WAIT : IDC_ARROW));
}

void WizardWindow::FormUnloaded() {
  form_ = nullptr;
  if (window_ != nullptr) PostMessageW(window_.get(), WM_NULL, 0, 0);  // wakes the loop
}

}  // namespace bxvbwiz
