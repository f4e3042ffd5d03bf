#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <algorithm>

#include "support/Errors.h"
#include "text/win32/WideText.h"
#include "ui/win32/DialogTemplate.h"
#include "ui/win32/Pictures.h"
#include "ui/win32/WizardWindow.h"

// The making of the wizard's windows.
namespace bxvbwiz {

namespace {

// The controls of all pages and of the form itself.
std::vector<Control*> InTabOrder(const Container& form) {
  std::vector<Control*> controls;
  for (Control* control : form.controls) {
    if (control->kind != ControlKind::Frame) {
      controls.push_back(control);
      continue;
    }
    const Container& page = *static_cast<Frame*>(control);
    controls.insert(controls.end(), page.controls.begin(), page.controls.end());
  }
  return controls;
}

// The class of the form's window: a dialog with the wizard's icons. It is registered once; the system would
// keep it when the module is unloaded.
class FormClass {
 public:
  static constexpr const wchar_t* kName = L"frmMain";

  explicit FormClass(HINSTANCE module)
      : module_(module),
        icon_(LoadWizardIcon(module, GetSystemMetrics(SM_CXICON))),
        smallIcon_(LoadWizardIcon(module, GetSystemMetrics(SM_CXSMICON))) {
    WNDCLASSEXW form{};
    form.cbSize = sizeof(form);
    GetClassInfoExW(nullptr, WC_DIALOG, &form);
    form.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
    form.hInstance = module;
    form.hIcon = icon_.get();
    form.hIconSm = smallIcon_.get();
    form.lpszClassName = kName;
    RegisterClassExW(&form);
  }
  ~FormClass() { UnregisterClassW(kName, module_); }
  FormClass(const FormClass&) = delete;
  FormClass& operator=(const FormClass&) = delete;

