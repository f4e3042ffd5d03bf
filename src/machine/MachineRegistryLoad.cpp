#include <algorithm>
#include <cstring>
#include <vector>

#include "machine/MachineRegistryTree.h"
#include "machine/RegText.h"

namespace bxvbwiz {
namespace {

using Node = RegistryTree::Node;

// How many bytes both texts begin with in common.
std::size_t CommonLength(std::string_view left, std::string_view right) {
  constexpr std::size_t kStep = 8;
  const std::size_t most = std::min(left.size(), right.size());
  std::size_t length = 0;
  while (length + kStep <= most && std::memcmp(left.data() + length, right.data() + length, kStep) == 0) {
    length += kStep;
  }
  while (length < most && left[length] == right[length]) ++length;
  return length;
}

// Finds the key of each heading. Exports list keys depth first, so that a heading shares most of its path
// with the heading before it; what both share is not looked up again.
class HeadingReader {
 public:
  explicit HeadingReader(RegistryTree& tree) : tree_(tree) {}

  // The key of "HKEY_...\path", made when it is missing; kNone when the predefined key is unknown.
  Node Enter(std::string_view path) {
    const std::size_t common = CommonLength(path, last_);
    while (!known_.empty() && !EndsAt(path, known_.back().end, common)) known_.pop_back();
    last_ = path;
    Node node = known_.empty() ? RegistryTree::kNone : known_.back().node;
    std::size_t position = known_.empty() ? 0 : known_.back().end + 1;
    while (position < path.size()) {
      const std::size_t end = std::min(path.find('\\', position), path.size());
      const std::string_view name = path.substr(position, end - position);
      position = end + 1;
      if (node == RegistryTree::kNone) {
        node = tree_.Root(name);
        if (node == RegistryTree::kNone) return node;
      } else if (!name.empty()) {
        node = tree_.Add(node, name);
      }
      known_.push_back({end, node});
    }
    return node;
  }

  // Removes the key of "HKEY_...\path" and all below it. A predefined key stays.
  void Delete(std::string_view path) {
    Node node = tree_.Root(NextKeyName(path));
    while (node != RegistryTree::kNone && !path.empty()) {
      if (const std::string_view name = NextKeyName(path); !name.empty()) node = tree_.Find(node, name);
    }
    if (node == RegistryTree::kNone) return;
    tree_.Remove(node);
    known_.clear();
  }

 private:
  struct Known {
    std::size_t end;  // of the name in the path
    Node node;
  };

  static bool EndsAt(std::string_view path, std::size_t end, std::size_t common) {
    return end <= common && (end == path.size() || path[end] == '\\');
  }

  RegistryTree& tree_;
  std::string_view last_;
  std::vector<Known> known_;  // the keys along `last_`
};

// The path between "[" and the last "]" of the line, without backslashes at its end; empty when the line is
// not a heading, as with a blank after "[".
std::string_view HeadingPath(std::string_view line) {
  const std::size_t close = line.rfind(']');
  if (close == std::string_view::npos || line[1] == ' ' || line[1] == '\t') return {};
  const std::string_view path = line.substr(1, close - 1);
  if (path.find('\0') != std::string_view::npos) return {};  // no call can name such a key
  return path.substr(0, path.find_last_not_of('\\') + 1);
}

class Loader {
 public:
  Loader(std::string_view text, RegistryTree& tree)
      : start_(text.data()),
        end_(text.data() + text.size()),
        tree_(tree),
        headings_(tree),
        counted_(text.data()) {}

  RegLoadResult Load(const char* position) {
    while (position != end_) {
      const char* const line = position;
      position = SkipRegBlanks(position, end_);
      if (position == end_) break;
      switch (*position) {
        case '"':
        case '@':
          position = Value(position);
          break;
        case '[':
          position = Heading(line, position);
          break;
        case '\r':
        case '\n':
        case ';':
        case '#':
          position = NextRegLine(position, end_);
          break;
        default:
          Skip(position);
          position = NextRegLine(position, end_);
      }
    }
    CloseBlock(end_);
    return result_;
  }

 private:
  const char* Value(const char* position) {
    ScannedValue value;
    const char* const begin = position;
    position = ScanRegValue(position, end_, value);
    const bool kept = block_.node != RegistryTree::kNone && value.form != ScannedValue::Form::Unreadable;
    if (!kept) Skip(begin);
    if (kept && value.continues) result_.openEnd = block_.node;
    return position;
  }

  const char* Heading(const char* line, const char* bracket) {
    CloseBlock(line);
    const char* const next = NextRegLine(bracket, end_);
    const std::string_view path = HeadingPath({bracket, static_cast<std::size_t>(next - bracket)});
    heading_ = path;
    if (path.empty()) return next;
    if (path.front() == '-') {
      headings_.Delete(path.substr(1));
      result_.hasDeletions = true;
    } else {
      block_ = {Position(line), Position(next), 0, headings_.Enter(path), RegistryTree::kNone};
    }
    return next;
  }

  void Skip(const char* position) {
    constexpr std::size_t kMostNamed = 20;  // of a spoiled file each line may be one
    if (++result_.skipped > kMostNamed) return;
    line_ += static_cast<std::size_t>(std::count(counted_, position, '\n'));
    counted_ = position;
    result_.skippedValues.push_back({std::string(heading_), line_});
  }

  void CloseBlock(const char* position) {
    if (block_.node == RegistryTree::kNone) return;
    block_.end = Position(position);
    tree_.AddBlock(block_);
    block_.node = RegistryTree::kNone;
  }

  std::uint32_t Position(const char* position) const { return static_cast<std::uint32_t>(position - start_); }

  const char* start_;
  const char* end_;
  RegistryTree& tree_;
  HeadingReader headings_;
  std::string_view heading_;  // the path of the last one
  const char* counted_;       // its line is `line_`
  std::size_t line_ = 1;
  RegistryTree::Block block_{0, 0, 0, RegistryTree::kNone, RegistryTree::kNone};
  RegLoadResult result_;
};

}  // namespace

RegLoadResult LoadRegHeadings(std::string_view text, std::size_t body, RegistryTree& tree) {
  return Loader(text, tree).Load(text.data() + body);
}

}  // namespace bxvbwiz
