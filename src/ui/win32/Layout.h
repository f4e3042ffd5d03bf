#pragma once

#include <cstdint>
#include <vector>

#include "ui/frmMain.h"
#include "ui/win32/FormFont.h"

// Where the form's controls stand, in dialog units, and what kind of window shows each.
namespace bxvbwiz {

enum class ControlKind {
  Label,
  PathLabel,  // shows "&" as it stands
  Branding,
  Line,
  GroupBox,
  Button,
  CheckBox,
  FirstOptionButton,  // of a group
  OptionButton,
  TextBox,
  ReportBox,
  ComboBox,
  ProgressBar,
  Tree,
};

constexpr std::int16_t kOnEveryPanel = -1;

// The size of the form without its border, and of each frame in it.
constexpr Place kFormPlace{0, 0, 330, 228};
constexpr Place kFramePlace{0, 0, 330, 192};

struct LaidControl {
  int id;
  std::int16_t panel;  // whose frame holds the control; kOnEveryPanel stands on the form itself
  ControlKind kind;
  Control* control;    // null for a drawn line
  const Frame* frame;  // shows a control of the form only with this frame; null always
  Place place;
};

// All controls, in the order in which they are read and in which Tab visits them.
std::vector<LaidControl> LayOut(frmMain& form);

// The frame of a panel, from 0 to kPanelReport.
Frame& FrameOf(frmMain& form, std::int16_t panel);

}  // namespace bxvbwiz
