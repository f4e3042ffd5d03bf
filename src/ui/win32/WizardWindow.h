#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/win32/ControlWindow.h"
#include "ui/win32/FormFont.h"
#include "ui/win32/Owned.h"
#include "ui/win32/ToolTips.h"

namespace bxvbwiz {

// The form's window with its frames and controls. It outlives the form by the return from the handler in
// which the form was unloaded: whoever calls into it holds a share.
class WizardWindow : public std::enable_shared_from_this<WizardWindow> {
 public:
  WizardWindow(frmMain& form, HINSTANCE module, Ledger ledger, std::shared_ptr<const FormFont> font);
  WizardWindow(const WizardWindow&) = delete;
  WizardWindow& operator=(const WizardWindow&) = delete;

  // Shows the window, owned by the thread's active window, and lets messages flow until the form is unloaded.
  // Throws RuntimeError when the window cannot be made.
  void RunModal();
  // Takes over what the form has changed. Fills a tree that became visible, which lets events run.
  void Refresh();
  // Lets pending events run.
  void ProcessEvents();
  void SetPointer(Pointer pointer);
  // Null before and after it is shown.
  HWND Handle() const { return window_.Get(); }
  // The form is gone.
  void FormUnloaded();

 private:
  static constexpr UINT_PTR kIconTimer = 1;
  static constexpr std::size_t kFrames = kPanelReport + 1;

  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK TextBoxProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                           DWORD_PTR self);
  static LRESULT CALLBACK ReportProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                          DWORD_PTR self);
  INT_PTR Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void Command(int id, int code);

  void Make(HWND owner);
  HWND MakeDialog(HWND parent, DWORD style, DWORD extendedStyle);
  void ShowIcon();
  void MakeFrame(std::int16_t panel);
  void MakeControl(const LaidControl& laid, HWND parent);
  void MoveToMiddle(HWND owner) const;
  void ShowFrames();
  void ShowControls();
  void ShowToolTips();
  void FillVisibleTrees();
  bool FillTreeOf(const ControlWindow& shown, const TreeView& tree);
  void MoveFocus();
  bool FocusIsUsable() const;
  void FocusFirst() const;
  const ControlWindow* WindowOf(const Control* control) const;
  void Loop();
  void Dispatch(MSG& message);
  bool IsKeyOfForm(const MSG& message);

  frmMain* form_;  // null once it is unloaded
  HINSTANCE module_;
  Ledger ledger_;
  std::shared_ptr<const FormFont> font_;
  OwnedImageList images_;
  OwnedIcon icon_;
  OwnedWindow window_;
  std::array<OwnedWindow, kFrames> frames_;
  ToolTips toolTips_;
  std::vector<LaidControl> laid_;
  std::vector<std::unique_ptr<ControlWindow>> controls_;
  std::vector<std::pair<const Control*, unsigned>> filledTrees_;  // with the revision that is shown
  const Control* shownDefault_ = nullptr;
  bool updating_ = false;  // the window follows the form: what it notifies, no user did
  bool filling_ = false;
  Pointer pointer_ = Pointer::Default;
  std::optional<int> quitCode_;  // the thread was asked to end
};

}  // namespace bxvbwiz