 private:
  HINSTANCE module_;
  OwnedIcon icon_;
  OwnedIcon smallIcon_;
};

HWND Checked(HWND made) {
  if (made == nullptr) throw RuntimeError(kErrorObjectNotSet, "Cannot make the wizard's window");
  return made;
}

}  // namespace

// A window is made when its control is first shown, and then put where Tab visits it: the system puts it
// last.
void WizardWindow::MakeShown() {
  const bool isFirst = controls_.empty();
  HWND last = HWND_TOP;
  for (Control* control : InTabOrder(*form_)) {
    const ControlWindow* made = WindowOf(control);
    if (made == nullptr && control->IsShown() && !IsPainted(*control)) {
      made = &MakeWindow(*control);
      enlarged_ = {};
      if (!isFirst) SetWindowPos(made->Handle(), last, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    if (made != nullptr) last = made->Handle();
  }
}

// The product's name and the line beside it: nobody can use them.
bool WizardWindow::IsPainted(const Control& control) const {
  return &control == &form_->lblBranding || &control == &form_->linBranding;
}

ControlWindow& WizardWindow::MakeWindow(Control& control) {
  constexpr int kFirstId = 100;
  const bool beginsGroup = controls_.empty() || controls_.back()->Shown().kind != control.kind;
  auto made = std::make_unique<ControlWindow>(control);
  // Its label leads to the project's box; and on the summary page the key of Finish is that of a view.
  if (&control == &form_->lblVBP) made->SetAccessKey(AccessKey::First);
  if (&control == &form_->cmdNext[kPanelSummary]) made->SetAccessKey(AccessKey::None);
  // The first default button has the identifier that dialogs give it: the system looks for no other one.
  const bool isFirstDefault = &control == form_->defaultButton && shownDefault_ == nullptr;
  made->Make(window_.get(), isFirstDefault ? IDOK : kFirstId + static_cast<int>(controls_.size()),
             PixelsOf(control.place), beginsGroup, isFirstDefault);
  const HWND window = Checked(made->Handle());
  controls_.push_back(std::move(made));
  Prepare(control, window);
  return *controls_.back();
}

void WizardWindow::Prepare(const Control& control, HWND window) {
  if (control.kind == ControlKind::TreeView) {
    if (images_ == nullptr) images_ = LoadNodeImages(module_);
    SendMessageW(window, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images_.get()));
  }
  if (control.kind != ControlKind::TextBox) return;
  const auto& box = static_cast<const TextBox&>(control);
  if (!box.readOnly && !box.keyPress) return;
  SetWindowSubclass(window, box.readOnly ? &ReportProcedure : &TextBoxProcedure, 0,
                    reinterpret_cast<DWORD_PTR>(this));
}

void WizardWindow::Make(HWND owner) {
  INITCOMMONCONTROLSEX classes{
      sizeof(classes), ICC_TREEVIEW_CLASSES | ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  static const FormClass formClass(module_);
  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | WS_THICKFRAME;
  const bool isOnly = owner == nullptr;  // of its program
  DialogTemplate form(style | (isOnly ? WS_MINIMIZEBOX | WS_MAXIMIZEBOX | DS_CENTER : 0UL),
                      isOnly ? WS_EX_APPWINDOW : 0UL, FormClass::kName, kFormPlace, form_->caption,
                      form_->font);
  window_.reset(Checked(form.Create(module_, owner, &Procedure, reinterpret_cast<LPARAM>(this))));
  RECT place{};
  GetWindowRect(window_.get(), &place);
  least_ = {place.right - place.left, place.bottom - place.top};
}

// In pixels, as large as the window is now.
RECT WizardWindow::PlaceNow(const Place& place) const {
  const auto by = [&](unsigned change, LONG amount) {
    return (place.whenEnlarged & change) != 0 ? amount : 0;
  };
  const RECT first = PixelsOf(place);
  const LONG left = first.left + by(kMovesRight, enlarged_.cx);
  const LONG top = first.top + by(kMovesDown, enlarged_.cy);
  return {left, top, left + first.right + by(kWidens, enlarged_.cx),
          top + first.bottom + by(kHeightens, enlarged_.cy)};
}

void WizardWindow::Paint() const {
  PAINTSTRUCT paint{};
  const HDC context = BeginPaint(window_.get(), &paint);
  RECT line = PlaceNow(form_->linBranding.place);
  DrawEdge(context, &line, EDGE_ETCHED, BF_TOP);
  RECT name = PlaceNow(form_->lblBranding.place);
  const HGDIOBJ previous = SelectObject(context, Font());
  SetBkMode(context, TRANSPARENT);
  SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
  DrawTextW(context, Widen(form_->lblBranding.text).c_str(), -1, &name, DT_SINGLELINE | DT_NOPREFIX);
  SelectObject(context, previous);
  EndPaint(window_.get(), &paint);
}

// Moves and enlarges what follows the size of the window.
void WizardWindow::FollowSize() {
  if (IsIconic(window_.get()) != FALSE) return;
  RECT inside{};
  GetClientRect(window_.get(), &inside);
  const RECT least = PixelsOf(kFormPlace);
  const SIZE more{inside.right - least.right, inside.bottom - least.bottom};
  if (more.cx == enlarged_.cx && more.cy == enlarged_.cy) return;
  enlarged_ = more;
  InvalidateRect(window_.get(), nullptr, TRUE);  // with the line
  for (const auto& control : controls_) {
    const RECT now = PlaceNow(control->Shown().place);
    SetWindowPos(control->Handle(), nullptr, now.left, now.top, now.right - now.left, now.bottom - now.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  }
}

// In the middle of its owner, or of the owner's screen.
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
  if (IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &around);
  const auto within = [](LONG wanted, LONG least, LONG most) {
    return std::max(least, std::min(wanted, most));
  };
  const LONG left = within((around.left + around.right - width) / 2, work.left, work.right - width);
  const LONG top = within((around.top + around.bottom - height) / 2, work.top, work.bottom - height);
  SetWindowPos(window_.get(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace bxvbwiz
