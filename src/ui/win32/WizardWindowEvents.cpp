#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "text/win32/WideText.h"
#include "ui/win32/WizardWindow.h"

// The messages of the wizard's window. No exception may pass through the system; the form's handlers let
// none out, so what is caught here is a lack of memory.
namespace bxvbwiz {

namespace {

constexpr UINT kActivated = WM_APP;  // posted to itself once the system has set the focus

}  // namespace

INT_PTR CALLBACK WizardWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    return FALSE;  // the focus is set when the window is shown
  }
  auto* self = reinterpret_cast<WizardWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  if (self == nullptr || self->form_ == nullptr) return FALSE;
  try {
    const auto keep = self->shared_from_this();
    return self->Handle(window, message, wParam, lParam);
  } catch (...) {
    return FALSE;
  }
}

INT_PTR WizardWindow::Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (window != window_.get()) return FALSE;  // it is being made or destroyed
  switch (message) {
    case WM_COMMAND:
      if (!updating_) Command(GetDlgItem(window, LOWORD(wParam)), HIWORD(wParam));
      return TRUE;
    case WM_CLOSE:
      form_->Form_QueryUnload();
      return TRUE;
    case WM_NOTIFY:
      if (const auto& header = *reinterpret_cast<const NMHDR*>(lParam); header.code == TVN_GETINFOTIPW)
        FillTip(*reinterpret_cast<NMTVGETINFOTIPW*>(lParam));
      return FALSE;
    case WM_SIZE:
      FollowSize();
      return FALSE;
    case WM_PAINT:
      Paint();
      return TRUE;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least_.cx, least_.cy};
      return TRUE;
    case WM_SYSCOLORCHANGE:
      // The system tells the windows of programs only.
      for (const auto& control : controls_) SendMessageW(control->Handle(), message, wParam, lParam);
      return FALSE;
    case WM_SETFOCUS:
      return form_->IsWorking() ? TRUE : FALSE;  // it stays there
    case WM_DESTROY:
      // The host has destroyed the owner, which takes this window with it.
      static_cast<void>(window_.release());
      PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);  // wakes the loop
      form_->Form_QueryUnload();
      return FALSE;
    case WM_SETCURSOR:
      ShowToolTips();
      if (pointer_ == Pointer::Default) return FALSE;
      SetPointer(pointer_);
      SetWindowLongPtrW(window, DWLP_MSGRESULT, TRUE);
      return TRUE;
    case WM_ACTIVATE:
      if (LOWORD(wParam) != WA_INACTIVE) PostMessageW(window, kActivated, 0, 0);
      return FALSE;
    case kActivated:
      MoveFocus();
      return TRUE;
    case WM_CTLCOLORSTATIC: {
      // A box that takes no text is grey by default, but the report is for reading.
      const ControlWindow* box = WindowWith(reinterpret_cast<HWND>(lParam));
      if (box == nullptr || &box->Shown() != &form_->txtReport) return FALSE;
      const auto context = reinterpret_cast<HDC>(wParam);
      SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
      SetBkColor(context, GetSysColor(COLOR_WINDOW));
      return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
    }
    default:
      return FALSE;
  }
}

void WizardWindow::FillTip(NMTVGETINFOTIPW& asked) const {
  wchar_t name[MAX_PATH] = {};
  TVITEMW item{};
  item.mask = TVIF_TEXT | TVIF_IMAGE;
  item.hItem = asked.hItem;
  item.pszText = name;
  item.cchTextMax = MAX_PATH;
  if (SendMessageW(asked.hdr.hwndFrom, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) == FALSE) return;
  const std::wstring tip = Widen(form_->TipOf(Narrow(name), static_cast<NodeImage>(item.iImage)));
  lstrcpynW(asked.pszText, tip.c_str(), asked.cchTextMax);
}

void WizardWindow::Command(HWND used, int code) {
  ControlWindow* control = WindowWith(used);
  // Enter presses the default button even while it is disabled, and other programs write into disabled boxes.
  if (control == nullptr || !form_->Heeds(control->Shown())) return;
  // A copy: the form and its controls may be gone when it returns.
  const Handler handler = control->Shown().handler;
  switch (control->Shown().kind) {
    case ControlKind::ComboBox:
      if (code == CBN_EDITCHANGE) control->Take();
      if (code == CBN_SELCHANGE) control->TakeChoice();
      return;
    case ControlKind::TextBox:
      if (code != EN_CHANGE) return;
      control->Take();
      break;
    case ControlKind::CheckBox:
      if (code == BN_CLICKED) control->Take();
      return;
    default:
      // The form itself changes its option buttons.
      if (code != BN_CLICKED) return;
  }
  if (handler) handler();
}

LRESULT CALLBACK WizardWindow::TextBoxProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam,
                                                UINT_PTR, DWORD_PTR self) {
  auto* window = reinterpret_cast<WizardWindow*>(self);
  ControlWindow* control = message == WM_CHAR && window->form_ != nullptr ? window->WindowWith(box) : nullptr;
  if (control == nullptr) return DefSubclassProc(box, message, wParam, lParam);
  try {
    const TextBox::KeyPress keyPress =
        static_cast<TextBox&>(control->Shown()).keyPress;  // may go with the form
    const auto keep = window->shared_from_this();
    control->Take();
    // Half of a surrogate pair is never refused.
    auto character = static_cast<char32_t>(wParam);
    keyPress(character);
    if (character == 0 || window->form_ == nullptr) return 0;
  } catch (...) {
    return 0;
  }
  return DefSubclassProc(box, message, wParam, lParam);
}

LRESULT CALLBACK WizardWindow::ReportProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                               DWORD_PTR) {
  const LRESULT result = DefSubclassProc(box, message, wParam, lParam);
  // Tab, Enter and Escape are the form's, as in every other box; and the focus selects nothing.
  if (message == WM_GETDLGCODE) {
    return result & ~static_cast<LRESULT>(DLGC_WANTALLKEYS | DLGC_WANTTAB | DLGC_HASSETSEL);
  }
  return result;
}

}  // namespace bxvbwiz
