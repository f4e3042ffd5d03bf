#pragma once

#include <functional>
#include <string>
#include <vector>

#include "analysis/Tree.h"
#include "text/Strings.h"

// The controls of the wizard form as plain objects. A view shows them, applies what the user does to them and
// calls their handlers; they have no rules of their own.
namespace bxvbwiz {

constexpr TextId kNoText{};

enum class ControlKind {
  Frame,
  Label,
  Line,
  CommandButton,
  CheckBox,
  OptionButton,
  TextBox,
  ComboBox,
  ProgressBar,
  TreeView,
};

// What a control does when the form is enlarged: it moves with the right or the lower side, or it grows.
constexpr unsigned kMovesRight = 1;
constexpr unsigned kMovesDown = 2;
constexpr unsigned kWidens = 4;
constexpr unsigned kHeightens = 8;

// In dialog units: a quarter of the average width and an eighth of the height of the font's letters.
struct Place {
  int x, y, width, height;
  unsigned whenEnlarged = 0;  // of the above
};

// The rows of a control's text and tool tip; kNoText is none.
struct Texts {
  TextId text = kNoText;
  TextId toolTip = kNoText;
};

struct Control;

// What holds controls: the form or a frame.
struct Container {
  std::vector<Control*> controls;      // in the order in which Tab visits them
  const Control* asControl = nullptr;  // the frame itself; null for the form
};

using Handler = std::function<void()>;

// A control enters itself into its container.
struct Control {
  Control(ControlKind ofKind, Container& holder, const Place& at, Texts texts, Handler whenUsed = {});
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const ControlKind kind;
  const Control* page;    // the frame that it is shown with; null when it is always shown
  const Place place;      // on the form
  const std::string tag;  // "Resource=n;Tooltip=n": string-table numbers of its text and tool tip
  const Handler handler;  // of a click, or of a change of a text; empty when the form ignores it
  std::string text;
  std::string toolTip;
  bool enabled = true;
  bool visible = true;

  // Whether there is anything of it to see.
  bool IsShown() const;
};

// A page of the form, or a box with a title on a page.
struct Frame : Control, Container {
  explicit Frame(Container& form) : Frame(form, {}, {}) {}
  Frame(Container& holder, const Place& at, Texts texts) : Control(ControlKind::Frame, holder, at, texts) {
    asControl = this;
  }
};
struct Label : Control {
  // A path is shown in one line, with "&" as a plain character.
  enum Style { kText, kPath };
  Label(Container& holder, const Place& at, Texts texts, Style ofStyle = kText)
      : Control(ControlKind::Label, holder, at, texts), style(ofStyle) {}
  const Style style;
};
struct Line : Control {
  Line(Container& holder, const Place& at) : Control(ControlKind::Line, holder, at, {}) {}
};
struct CommandButton : Control {
  CommandButton(Container& holder, const Place& at, Texts texts, Handler click)
      : Control(ControlKind::CommandButton, holder, at, texts, std::move(click)) {}
  // A button of the form that is shown with one page.
  CommandButton(Container& form, const Frame& shownWith, const Place& at, Texts texts, Handler click)
      : CommandButton(form, at, texts, std::move(click)) {
    page = &shownWith;
  }
};
struct CheckBox : Control {
  CheckBox(Container& holder, const Place& at, Texts texts)
      : Control(ControlKind::CheckBox, holder, at, texts) {}
  bool checked = false;
};
// Consecutive ones form a group.
struct OptionButton : Control {
  OptionButton(Container& holder, const Place& at, Texts texts, Handler click)
      : Control(ControlKind::OptionButton, holder, at, texts, std::move(click)) {}
  bool checked = false;
};
struct TextBox : Control {
  // Replaces a character that it refuses by 0.
  using KeyPress = std::function<void(char32_t&)>;
  TextBox(Container& holder, const Place& at, Texts texts, Handler change, KeyPress whenTyped = {})
      : Control(ControlKind::TextBox, holder, at, texts, std::move(change)), keyPress(std::move(whenTyped)) {}
  // A box that shows lines and accepts no input.
  TextBox(Container& holder, const Place& at) : TextBox(holder, at, {}, {}) { readOnly = true; }
  const KeyPress keyPress;
  bool readOnly = false;
  std::size_t selectionStart = 0;  // characters
  std::size_t selectionLength = 0;
};
struct ComboBox : Control {
  ComboBox(Container& holder, const Place& at, Texts texts)
      : Control(ControlKind::ComboBox, holder, at, texts) {}
  std::vector<std::string> items;
};
struct ProgressBar : Control {
  ProgressBar(Container& holder, const Place& at) : Control(ControlKind::ProgressBar, holder, at, {}) {}
  int value = 0;
  int maximum = 100;
};

// Shows a tree of an analysis.
class TreeView : public Control {
 public:
  TreeView(Container& holder, const Place& at) : Control(ControlKind::TreeView, holder, at, {}) {}

  // Null for none. While the tree is shown it must live and not change.
  void Show(const Tree* tree) {
    tree_ = tree;
    ++revision_;
  }
  const TreeNodes& Nodes() const {
    static const TreeNodes kNone;
    return tree_ == nullptr ? kNone : tree_->Nodes();
  }
  // A new number after each change, so that a view refills its own tree only then.
  unsigned Revision() const { return revision_; }

 private:
  const Tree* tree_ = nullptr;
  unsigned revision_ = 0;
};

}  // namespace bxvbwiz
