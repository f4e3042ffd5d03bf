#include "ui/win32/TreeFill.h"

#include <gtest/gtest.h>

#include "ui/win32/Owned.h"

namespace bxvbwiz {
namespace {

struct FillTreeTest : testing::Test {
  FillTreeTest() {
    nodes.push_back(std::make_unique<TreeNode>());
    TreeNode& forms = nodes.front()->Add("", "Forms", NodeImage::Heading);
    for (int i = 0; i < 99; ++i) {
      TreeNode& form = forms.Add("", "Form", NodeImage::Form);
      for (int file = 0; file < 100; ++file)
        form.Add("", "File", i + file == 0 ? NodeImage::MissingFile : NodeImage::File);
    }
  }
  int Count() const { return static_cast<int>(TreeView_GetCount(window.get())); }

  static constexpr int kAllNodes = 2 + 99 + 9900;
  OwnedWindow window{
      CreateWindowExW(0, WC_TREEVIEWW, L"", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr)};
  TreeNodes nodes;
};

TEST_F(FillTreeTest, LetsEventsRunAtLeastEvery500NodesAndOpensWhatHoldsMissingFiles) {
  int before = 0;
  int most = 0;
  ASSERT_TRUE(FillTree(window.get(), nodes, [&] {
    most = std::max(most, Count() - std::exchange(before, Count()));
    return true;
  }));
  EXPECT_EQ(Count(), kAllNodes);
  EXPECT_LE(std::max(most, Count() - before), 500);

  const HTREEITEM forms = TreeView_GetChild(window.get(), TreeView_GetRoot(window.get()));
  const HTREEITEM incomplete = TreeView_GetChild(window.get(), forms);
  const auto isOpen = [&](HTREEITEM item) {
    return (TreeView_GetItemState(window.get(), item, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
  };
  EXPECT_TRUE(isOpen(incomplete)) << "what is wrong is seen without opening branches";
  EXPECT_FALSE(isOpen(TreeView_GetNextSibling(window.get(), incomplete)));
}

TEST_F(FillTreeTest, StopsWhenTheFormIsGone) {
  EXPECT_FALSE(FillTree(window.get(), nodes, [] { return false; }));
  EXPECT_LT(Count(), 500);
}

}  // namespace
}  // namespace bxvbwiz
