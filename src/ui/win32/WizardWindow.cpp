#include "ui/win32/WizardWindow.h"

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <utility>

#include "text/win32/WideText.h"

namespace bxvbwiz {

namespace {

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

void WizardWindow::ShowControls() {
  const Raised updating(updating_);
  bool progress = false;
  const std::size_t made = controls_.size();
  MakeShown();
  FollowSize();
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    const Control* shown = &controls_[i]->Shown();
    const bool changed = controls_[i]->Show(form_->Heeds(*shown)) || i >= made;
    const bool isOfStep =
        shown == &form_->lblStatus || shown == &form_->pbrProgress || shown == &form_->lblProgress;
    progress = progress || (changed && isOfStep && shown->page->visible);
  }
  if (TextOf(window_.get()) != form_->caption) SetWindowTextW(window_.get(), Widen(form_->caption).c_str());
  if (form_->defaultButton != shownDefault_) {
    shownDefault_ = form_->defaultButton;
    if (const ControlWindow* button = WindowOf(shownDefault_)) {
      SendMessageW(window_.get(), DM_SETDEFID, static_cast<WPARAM>(GetDlgCtrlID(button->Handle())), 0);
    }
  }
  // A step of the wizard is named before it begins, not when events run again.
  if (progress) RedrawWindow(window_.get(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

// The tips are made when the mouse is first over the form.
void WizardWindow::ShowToolTips() {
  constexpr int kMostUnits = 300;
  if (!toolTips_.Made()) toolTips_.Make(window_.get(), module_, Font(), Pixels(kMostUnits));
  for (const auto& control : controls_) {
    const std::string& tip = control->Shown().toolTip;
    toolTips_.Set(control->Handle(), tip);
    if (control->Shown().kind != ControlKind::ComboBox) continue;
    // The text box inside has the mouse's messages for itself.
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof(parts);
    if (GetComboBoxInfo(control->Handle(), &parts)) toolTips_.Set(parts.hwndItem, tip);
  }
}

ControlWindow* WizardWindow::WindowOf(const Control* control) const {
  for (const auto& candidate : controls_) {
    if (&candidate->Shown() == control) return candidate.get();
  }
  return nullptr;
}

ControlWindow* WizardWindow::WindowWith(HWND handle) const {
  for (const auto& candidate : controls_) {
    if (candidate->Handle() == handle) return candidate.get();
  }
  return nullptr;
}

HFONT WizardWindow::Font() const {
  return reinterpret_cast<HFONT>(SendMessageW(controls_.front()->Handle(), WM_GETFONT, 0, 0));
}

int WizardWindow::Pixels(int horizontalUnits) const {
  return PixelsOf({0, 0, horizontalUnits, 0}).right;
}

// With width and height as right and bottom.
RECT WizardWindow::PixelsOf(const Place& place) const {
  RECT pixels{place.x, place.y, place.width, place.height};
  MapDialogRect(window_.get(), &pixels);
  return pixels;
}

int WizardWindow::Width(const Control& control) const {
  return Pixels(control.place.width);
}

int WizardWindow::TextWidth(const std::string& text) const {
  const std::wstring wide = Widen(text);
  const HDC context = GetDC(window_.get());
  const HGDIOBJ previous = SelectObject(context, Font());
  SIZE extent{};
  GetTextExtentPoint32W(context, wide.c_str(), static_cast<int>(wide.size()), &extent);
  SelectObject(context, previous);
  ReleaseDC(window_.get(), context);
  return extent.cx;
}

void WizardWindow::Refresh() {
  if (form_ == nullptr || window_ == nullptr) return;
  const HWND focused = GetFocus();
  ShowControls();
  if (focused != nullptr && !IsWindowEnabled(focused)) left_ = focused;
  MoveFocus();
  FillVisibleTrees();
}

// Events run meanwhile: the user may choose the other tree, or leave.
void WizardWindow::FillVisibleTrees() {
  if (filling_) return;
  const Raised filling(filling_);
  const auto goesOn = [this] {
    ProcessEvents();
    return form_ != nullptr && window_ != nullptr;
  };
  for (std::size_t i = 0; i < controls_.size();) {
    if (!controls_[i]->IsOutdatedTree()) {
      ++i;
    } else if (controls_[i]->Fill(goesOn)) {
      i = 0;
    } else {
      return;
    }
  }
}

// ---------------------------------------------------------------- focus

void WizardWindow::MoveFocus() {
  if (form_ == nullptr || GetActiveWindow() != window_.get()) return;
  const ControlWindow* wanted = WindowOf(form_->focus);
  if (wanted != nullptr && IsUsable(wanted->Handle())) {
    form_->focus = nullptr;
    if (GetFocus() != wanted->Handle()) {
      SetFocus(wanted->Handle());
      wanted->ShowSelection();
    }
    return;
  }
  if (FocusIsUsable()) return;
  if (form_->IsWorking()) {
    SetFocus(window_.get());  // Enter on another button would do what nobody asked for
  } else if (const HWND left = std::exchange(left_, nullptr); IsUsable(left)) {
    SetFocus(left);
  } else {
    FocusFirst();
  }
}

bool WizardWindow::IsUsable(HWND window) {
  return IsWindowVisible(window) && IsWindowEnabled(window);
}

bool WizardWindow::FocusIsUsable() const {
  const HWND focused = GetFocus();
  for (const auto& control : controls_) {
    // A combo box has its text box inside.
    if (control->Handle() != focused && !IsChild(control->Handle(), focused)) continue;
    return IsUsable(control->Handle());
  }
  return false;
}

void WizardWindow::FocusFirst() const {
  if (const HWND first = GetNextDlgTabItem(window_.get(), nullptr, FALSE)) SetFocus(first);
}

}  // namespace bxvbwiz
