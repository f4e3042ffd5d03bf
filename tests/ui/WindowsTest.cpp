#include <gtest/gtest.h>

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "text/Strings.h"
#include "text/win32/WideText.h"
#include "ui/win32/ControlIds.h"
#include "ui/win32/FormFont.h"
#include "ui/win32/TreeFill.h"
#include "ui/win32/Win32View.h"
#include "wizard/WizardFixture.h"

// The windows from inside their process.
namespace bxvbwiz {
namespace {

// A timer's procedure knows no object.
thread_local std::function<void()> onTimer;

void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
  onTimer();
}

class Win32ViewTest : public WizardTest {
 protected:
  std::unique_ptr<FormView> MakeView(frmMain& form) override {
    return MakeWin32View(form, GetModuleHandleW(nullptr), ledger_);
  }
  // Shows the wizard that was started, and calls `step` again and again until that has ended it.
  void Show(const std::function<void(frmMain&)>& step) {
    onTimer = [&] { step(Form()); };
    const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &OnTimer);
    app_->Run();
    KillTimer(nullptr, timer);
    EXPECT_FALSE(app_->StillExecuting());
  }

  Ledger ledger_ = std::make_shared<OpenObjects>();
};

TEST_F(Win32ViewTest, LeavesNothingOpenAfterHundredOpenings) {
  for (int opening = 0; opening < 100; ++opening) {
    int mostOpen = 0;
    std::int16_t panel = 0;
    Start();
    Show([&](frmMain& form) {
      mostOpen = std::max(mostOpen, ledger_->Total());
      if (panel > kPanelReport) return form.cmdCancel_Click();
      form.HidePanel(static_cast<std::int16_t>(panel - 1));
      form.ShowPanel(panel++);
    });
    TearDown();
    ASSERT_GE(mostOpen, 8) << "the window, its frames, the font and the pictures";
    ASSERT_EQ(ledger_->Total(), 0) << "after opening " << opening;
  }
}

TEST_F(Win32ViewTest, IsOwnedByTheHostsWindowWhichTakesInputAgain) {
  const OwnedWindow host(ledger_, CreateWindowExW(0, L"#32770", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0,
                                                  0, 600, 400, nullptr, nullptr, nullptr, nullptr));
  SetActiveWindow(host.Get());
  Start();
  Show([&](frmMain& form) {
    EXPECT_EQ(GetWindow(GetActiveWindow(), GW_OWNER), host.Get());
    EXPECT_FALSE(IsWindowEnabled(host.Get()));
    form.cmdCancel_Click();
  });
  EXPECT_TRUE(IsWindowEnabled(host.Get()));
  EXPECT_EQ(GetActiveWindow(), host.Get());
}

std::string ToolTip(HWND form, HWND control) {
  HWND tips = nullptr;
  do {
    tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr);
  } while (tips != nullptr && GetWindow(tips, GW_OWNER) != form);
  wchar_t text[1024] = {};  // longer than any tip
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.hwnd = form;
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  tool.lpszText = text;
  SendMessageW(tips, TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(&tool));
  return Narrow(text);
}

// They are made when the mouse comes over the form.
TEST_F(Win32ViewTest, ExplainsItsControlsInToolTips) {
  Start();
  LeaveWelcome();
  Show([&](frmMain& form) {
    form.ShowPanel(kPanelWelcome);
    const HWND window = GetActiveWindow();
    const HWND welcome = GetDlgItem(window, kIdFrame + kPanelWelcome);
    const HWND information = GetDlgItem(window, kIdFrame + kPanelInformation);
    SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), HTCLIENT);
    for (const auto& [id, text] : {std::pair(int{kIdProjectFile}, TextId::ProjectFileTip),
                                   {kIdBrowse, TextId::BrowseTip},
                                   {kIdRebuild, TextId::RebuildTip},
                                   {kIdApplicationName, TextId::ApplicationNameTip},
                                   {kIdCompanyName, TextId::CompanyNameTip},
                                   {kIdApplicationType, TextId::ApplicationTypeTip},
                                   {kIdApplicationVersion, TextId::ApplicationVersionTip}}) {
      const HWND control = GetDlgItem(id < kIdInformationText ? welcome : information, id);
      const std::string tip = CompiledText(text);
      EXPECT_EQ(ToolTip(window, control), tip) << id;
      if (id != kIdApplicationType) continue;
      EXPECT_EQ(ToolTip(window, GetWindow(control, GW_CHILD)), tip) << "its text box";
    }
    EXPECT_EQ(ToolTip(window, GetDlgItem(information, kIdExeName)), "C:\\Src\\Release\\Final\\App.exe");
    EXPECT_EQ(ToolTip(window, GetDlgItem(window, kIdCancel)), "");
    form.cmdCancel_Click();
  });
}

