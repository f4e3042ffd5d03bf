#include "support/basFile.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "support/CallStack.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

// The root's size and where the rest begins, in bytes; both 0 without a root.
struct RootSplit {
  std::size_t size = 0;
  std::size_t rest = 0;
};

// "C:\", and for a path that only names the drive ("C:x.dll") "C:". The separator may be a "/" here, so that
// a name never begins with one.
RootSplit SplitDrive(std::string_view path, std::size_t drive) {
  const bool separated = path.size() > drive + 2 && (path[drive + 2] == '\\' || path[drive + 2] == '/');
  const std::size_t size = drive + (separated ? 3 : 2);
  return {size, size};
}

RootSplit SplitRoot(std::string_view path) {
  if (path.size() < 3) return {};
  if (path[1] == ':') return SplitDrive(path, 0);
  if (!StartsWith(path, "\\\\")) return {};
  std::size_t server = 2;
  if (StartsWith(path, "\\\\?\\")) {
    if (path.size() > 5 && path[5] == ':') return SplitDrive(path, 4);
    if (EqualsIgnoreCase(path.substr(4, 4), "UNC\\")) server = 8;
  }
  const std::size_t share = path.find('\\', server);
  const std::size_t end = share == kNone ? kNone : path.find('\\', share + 1);
  if (end == kNone) return {path.size(), path.size()};
  return {end, end + 1};
}

// The root as written in front of the rest: a network root lacks the backslash.
std::string RootBeforeRest(std::string_view root) {
  std::string text(root);
  if (StartsWith(root, "\\\\") && !EndsWith(root, "\\")) text += '\\';
  return text;
}

// Without the prefix that switches the system's own normalising off.
std::string WithoutLongPathPrefix(const std::string& path) {
  constexpr std::string_view kPrefix = "\\\\?\\";
  constexpr std::string_view kNetworkPrefix = "\\\\?\\UNC\\";
  if (EqualsIgnoreCase(std::string_view(path).substr(0, kNetworkPrefix.size()), kNetworkPrefix)) {
    return "\\\\" + path.substr(kNetworkPrefix.size());
  }
  return StartsWith(path, kPrefix) ? path.substr(kPrefix.size()) : path;
}

// The name by which a listing shows `path`, which may end in a short name; its own when there is none.
std::string ListedName(FileSystem& files, const std::string& path, const std::string& name) {
  std::vector<FoundFile> found;
  const bool isShort = name.find('~') != kNone;
  return isShort && files.Find(path, found) == SystemError::Success && !found.empty() ? found.front().name
                                                                                      : name;
}

}  // namespace

std::string FixPath(std::string_view path) {
  const CallStackEntry entry("FixPath");
  std::string fixed;
  fixed.reserve(path.size() + 1);
  fixed = path;
  if (!EndsWith(path, "\\")) fixed += '\\';
  return fixed;
}

std::string StripAtNull(std::string_view text) {
  return std::string(text.substr(0, text.find('\0')));
}

std::string SplitPathRoot(std::string_view path, std::int16_t& position) {
  const RootSplit split = SplitRoot(path);
  constexpr std::size_t kFarthest = std::numeric_limits<std::int16_t>::max();
  const std::size_t before = CharacterCount(path.substr(0, split.rest));
  position = split.size == 0 ? std::int16_t{0} : static_cast<std::int16_t>(std::min(before + 1, kFarthest));
  return std::string(path.substr(0, split.size));
}

std::vector<std::string> SplitPathComponents(std::string_view rest) {
  std::vector<std::string> components;
  if (rest.empty()) return components;
  for (std::size_t start = 0;;) {
    const std::size_t end = rest.find('\\', start);
    components.emplace_back(rest.substr(start, end == kNone ? kNone : end - start));
    if (end == kNone) return components;
    start = end + 1;
  }
}

std::string ParsePath(std::string_view path, PathPart part) {
  const RootSplit split = SplitRoot(path);
  const std::string_view root = path.substr(0, split.size);
  const std::string_view rest = path.substr(split.rest);
  const std::size_t last = rest.rfind('\\');
  const std::string_view fileName = last == kNone ? rest : rest.substr(last + 1);
  switch (part) {
    case PathPart::Folder:
      if (last == kNone) return std::string(root);
      return RootBeforeRest(root).append(rest.substr(0, last));
    case PathPart::FileName:
      return std::string(fileName);
    case PathPart::Title:
      return std::string(fileName.substr(0, fileName.rfind('.')));
    case PathPart::Root:
      return std::string(root);
  }
  return {};
}

