#include "ui/win32/WizardWindow.h"

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "support/Errors.h"
#include "text/win32/WideText.h"
#include "ui/win32/ControlIds.h"
#include "ui/win32/Pictures.h"
#include "ui/win32/TreeFill.h"

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
    ACTCTXW wanted{};
    wanted.cbSize = sizeof(wanted);
    wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    wanted.hModule = module;
    wanted.lpResourceName = MAKEINTRESOURCEW(2);
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

class Raised {
 public:
  explicit Raised(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  ~Raised() { flag_ = before_; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool& flag_;
  bool before_;
};

}  // namespace

WizardWindow::WizardWindow(frmMain& form, HINSTANCE module, Ledger ledger,
                           std::shared_ptr<const FormFont> font)
    : form_(&form),
      module_(module),
      ledger_(std::move(ledger)),
      font_(std::move(font)),
      laid_(LayOut(form)) {}

// ---------------------------------------------------------------- making

HWND WizardWindow::MakeDialog(HWND parent, DWORD style, DWORD extendedStyle) {
  // Without controls, menu, class and title.
  struct {
    DLGTEMPLATE dialog;
    WORD rest[3];
  } dialogTemplate{};
  dialogTemplate.dialog.style = style;
  dialogTemplate.dialog.dwExtendedStyle = extendedStyle;
  const HWND dialog = CreateDialogIndirectParamW(module_, &dialogTemplate.dialog, parent, &Procedure,
                                                 reinterpret_cast<LPARAM>(this));
  if (dialog == nullptr) throw RuntimeError(kErrorObjectNotSet, "Cannot make the wizard's window");
  SendMessageW(dialog, WM_SETFONT, reinterpret_cast<WPARAM>(font_->Get()), FALSE);
  return dialog;
}

void WizardWindow::Make(HWND owner) {
  INITCOMMONCONTROLSEX classes{
      sizeof(classes), ICC_TREEVIEW_CLASSES | ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  // Without an owner, it is the only window of its program.
  const DWORD alone = owner == nullptr ? WS_MINIMIZEBOX : 0;
  window_ = OwnedWindow(
      ledger_, MakeDialog(owner, WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | DS_MODALFRAME | alone,
                          owner == nullptr ? WS_EX_APPWINDOW : 0));
  for (const LaidControl& laid : laid_) {
    if (laid.panel == kOnEveryPanel && laid.frame == nullptr) MakeControl(laid, window_.Get());
  }
}

void WizardWindow::ShowIcon() {
  KillTimer(window_.Get(), kIconTimer);
  icon_ = MakeWizardIcon(ledger_, GetSystemMetrics(SM_CXICON));
  SendMessageW(window_.Get(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon_.Get()));
}

void WizardWindow::MakeFrame(std::int16_t panel) {
  OwnedWindow& frame = frames_[static_cast<std::size_t>(panel)];
  frame = OwnedWindow(
      ledger_, MakeDialog(window_.Get(), WS_CHILD | WS_CLIPSIBLINGS | DS_CONTROL, WS_EX_CONTROLPARENT));
  SetWindowLongPtrW(frame.Get(), GWLP_ID, kIdFrame + panel);
  const RECT place = font_->Pixels(kFramePlace);
  // First among its siblings, so that Tab visits a page before the buttons below it.
  SetWindowPos(frame.Get(), HWND_TOP, place.left, place.top, place.right, place.bottom, SWP_NOACTIVATE);
  if (panel == kPanelSummary) images_ = MakeNodeImages(ledger_, GetSystemMetrics(SM_CXSMICON));
  HWND previous = GetDlgItem(window_.Get(), kIdLine);
  for (const LaidControl& laid : laid_) {
    if (laid.panel == panel) MakeControl(laid, frame.Get());
    if (laid.frame != &FrameOf(*form_, panel)) continue;
    MakeControl(laid, window_.Get());
    // In the place that Tab expects: before the buttons that every panel has.
    const HWND button = controls_.back()->Handle();
    SetWindowPos(button, previous, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    previous = button;
  }
}

void WizardWindow::MakeControl(const LaidControl& laid, HWND parent) {
  controls_.push_back(std::make_unique<ControlWindow>(laid, parent, *font_, module_));
  const HWND control = controls_.back()->Handle();
  if (laid.kind == ControlKind::Tree) {
    SendMessageW(control, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images_.Get()));
  }
  const auto self = reinterpret_cast<DWORD_PTR>(this);
  const auto id = static_cast<UINT_PTR>(laid.id);
  if (laid.kind == ControlKind::TextBox) SetWindowSubclass(control, &TextBoxProcedure, id, self);
  if (laid.kind == ControlKind::ReportBox) SetWindowSubclass(control, &ReportProcedure, id, self);
}

// In the middle of its owner, or of the screen.
void WizardWindow::MoveToMiddle(HWND owner) const {
  RECT place = font_->Pixels(kFormPlace);
  const HWND window = window_.Get();
  AdjustWindowRectEx(&place, static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)));
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &monitor);
  const RECT& work = monitor.rcWork;
  RECT around = work;
  if (owner != nullptr && IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &around);
  const auto within = [](LONG wanted, LONG least, LONG most) {
    return std::max(least, std::min(wanted, most));
  };
  const LONG left = within((around.left + around.right - width) / 2, work.left, work.right - width);
  const LONG top = within((around.top + around.bottom - height) / 2, work.top, work.bottom - height);
  SetWindowPos(window, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

// ---------------------------------------------------------------- showing

void WizardWindow::ShowFrames() {
  for (std::int16_t panel = 0; panel <= kPanelReport; ++panel) {
    const OwnedWindow& frame = frames_[static_cast<std::size_t>(panel)];
    const bool visible = FrameOf(*form_, panel).visible;
    if (visible && frame.Get() == nullptr) MakeFrame(panel);
    if (frame.Get() == nullptr) continue;
    const bool isVisible = (GetWindowLongW(frame.Get(), GWL_STYLE) & WS_VISIBLE) != 0;
    if (visible != isVisible) ShowWindow(frame.Get(), visible ? SW_SHOWNA : SW_HIDE);
  }
}

void WizardWindow::ShowControls() {
  const Raised updating(updating_);
  bool progress = false;
  ShowFrames();
  for (const auto& control : controls_) {
    const bool changed = control->Show();
    progress = progress || (changed && (control->Id() == kIdStatus || control->Id() == kIdProgress ||
                                        control->Id() == kIdProgressText));
  }
  if (TextOf(window_.Get()) != form_->caption) SetWindowTextW(window_.Get(), Widen(form_->caption).c_str());
  if (form_->defaultButton != shownDefault_) {
    shownDefault_ = form_->defaultButton;
    if (const ControlWindow* button = WindowOf(shownDefault_)) {
      SendMessageW(window_.Get(), DM_SETDEFID, static_cast<WPARAM>(button->Id()), 0);
    }
  }
  // A step of the wizard is named before it begins, not when events run again.
  if (progress) RedrawWindow(window_.Get(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

// The tips are made when the mouse is first over the form.
void WizardWindow::ShowToolTips() {
  if (!toolTips_.Made()) toolTips_.Make(ledger_, window_.Get(), module_, *font_);
  for (const auto& control : controls_) {
    if (control->Shown() == nullptr) continue;
    toolTips_.Set(control->Handle(), control->Shown()->toolTip);
    if (control->Kind() != ControlKind::ComboBox) continue;
    // The text box inside has the mouse's messages for itself.
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof(parts);
    if (GetComboBoxInfo(control->Handle(), &parts)) toolTips_.Set(parts.hwndItem, control->Shown()->toolTip);
  }
}

const ControlWindow* WizardWindow::WindowOf(const Control* control) const {
  for (const auto& candidate : controls_) {
    if (control != nullptr && candidate->Shown() == control) return candidate.get();
  }
  return nullptr;
}

void WizardWindow::Refresh() {
  if (form_ == nullptr || window_.Get() == nullptr) return;
  ShowControls();
  MoveFocus();
  FillVisibleTrees();
}

void WizardWindow::FillVisibleTrees() {
  if (filling_) return;
  const Raised filling(filling_);
  const std::pair<const TreeView&, const Frame&> trees[] = {{form_->tvwFiles, form_->fraPanel3},
                                                            {form_->tvwDependencies, form_->fraPanel3}};
  // Events run meanwhile, and the user may choose the other tree.
  for (bool again = true; again;) {
    again = false;
    for (const auto& [tree, frame] : trees) {
      const ControlWindow* shown = WindowOf(&tree);
      if (!tree.visible || !frame.visible || shown == nullptr) continue;
      if (!FillTreeOf(*shown, tree)) return;
      again = again || !tree.visible;
    }
  }
}

// False when the form went meanwhile.
bool WizardWindow::FillTreeOf(const ControlWindow& shown, const TreeView& tree) {
  unsigned* revision = nullptr;
  for (auto& filled : filledTrees_) {
    if (filled.first == &tree) revision = &filled.second;
  }
  if (revision == nullptr) revision = &filledTrees_.emplace_back(&tree, 0U).second;
  if (*revision == tree.Revision()) return true;
  *revision = tree.Revision();
  return FillTree(shown.Handle(), tree, [this] {
    ProcessEvents();
    return form_ != nullptr;
  });
}

// ---------------------------------------------------------------- focus

void WizardWindow::MoveFocus() {
  if (form_ == nullptr || GetActiveWindow() != window_.Get()) return;
  if (const ControlWindow* wanted = WindowOf(form_->focus)) {
    form_->focus = nullptr;
    if (GetFocus() != wanted->Handle()) {
      SetFocus(wanted->Handle());
      wanted->ShowSelection();
    }
    return;
  }
  if (!FocusIsUsable()) FocusFirst();
}

bool WizardWindow::FocusIsUsable() const {
  const HWND focused = GetFocus();
  for (const auto& control : controls_) {
    // A combo box has its text box inside.
    if (control->Handle() != focused && !IsChild(control->Handle(), focused)) continue;
    return IsWindowVisible(focused) && IsWindowEnabled(control->Handle());
  }
  return false;
}

void WizardWindow::FocusFirst() const {
  for (std::int16_t panel = 0; panel <= kPanelReport; ++panel) {
    const HWND frame = frames_[static_cast<std::size_t>(panel)].Get();
    // While a page follows another, the later one is still below it.
    if (frame == nullptr || !FrameOf(*form_, panel).visible) continue;
    if (const HWND first = GetNextDlgTabItem(frame, nullptr, FALSE)) SetFocus(first);
    return;
  }
}

// ---------------------------------------------------------------- messages

void WizardWindow::RunModal() {
  const auto keep = shared_from_this();
  const HWND owner = GetActiveWindow();
  const ControlsOfModule controls(module_);
  Make(owner);
  const DisabledOwner disabled(owner);
  Refresh();
  MoveToMiddle(owner);
  if (form_ != nullptr) {
    ShowWindow(window_.Get(), SW_SHOW);
    MoveFocus();
    // An owned window has none. A timer waits for the first painting.
    if (owner == nullptr) SetTimer(window_.Get(), kIconTimer, USER_TIMER_MINIMUM, nullptr);
    Loop();
  }
  if (quitCode_.has_value()) PostQuitMessage(*quitCode_);
}

void WizardWindow::Loop() {
  MSG message{};
  while (form_ != nullptr && !quitCode_.has_value()) {
    const BOOL result = GetMessageW(&message, nullptr, 0, 0);
    if (result == 0) {
      quitCode_ = static_cast<int>(message.wParam);
    } else if (result > 0) {
      Dispatch(message);
    }
  }
  // The thread ends, and the wizard with it.
  if (form_ != nullptr) form_->Form_QueryUnload();
}

void WizardWindow::ProcessEvents() {
  const auto keep = shared_from_this();
  MSG message{};
  while (window_.Get() != nullptr && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      quitCode_ = static_cast<int>(message.wParam);
      if (form_ != nullptr) form_->Form_QueryUnload();
      return;
    }
    Dispatch(message);
  }
}

void WizardWindow::Dispatch(MSG& message) {
  if (IsKeyOfForm(message) || IsDialogMessageW(window_.Get(), &message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

// The keys that the form itself handles, wherever the focus is.
bool WizardWindow::IsKeyOfForm(const MSG& message) {
  if (message.message != WM_KEYDOWN || form_ == nullptr) return false;
  if (message.hwnd != window_.Get() && !IsChild(window_.Get(), message.hwnd)) return false;
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
  if (window_.Get() != nullptr) PostMessageW(window_.Get(), WM_NULL, 0, 0);  // wakes the loop
}

}  // namespace bxvbwiz
