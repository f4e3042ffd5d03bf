#pragma once

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <functional>

#include "setupgen/TreeNode.h"

namespace bxvbwiz {

// Events run at least once for this many nodes.
constexpr int kNodesBetweenEvents = 250;

// Fills a tree view's window with nodes. The top two levels are opened, and every branch that
// holds a missing file. `goesOn` is called between nodes, lets events run, and gives false to stop. False
// when it was stopped.
bool FillTree(HWND window, const TreeNodes& nodes, const std::function<bool()>& goesOn);

}  // namespace bxvbwiz