std::string GetPathFolder(std::string_view path) {
  return ParsePath(path, PathPart::Folder);
}

std::string GetPathFileName(std::string_view path) {
  return ParsePath(path, PathPart::FileName);
}

std::string StripTrailingBackslash(std::string_view path) {
  if (EndsWith(path, "\\")) path.remove_suffix(1);
  return std::string(path);
}

bool HasExtension(std::string_view path, std::initializer_list<std::string_view> extensions) {
  const std::string upper = UpperCase(path);
  return std::any_of(extensions.begin(), extensions.end(),
                     [&](std::string_view extension) { return EndsWith(upper, extension); });
}

bool IsAbsolutePath(std::string_view path) {
  const bool beginsWithLetter =
      !path.empty() && ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
  if (beginsWithLetter && path.find(':') == 1) return true;
  return StartsWith(path, "\\\\") && path.find("\\\\\\") == std::string_view::npos;
}

std::string NormalPath(FileSystem& files, const std::string& path) {
  const std::string plain = WithoutLongPathPrefix(path);
  std::string full;
  if (!IsAbsolutePath(plain) || files.FullPath(plain, full) != SystemError::Success) return path;
  if (full.find('~') == kNone) return full;
  const RootSplit split = SplitRoot(full);
  std::string normal = RootBeforeRest(std::string_view(full).substr(0, split.size));
  const char* separator = "";
  for (const std::string& name : SplitPathComponents(std::string_view(full).substr(split.rest))) {
    normal += separator;
    normal += ListedName(files, normal + name, name);
    separator = "\\";
  }
  return normal;
}

std::string CompactPathForLabel(const LabelMetrics& label, const std::string& path) {
  constexpr double kUsableShare = 0.95;
  const int available = static_cast<int>(std::nearbyint(label.Width() * kUsableShare));
  if (available >= label.TextWidth(path)) return path;

  const RootSplit split = SplitRoot(path);
  const std::string root = RootBeforeRest(std::string_view(path).substr(0, split.size));
  const std::vector<std::string> components = SplitPathComponents(std::string_view(path).substr(split.rest));
  std::string fitting;
  std::string tail;
  for (std::size_t index = components.size(); index-- > 0;) {
    if (index + 1 < components.size()) tail.insert(0, "\\");
    tail.insert(0, components[index]);
    std::string candidate = root;
    candidate.append(index > 0 ? "...\\" : "").append(tail);
    if (label.TextWidth(candidate) > available) break;
    fitting = std::move(candidate);
  }
  return fitting;
}

std::string Dir(FileSystem& files, const std::string& pattern, bool directories) {
  // Dir$ lists a folder that is named with its backslash.
  const std::string searched = EndsWith(pattern, "\\") ? pattern + "*.*" : pattern;
  std::vector<FoundFile> found;
  if (files.Find(searched, found) != SystemError::Success) return {};
  const std::uint32_t leftOut = kAttributeHidden | kAttributeSystem | (directories ? 0 : kAttributeDirectory);
  for (const FoundFile& entry : found) {
    if ((entry.attributes & leftOut) == 0) return entry.name;
  }
  return {};
}

bool FolderHoldsFile(FileSystem& files, const std::string& folder, const std::string& name) {
  return !name.empty() && EqualsIgnoreCase(Dir(files, folder + name), name);
}

int CountLineEnds(std::string_view bytes) {
  int count = 0;
  for (std::size_t at = 0; (at = bytes.find_first_of("\r\n", at)) != kNone; ++at) {
    if (StartsWith(bytes.substr(at), "\r\n")) ++at;
    ++count;
  }
  return count;
}

bool LineReader::Next(std::string_view& line) {
  if (rest_.empty()) return false;
  ++number_;
  const std::size_t end = rest_.find_first_of("\r\n");
  line = rest_.substr(0, end);
  if (end == kNone) {
    rest_ = {};
  } else {
    rest_.remove_prefix(end + (StartsWith(rest_.substr(end), "\r\n") ? 2 : 1));
  }
  return true;
}

}  // namespace bxvbwiz
