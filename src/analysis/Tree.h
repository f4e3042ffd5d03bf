#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "setupgen/TreeNode.h"

namespace bxvbwiz {

// A tree whose nodes are found by key.
class Tree {
 public:
  // Adds a top-level node.
  TreeNode& Add(const std::string& key, const std::string& text, NodeImage image) {
    nodes_.push_back(std::make_unique<TreeNode>());
    TreeNode& node = *nodes_.back();
    node.key = key;
    node.text = text;
    node.image = image;
    return Known(node);
  }
  TreeNode& Add(TreeNode& parent, const std::string& key, const std::string& text, NodeImage image) {
    return Known(parent.Add(key, text, image));
  }
  // Null when no node has the key.
  TreeNode* Find(const std::string& key) const {
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? nullptr : found->second;
  }
  const TreeNodes& Nodes() const { return nodes_; }

 private:
  TreeNode& Known(TreeNode& node) {
    if (!node.key.empty()) byKey_.emplace(node.key, &node);
    return node;
  }

  TreeNodes nodes_;
  std::unordered_map<std::string, TreeNode*> byKey_;
};

}  // namespace bxvbwiz