class FillTreeTest : public testing::Test {
 protected:
  FillTreeTest() {
    InitCommonControls();
    window_ = OwnedWindow(std::make_shared<OpenObjects>(),
                          CreateWindowExW(0, WC_TREEVIEWW, L"", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr,
                                          GetModuleHandleW(nullptr), nullptr));
    TreeNode& forms = tree_.Add(tree_.Add("", "Root", NodeImage::Project), "", "Forms", NodeImage::Heading);
    for (int i = 0; i < 99; ++i) {
      TreeNode& form = tree_.Add(forms, "", "Form", NodeImage::Form);
      for (int file = 0; file < 100; ++file) tree_.Add(form, "", "File", NodeImage::File);
      if (i == 0) tree_.Add(form, "", "Gone", NodeImage::MissingFile);
    }
  }
  int Count() const { return static_cast<int>(TreeView_GetCount(window_.Get())); }
  bool IsOpen(HTREEITEM item) const {
    return (TreeView_GetItemState(window_.Get(), item, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
  }

  static constexpr int kAllNodes = 2 + 99 + 9900 + 1;
  OwnedWindow window_;
  TreeView tree_;
};

TEST_F(FillTreeTest, LetsEventsRunAtLeastEvery500NodesAndOpensWhatHoldsMissingFiles) {
  int before = 0;
  int most = 0;
  ASSERT_TRUE(FillTree(window_.Get(), tree_, [&] {
    most = std::max(most, Count() - std::exchange(before, Count()));
    return true;
  }));
  EXPECT_EQ(Count(), kAllNodes);
  EXPECT_LE(std::max(most, Count() - before), 500);

  const HTREEITEM forms = TreeView_GetChild(window_.Get(), TreeView_GetRoot(window_.Get()));
  const HTREEITEM incomplete = TreeView_GetChild(window_.Get(), forms);
  EXPECT_TRUE(IsOpen(incomplete)) << "what is wrong is seen without opening branches";
  EXPECT_FALSE(IsOpen(TreeView_GetNextSibling(window_.Get(), incomplete)));
  wchar_t text[100] = {};
  TVITEMW item{TVIF_TEXT | TVIF_IMAGE, incomplete, 0, 0, text, 100, 0, 0, 0, 0};
  SendMessageW(window_.Get(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  EXPECT_STREQ(text, L"Form");
  EXPECT_EQ(item.iImage, static_cast<int>(NodeImage::Form));
}

TEST_F(FillTreeTest, StopsWhenTheFormIsGone) {
  EXPECT_FALSE(FillTree(window_.Get(), tree_, [] { return false; }));
  EXPECT_LT(Count(), 500);
}

TEST(FormFont, FollowsItsDescription) {
  const Ledger ledger = std::make_shared<OpenObjects>();
  const FormFont small(ledger, "Name=Tahoma;Bold=0;Italic=0;Size=8");
  const FormFont large(ledger, "Name=Tahoma;Bold=1;Italic=0;Size=16");
  LOGFONTW font{};
  GetObjectW(large.Get(), sizeof(font), &font);
  EXPECT_EQ(Narrow(font.lfFaceName), "Tahoma");
  EXPECT_EQ(font.lfWeight, FW_BOLD);
  EXPECT_GT(large.TextWidth("Borvex"), small.TextWidth("Borvex") * 3 / 2);
}

}  // namespace
}  // namespace bxvbwiz
