#include <gtest/gtest.h>

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "platform/win32/WideText.h"
#include "TestMachine.h"
#include "ui/win32/FormFont.h"
#include "ui/win32/TreeFill.h"
#include "ui/win32/Win32View.h"
#include "wizard/Application.h"

// The windows from inside their process.
namespace bxvbwiz {
namespace {

// Shows every panel once, then closes the window; called by a timer.
class Visit {
 public:
  explicit Visit(TestMachine& machine)
      : ledger_(std::make_shared<OpenObjects>()),
        component_(machine.platform(), StartMode::Automation, "",
                   [this](frmMain& form) {
                     std::unique_ptr<FormView> made = MakeWin32View(form, GetModuleHandleW(nullptr), ledger_);
                     view_ = made.get();
                     return made;
                   }),
        app_(component_) {}

  void Run() {
    current_ = this;
    const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &OnTimer);
    view_->ShowModal();
    KillTimer(nullptr, timer);
    current_ = nullptr;
  }
  const OpenObjects& Open() const { return *ledger_; }
  int MostOpen() const { return mostOpen_; }
  bool Ended() const { return !app_.StillExecuting(); }

 private:
  static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    if (current_ != nullptr) current_->Step();
  }
  void Step() {
    mostOpen_ = std::max(mostOpen_, ledger_->Total());
    frmMain& form = *component_.Form();
    if (panel_ > kPanelReport) return form.cmdCancel_Click();
    form.HidePanel(static_cast<std::int16_t>(panel_ - 1));
    form.ShowPanel(panel_++);
  }

  static thread_local Visit* current_;
  Ledger ledger_;
  FormView* view_ = nullptr;
  Component component_;
  Application app_;
  std::int16_t panel_ = 0;
  int mostOpen_ = 0;
};

thread_local Visit* Visit::current_ = nullptr;

TEST(Win32View, LeavesNothingOpenAfterHundredOpenings) {
  TestMachine machine;
  machine.InstallProduct();
  for (int opening = 0; opening < 100; ++opening) {
    Visit visit(machine);
    visit.Run();
    ASSERT_TRUE(visit.Ended());
    // The window, its frames, the font and the pictures.
    ASSERT_GE(visit.MostOpen(), 8);
    ASSERT_EQ(visit.Open().Total(), 0) << "after opening " << opening;
  }
}

class FillTreeTest : public testing::Test {
 protected:
  FillTreeTest() : ledger_(std::make_shared<OpenObjects>()) {
    InitCommonControls();
    window_ = OwnedWindow(ledger_, CreateWindowExW(0, WC_TREEVIEWW, L"", WS_POPUP, 0, 0, 100, 100, nullptr,
                                                   nullptr, GetModuleHandleW(nullptr), nullptr));
    TreeNode& root = tree_.Add("", "Root", NodeImage::Project);
    for (int group = 0; group < 99; ++group) {
      TreeNode& parent = tree_.Add(root, "", "Group", NodeImage::FileGroup);
      for (int file = 0; file < 100; ++file) tree_.Add(parent, "", "File", NodeImage::File);
    }
  }
  int Count() const { return static_cast<int>(SendMessageW(window_.Get(), TVM_GETCOUNT, 0, 0)); }

  static constexpr int kAllNodes = 1 + 99 + 9900;
  Ledger ledger_;
  OwnedWindow window_;
  TreeView tree_;
};

TEST_F(FillTreeTest, LetsEventsRunAtLeastEvery500Nodes) {
  int before = 0;
  int most = 0;
  ASSERT_TRUE(FillTree(window_.Get(), tree_, [&] {
    most = std::max(most, Count() - before);
    before = Count();
    return true;
  }));
  EXPECT_EQ(Count(), kAllNodes);
  EXPECT_LE(std::max(most, Count() - before), 500);
}

TEST_F(FillTreeTest, StopsWhenTheFormIsGone) {
  EXPECT_FALSE(FillTree(window_.Get(), tree_, [] { return false; }));
  EXPECT_LT(Count(), 500);
}

// What is wrong is seen without opening branches.
TEST(FillTree, OpensTheBranchesThatHoldMissingFiles) {
  InitCommonControls();
  const Ledger ledger = std::make_shared<OpenObjects>();
  const OwnedWindow window(ledger, CreateWindowExW(0, WC_TREEVIEWW, L"", WS_POPUP, 0, 0, 100, 100, nullptr,
                                                   nullptr, GetModuleHandleW(nullptr), nullptr));
  TreeView tree;
  TreeNode& forms = tree.Add(tree.Add("", "Root", NodeImage::Project), "", "Forms", NodeImage::Heading);
  for (const NodeImage image : {NodeImage::File, NodeImage::MissingFile}) {
    tree.Add(tree.Add(forms, "", "Form", NodeImage::Form), "", "File", image);
  }
  ASSERT_TRUE(FillTree(window.Get(), tree, [] { return true; }));
  const auto next = [&](UINT direction, LRESULT item) {
    return SendMessageW(window.Get(), TVM_GETNEXTITEM, direction, item);
  };
  const LRESULT complete = next(TVGN_CHILD, next(TVGN_CHILD, next(TVGN_ROOT, 0)));
  const LRESULT incomplete = next(TVGN_NEXT, complete);
  const auto isOpen = [&](LRESULT item) {
    return (SendMessageW(window.Get(), TVM_GETITEMSTATE, static_cast<WPARAM>(item), TVIS_EXPANDED) &
            TVIS_EXPANDED) != 0;
  };
  EXPECT_FALSE(isOpen(complete));
  EXPECT_TRUE(isOpen(incomplete));
}

TEST(FormFont, FollowsItsDescription) {
  const Ledger ledger = std::make_shared<OpenObjects>();
  const FormFont small(ledger, "Name=Tahoma;Bold=0;Italic=0;Size=8");
  const FormFont large(ledger, "Name=Tahoma;Bold=1;Italic=1;Size=16");
  LOGFONTW font{};
  GetObjectW(large.Get(), sizeof(font), &font);
  EXPECT_EQ(Narrow(font.lfFaceName), "Tahoma");
  EXPECT_EQ(font.lfWeight, FW_BOLD);
  EXPECT_TRUE(font.lfItalic);
  EXPECT_GT(large.Horizontal(100), small.Horizontal(100) * 3 / 2);
  EXPECT_GT(large.TextWidth("Borvex"), small.TextWidth("Borvex"));
}

}  // namespace
}  // namespace bxvbwiz
