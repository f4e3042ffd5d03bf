#include <cstdlib>

#include "support/basParse.h"
#include "support/basStr.h"
#include "ui/frmMain.h"

// What the form shows before the user does anything.
namespace bxvbwiz {

namespace {

// The text that an item of a control's tag names; false when the tag lacks the item or the item is empty.
bool TextOfTag(const StringTable& strings, const std::string& tag, const char* item, std::string& text) {
  bool found = false;
  const std::optional<std::string> number = GetItem(tag, item, found);
  if (!number.has_value()) return false;
  text = strings.Text(static_cast<TextId>(std::strtoul(number->c_str(), nullptr, 10)));
  return true;
}

void LoadTexts(const StringTable& strings, const Container& holder) {
  for (Control* control : holder.controls) {
    TextOfTag(strings, control->tag, "Resource", control->text);
    TextOfTag(strings, control->tag, "Tooltip", control->toolTip);
    if (control->kind == ControlKind::Frame) LoadTexts(strings, *static_cast<Frame*>(control));
  }
}

// In the order of NodeImage.
constexpr TextId kNodeTips[] = {TextId::ProjectTip,     TextId::HeadingTip,     TextId::FormTip,
                                TextId::ControlTip,     TextId::TypeLibraryTip, TextId::FileTip,
                                TextId::MissingFileTip, TextId::FileGroupTip};

}  // namespace

std::string frmMain::TipOf(const std::string& name, NodeImage image) const {
  return TokenReplace(platform_.strings.Text(kNodeTips[static_cast<std::size_t>(image)]), {name});
}

void frmMain::Form_Load() {
  LoadTexts(platform_.strings, *this);
  font = platform_.strings.Text(TextId::FormFont);
  lblBranding.text = "Borvex";
  lblBranding.enabled = false;  // grey
  cmdNext[kPanelWelcome].enabled = false;
  cmdBack[kPanelWelcome].enabled = false;
  pbrProgress.visible = false;
  optProjectView.checked = true;
  tvwFiles.visible = false;
  global_.ResetProgress(static_cast<std::int16_t>(pbrProgress.maximum));
  for (std::int16_t panel = kPanelWelcome; panel <= kPanelReport; ++panel) HidePanel(panel);
  ShowPanel(kPanelWelcome);
}

void frmMain::Form_Activate() {
  Handle("Form_Activate", [this] {
    InitPanel(kPanelWelcome);
    view_->Refresh();
  });
}

}  // namespace bxvbwiz
