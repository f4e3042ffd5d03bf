#pragma once

#include "setupgen/TreeNode.h"
#include "ui/win32/Owned.h"

// The pictures of the form. They are drawn for the screen's resolution from shapes, so that they are sharp at
// each.
namespace bxvbwiz {

// One picture for each NodeImage, in its order, `size` pixels wide and high, on the colour of a window's
// ground.
OwnedImageList MakeNodeImages(const Ledger& ledger, int size);

// The wizard's icon.
OwnedIcon MakeWizardIcon(const Ledger& ledger, int size);

}  // namespace bxvbwiz
