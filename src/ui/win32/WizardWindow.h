#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/frmMain.h"
#include "ui/win32/ControlWindow.h"
#include "ui/win32/Owned.h"
#include "ui/win32/ToolTips.h"

namespace bxvbwiz {

// The form's window with its pages and controls. It outlives the form by the return from the handler in which
// the form was unloaded: callers hold a share of it.
class WizardWindow : public std::enable_shared_from_this<WizardWindow> {
 public:
  WizardWindow(frmMain& form, HINSTANCE module) : form_(&form), module_(module) {}
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
  HWND Handle() const { return window_.get(); }
  // In pixels, once it is shown.
  int TextWidth(const std::string& text) const;
  int Width(const Control& control) const;
  // The form is gone.
  void FormUnloaded();

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK TextBoxProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                           DWORD_PTR self);
  static LRESULT CALLBACK ReportProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                          DWORD_PTR self);
  INT_PTR Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void Command(HWND used, int code);

  void Make(HWND owner);
  void MakeShown();
  bool IsPainted(const Control& control) const;
  ControlWindow& MakeWindow(Control& control);
  void Prepare(const Control& control, HWND window);
  void MoveToMiddle(HWND owner) const;
  RECT PlaceNow(const Place& place) const;
  void FollowSize();
  void Paint() const;
  void FillTip(NMTVGETINFOTIPW& asked) const;
  void ShowControls();
  void ShowToolTips();
  void FillVisibleTrees();
  void MoveFocus();
  bool FocusIsUsable() const;
  static bool IsUsable(HWND window);
  void FocusFirst() const;
  ControlWindow* WindowOf(const Control* control) const;
  ControlWindow* WindowWith(HWND handle) const;
  HFONT Font() const;
  int Pixels(int horizontalUnits) const;
  RECT PixelsOf(const Place& place) const;
  void Loop();
  void Dispatch(MSG& message);
  bool IsKeyOfForm(const MSG& message);

  frmMain* form_;  // null once it is unloaded
  HINSTANCE module_;
  OwnedImageList images_;
  OwnedWindow window_;  // goes before the pictures, and takes all the others with it
  std::vector<std::unique_ptr<ControlWindow>> controls_;
  ToolTips toolTips_;
  const Control* shownDefault_ = nullptr;
  SIZE least_{};           // of the window
  SIZE enlarged_{};        // by how much its inside is larger than that of the smallest
  HWND left_ = nullptr;    // had the focus until it was disabled
  bool updating_ = false;  // the window follows the form: what it notifies, no user did
  bool filling_ = false;
  Pointer pointer_ = Pointer::Default;
  std::optional<int> quitCode_;  // the thread was asked to end
};

}  // namespace bxvbwiz
