#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "setupgen/TreeNode.h"
#include "text/Text.h"

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

// A tree whose nodes are found by key.
class TreeView : public Control {
 public:
  void Clear() {
    nodes_.clear();
    byKey_.clear();
    ++revision_;
  }
  // Adds a top-level node.
  TreeNode& Add(const std::string& key, const std::string& nodeText, NodeImage image) {
    nodes_.push_back(std::make_unique<TreeNode>());
    TreeNode& node = *nodes_.back();
    node.key = key;
    node.text = nodeText;
    node.image = image;
    if (!key.empty()) byKey_.emplace(key, &node);
    ++revision_;
    return node;
  }
  TreeNode& Add(TreeNode& parent, const std::string& key, const std::string& nodeText, NodeImage image) {
    TreeNode& node = parent.Add(key, nodeText, image);
    ++revision_;
    if (!key.empty()) byKey_.emplace(key, &node);
    return node;
  }
  // Null when no node has the key.
  TreeNode* Find(const std::string& key) const {
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? nullptr : found->second;
  }
  const std::vector<std::unique_ptr<TreeNode>>& Nodes() const { return nodes_; }
  // Another number after each change, so that a view fills its own tree only then.
  unsigned Revision() const { return revision_; }

 private:
  unsigned revision_ = 0;
  std::vector<std::unique_ptr<TreeNode>> nodes_;
  std::unordered_map<std::string, TreeNode*> byKey_;
};

}  // namespace bxvbwiz
