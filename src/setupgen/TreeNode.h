#pragma once

#include <memory>
#include <string>
#include <vector>

namespace bxvbwiz {

// The picture of a tree node.
enum class NodeImage { Project, Heading, Form, Control, TypeLibrary, File, MissingFile, FileGroup };

struct TreeNode;
using TreeNodes = std::vector<std::unique_ptr<TreeNode>>;

// One node of a dependency tree.
struct TreeNode {
  std::string key;  // empty for a node that is not looked up
  std::string text;
  NodeImage image = NodeImage::File;
  TreeNodes children;

  TreeNode& Add(std::string childKey, std::string childText, NodeImage childImage) {
    children.push_back(std::make_unique<TreeNode>());
    TreeNode& child = *children.back();
    child.key = std::move(childKey);
    child.text = std::move(childText);
    child.image = childImage;
    return child;
  }
};

}  // namespace bxvbwiz
