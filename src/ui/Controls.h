#pragma once

#include <string>
#include <vector>

#include "analysis/Tree.h"

// The controls of the wizard form as plain objects. A view shows them and changes them as the user does; they
// hold no rules.
namespace bxvbwiz {

struct Control {
  std::string tag;  // "Resource=n;Tooltip=n": string-table numbers of its text and tool tip
  std::string text;
  std::string toolTip;
  bool enabled = true;
  bool visible = true;
};

struct Label : Control {};
struct Frame : Control {};
struct CommandButton : Control {};
struct CheckBox : Control {
  bool checked = false;
};
struct OptionButton : Control {
  bool checked = false;
};
struct TextBox : Control {
  std::size_t selectionStart = 0;  // characters
  std::size_t selectionLength = 0;
};
struct ComboBox : Control {
  std::vector<std::string> items;
};
struct ProgressBar : Control {
  int value = 0;
  int maximum = 100;
};

// Shows a tree of an analysis.
class TreeView : public Control {
 public:
  // Null for none; the tree must live while it is shown, and not change.
  void Show(const Tree* tree) {
    tree_ = tree;
    ++revision_;
  }
  const TreeNodes& Nodes() const {
    static const TreeNodes kNone;
    return tree_ == nullptr ? kNone : tree_->Nodes();
  }
  // Another number after each change, so that a view fills its own tree only then.
  unsigned Revision() const { return revision_; }

 private:
  const Tree* tree_ = nullptr;
  unsigned revision_ = 0;
};

}  // namespace bxvbwiz
