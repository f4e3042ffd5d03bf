#include "ui/win32/TreeFill.h"

#include <algorithm>

#include "text/win32/WideText.h"

namespace bxvbwiz {

namespace {

constexpr int kOpenLevels = 2;

class Filling {
 public:
  Filling(HWND window, const std::function<bool()>& goesOn) : window_(window), goesOn_(goesOn) {}

  // True in `opened` when one of the nodes is a missing file or holds one. False when stopped.
  bool Add(HTREEITEM parent, const TreeNodes& nodes, int level, bool& opened) {
    for (const std::unique_ptr<TreeNode>& node : nodes) {
      if (++count_ % kNodesBetweenEvents == 0 && !goesOn_()) return false;
      const HTREEITEM item = Insert(parent, *node);
      bool holdsMissing = false;
      if (!Add(item, node->children, level + 1, holdsMissing)) return false;
      if (!node->children.empty() && (holdsMissing || level < kOpenLevels)) {
        SendMessageW(window_, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
      }
      opened = opened || holdsMissing || node->image == NodeImage::MissingFile;
    }
    return true;
  }

 private:
  HTREEITEM Insert(HTREEITEM parent, const TreeNode& node) const {
    std::wstring text = Widen(node.text);
    TVINSERTSTRUCTW insert{};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    insert.item.pszText = text.data();
    insert.item.iImage = insert.item.iSelectedImage = static_cast<int>(node.image);
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(window_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
  }

  HWND window_;
  const std::function<bool()>& goesOn_;
  int count_ = 0;
};

}  // namespace

bool FillTree(HWND window, const TreeNodes& nodes, const std::function<bool()>& goesOn) {
  SendMessageW(window, WM_SETREDRAW, FALSE, 0);
  SendMessageW(window, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
  bool opened = false;
  if (!Filling(window, goesOn).Add(TVI_ROOT, nodes, 0, opened)) return false;
  const LRESULT first = SendMessageW(window, TVM_GETNEXTITEM, TVGN_ROOT, 0);
  SendMessageW(window, TVM_SELECTITEM, TVGN_CARET, first);
  SendMessageW(window, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(window, nullptr, TRUE);
  return true;
}

}  // namespace bxvbwiz
