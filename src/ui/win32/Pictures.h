#pragma once

#include "ui/win32/Owned.h"

// The pictures of the form, from the module's resources (Icon.rc and Pictures.rc), which hold each in several
// sizes.
namespace bxvbwiz {

// One picture for each NodeImage, in its order, in the size of small icons.
OwnedImageList LoadNodeImages(HINSTANCE module);

// The wizard's icon, `size` pixels wide and high; null when the module has none.
OwnedIcon LoadWizardIcon(HINSTANCE module, int size);

}  // namespace bxvbwiz
