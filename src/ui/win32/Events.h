#pragma once

#include "ui/frmMain.h"

// What the user does to a control, as a call of the form's handler. The form may be gone when one returns.
namespace bxvbwiz {

// A button or option was pressed. Nothing for other controls.
void ForwardClick(frmMain& form, int id);

// The text of a box was changed. Nothing for boxes whose change the form does not follow.
void ForwardChange(frmMain& form, int id);

// A character was typed into a text box; the form makes it 0 when it refuses it.
void ForwardKeyPress(frmMain& form, int id, char32_t& character);

// Whether the form wants to see the characters typed into a box.
bool FollowsKeyPress(int id);

}  // namespace bxvbwiz
