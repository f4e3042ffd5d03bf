#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <algorithm>

#include "support/Errors.h"
#include "ui/win32/DialogTemplate.h"
#include "ui/win32/Pictures.h"
#include "ui/win32/WizardWindow.h"

// The making of the wizard's windows.
namespace bxvbwiz {

namespace {

bool IsPage(const Control& control) {
  return control.kind == ControlKind::Frame && control.page == nullptr;
}

}  // namespace

// Pages are not part of the form's own dialog.
HWND WizardWindow::MakeDialog(const Container& holder, const Place& place, HWND parent, DWORD style,
                              DWORD extendedStyle) {
  DialogTemplate form(style, extendedStyle, place, form_->font);
  for (const Control* control : holder.controls) {
    if (!IsPage(*control)) form.Add(*control);
  }
  const HWND dialog = form.Create(module_, parent, &Procedure, reinterpret_cast<LPARAM>(this));
  if (dialog == nullptr) throw RuntimeError(kErrorObjectNotSet, "Cannot make the wizard's window");
  int id = DialogTemplate::kFirstId;
  for (Control* control : holder.controls) {
    if (!IsPage(*control)) TakeUp(*control, GetDlgItem(dialog, id++), holder.asControl != nullptr);
  }
  return dialog;
}

void WizardWindow::TakeUp(Control& control, HWND window, bool onPage) {
  controls_.push_back(std::make_unique<ControlWindow>(control, window, onPage));
  // Its label leads to the project's box; and on the summary page the key of Finish is that of a view.
  if (&control == &form_->lblVBP) controls_.back()->SetAccessKey(AccessKey::First);
  if (&control == &form_->cmdNext[kPanelSummary]) controls_.back()->SetAccessKey(AccessKey::None);
  if (control.kind == ControlKind::TreeView) {
    if (images_ == nullptr) images_ = LoadNodeImages(module_);
    SendMessageW(window, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images_.get()));
  }
  if (control.kind != ControlKind::TextBox) return;
  SetWindowSubclass(window, static_cast<TextBox&>(control).readOnly ? &ReportProcedure : &TextBoxProcedure, 0,
                    reinterpret_cast<DWORD_PTR>(this));
}

void WizardWindow::Make(HWND owner) {
  INITCOMMONCONTROLSEX classes{
      sizeof(classes), ICC_TREEVIEW_CLASSES | ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | WS_THICKFRAME;
  const bool isOnly = owner == nullptr;  // of its program
  window_.reset(MakeDialog(*form_, kFormPlace, owner,
                           style | (isOnly ? WS_MINIMIZEBOX | WS_MAXIMIZEBOX : 0UL),
                           isOnly ? WS_EX_APPWINDOW : 0UL));
  RECT place{};
  GetWindowRect(window_.get(), &place);
  least_ = {place.right - place.left, place.bottom - place.top};
  ShowIcon();
}

void WizardWindow::ShowIcon() {
  icon_ = LoadWizardIcon(module_, GetSystemMetrics(SM_CXICON));
  smallIcon_ = LoadWizardIcon(module_, GetSystemMetrics(SM_CXSMICON));
  SendMessageW(window_.get(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon_.get()));
  SendMessageW(window_.get(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon_.get()));
}

// A page's window is made when it is first shown, before the controls of the form, so that Tab visits them
// after it.
void WizardWindow::ShowPages() {
  for (Control* control : form_->controls) {
    if (!IsPage(*control)) continue;
    HWND& page = pages_[control];
    if (control->visible && page == nullptr) {
      page = MakeDialog(*static_cast<Frame*>(control), control->place, window_.get(),
                        WS_CHILD | WS_CLIPSIBLINGS | DS_CONTROL, WS_EX_CONTROLPARENT);
      SetWindowPos(page, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      enlarged_ = {};
      FollowSize();
    }
    if (page == nullptr) continue;
    const bool isVisible = (GetWindowLongW(page, GWL_STYLE) & WS_VISIBLE) != 0;
    if (control->visible != isVisible) ShowWindow(page, control->visible ? SW_SHOWNA : SW_HIDE);
  }
}

// Moves and enlarges what follows the size of the window.
void WizardWindow::FollowSize() {
  RECT inside{};
  GetClientRect(window_.get(), &inside);
  const RECT least = PixelsOf(kFormPlace);
  const SIZE more{inside.right - least.right, inside.bottom - least.bottom};
  if (more.cx == enlarged_.cx && more.cy == enlarged_.cy) return;
  enlarged_ = more;
  const auto follow = [&](HWND window, const Place& place) {
    const auto by = [&](unsigned change, LONG amount) {
      return (place.whenEnlarged & change) != 0 ? amount : 0;
    };
    const RECT first = PixelsOf(place);
    SetWindowPos(window, nullptr, first.left + by(kMovesRight, more.cx), first.top + by(kMovesDown, more.cy),
                 first.right + by(kWidens, more.cx), first.bottom + by(kHeightens, more.cy),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  };
  for (const auto& [frame, page] : pages_) {
    if (page != nullptr) follow(page, frame->place);
  }
  for (const auto& control : controls_) follow(control->Handle(), control->Shown().place);
}

// In the middle of its owner, or of the screen.
void WizardWindow::MoveToMiddle(HWND owner) const {
  RECT place{};
  GetWindowRect(window_.get(), &place);
  const LONG width = place.right - place.left;
  const LONG height = place.bottom - place.top;
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
  SetWindowPos(window_.get(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace bxvbwiz
