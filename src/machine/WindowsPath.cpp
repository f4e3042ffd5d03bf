#include "machine/WindowsPath.h"

#include <algorithm>
#include <iterator>

#include "text/DeviceNames.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kMaximumPath = 260;       // MAX_PATH of minwindef.h: a path has fewer characters
constexpr std::size_t kMaximumLongPath = 4096;  // after "\\\\?\\"; no host takes a longer one
constexpr std::size_t kMaximumName = 255;       // of NTFS
constexpr std::string_view kLongPathPrefix = "\\\\?\\";
constexpr std::string_view kLongNetworkPrefix = "UNC\\";  // after kLongPathPrefix
constexpr std::string_view kNetworkPrefix = "\\\\";

bool IsDriveLetter(char character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool BeginsWithDrive(std::string_view path) {
  return path.size() >= 2 && IsDriveLetter(path[0]) && path[1] == ':';
}

// The size of a full path's root with its backslash, "C:\\" or "\\\\server\\share\\"; all of a network path
// that has no such root.
std::size_t RootSize(std::string_view full) {
  constexpr std::size_t kDriveRoot = 3;
  if (!StartsWith(full, kNetworkPrefix)) return kDriveRoot;
  const std::size_t share = full.find('\\', kNetworkPrefix.size());
  const std::size_t rest = share == std::string_view::npos ? share : full.find('\\', share + 1);
  return rest == std::string_view::npos ? full.size() : rest + 1;
}

// Gives the root of a network path the backslash at its end. False when the path names no share.
bool CompleteShare(std::string& path) {
  const std::size_t share = path.find('\\', kNetworkPrefix.size());
  const std::string_view server = std::string_view(path).substr(0, share).substr(kNetworkPrefix.size());
  if (share == std::string::npos || server.empty() || server == "." || server == "?") return false;
  if (RootSize(path) == path.size() && path.back() != '\\') path += '\\';
  return RootSize(path) > share + 2;
}

// Resolves ".", ".." and repeated backslashes after the root, which is the first `root` characters.
std::string Collapse(std::string_view path, std::size_t root) {
  std::string result;
  result.reserve(path.size());
  result = path.substr(0, root);
  for (std::size_t position = root; position < path.size();) {
    const std::size_t end = std::min(path.find('\\', position), path.size());
    std::string_view name = path.substr(position, end - position);
    const bool last = end == path.size();
    position = end + 1;
    if (name.empty() || name == ".") continue;
    if (name == "..") {
      if (result.size() > root) result.resize(std::max(result.rfind('\\', result.size() - 2) + 1, root));
      continue;
    }
    // The system takes one dot from the end of a folder's name, all dots and blanks from the end of the path.
    if (last) {
      name = name.substr(0, name.find_last_not_of(" .") + 1);
    } else if (name.back() == '.') {
      name.remove_suffix(1);
    }
    result += name;
    if (!last) result += '\\';
  }
  const bool endsWithBackslash = result.size() > root && result.back() == '\\';
  if (endsWithBackslash && path.back() != '\\') result.pop_back();  // "C:\\a\\b\\.." is "C:\\a"
  return result;
}

bool IsInvalidCharacter(char character, bool wildcards) {
  if (static_cast<unsigned char>(character) < 0x20) return true;
  if (character == '*' || character == '?') return !wildcards;
  return std::string_view("<>:\"|").find(character) != std::string_view::npos;
}

SystemError CheckNames(std::string_view names, bool wildcardsInLast) {
  while (!names.empty()) {
    const std::size_t end = std::min(names.find('\\'), names.size());
    const std::string_view name = names.substr(0, end);
    const bool wildcards = wildcardsInLast && end == names.size();
    for (const char character : name) {
      if (IsInvalidCharacter(character, wildcards)) return SystemError::InvalidName;
    }
    if (name == "." || name == "..") return SystemError::InvalidName;  // only after "\\?\"
    if (name.size() > kMaximumName && Utf16Length(name) > kMaximumName) return SystemError::InvalidName;
    names.remove_prefix(std::min(end + 1, names.size()));
  }
  return SystemError::Success;
}

}  // namespace

std::string FullWindowsPath(std::string_view path, std::string_view current) {
  if (StartsWith(path, kLongPathPrefix)) {
    const std::string_view rest = path.substr(kLongPathPrefix.size());
    const bool hasRoot = BeginsWithDrive(rest) && rest.substr(2, 1) == "\\";
    return hasRoot ? std::string(kLongPathPrefix).append(FullWindowsPath(rest, current)) : std::string(path);
  }
  std::string text(path);
  std::replace(text.begin(), text.end(), '/', '\\');
  if (StartsWith(text, kNetworkPrefix)) return Collapse(text, RootSize(text));
  if (BeginsWithDrive(text)) {
    if (text.size() > 2 && text[2] == '\\') return Collapse(text, 3);
    // Relative to the drive's own directory: the current one, or the root of another drive.
    const bool sameDrive = EqualsIgnoreCase(text.substr(0, 2), current.substr(0, 2));
    const std::string base = sameDrive ? std::string(current) : text.substr(0, 2);
    return Collapse(base + "\\" + text.substr(2), 3);
  }
  const std::size_t root = RootSize(current);
  if (text[0] == '\\') return Collapse(std::string(current.substr(0, root)) + text, root);
  return Collapse(std::string(current) + "\\" + text, root);
}

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (path.back() != '\\') path += '\\';
  return path.append(name);
}

std::size_t Utf16Length(std::string_view text) {
  std::size_t length = 0;
  for (std::size_t position = 0; position < text.size();) {
    length += NextCharacter(text, position) > 0xFFFF ? 2 : 1;
  }
  return length;
}

bool IsPossibleName(std::string_view name) {
  if (name.empty() || name.back() == '.' || name.back() == ' ') return false;
  return std::none_of(name.begin(), name.end(), [](char character) {
    return character == '\\' || character == '/' || IsInvalidCharacter(character, false);
  });
}

bool IsDeviceName(std::string_view name) {
  constexpr std::string_view kRaisedDigits[] = {"\u00B9", "\u00B2", "\u00B3"};  // count as digits too
  // Called for every path; the first letter settles nearly all names.
  if (name.empty() || std::string_view("CPANLcpanl").find(name.front()) == std::string_view::npos)
    return false;
  const std::string_view stem = DeviceStem(name);
  if (IsDevice(stem)) return true;
  const std::string_view kind = stem.substr(0, 3);
  return (EqualsIgnoreCase(kind, "COM") || EqualsIgnoreCase(kind, "LPT")) &&
         std::find(std::begin(kRaisedDigits), std::end(kRaisedDigits), stem.substr(kind.size())) !=
             std::end(kRaisedDigits);
}

bool MatchesPattern(std::string_view name, std::string_view pattern) {
  const auto matches = [pattern](std::string_view text) {
    constexpr std::size_t kNone = std::string_view::npos;
    std::size_t i = 0;
    std::size_t j = 0;
    std::size_t star = kNone;  // where to go on when the text after the last "*" does not match
    std::size_t retry = 0;
    while (i < text.size()) {
      std::size_t next = i;
      const char32_t character = NextCharacter(text, next);
      if (j < pattern.size() && pattern[j] == '*') {
        star = ++j;
        retry = i;
        continue;
      }
      std::size_t nextInPattern = j;
      if (j < pattern.size() && (pattern[j] == '?' || NextCharacter(pattern, nextInPattern) == character)) {
        j = pattern[j] == '?' ? j + 1 : nextInPattern;
        i = next;
        continue;
      }
      if (star == kNone) return false;
      NextCharacter(text, retry);
      i = retry;
      j = star;
    }
    return pattern.find_first_not_of('*', j) == kNone;
  };
  if (matches(name)) return true;
  return name.find('.') == std::string_view::npos && matches(std::string(name) + '.');
}

SystemError WindowsPath::Parse(std::string_view path, std::string_view current, Wildcards wildcards,
                               WindowsPath& parsed) {
  if (path.empty()) return SystemError::PathNotFound;
  if (path.size() > kMaximumLongPath * 4) return SystemError::FilenameTooLong;
  if (path.find('\0') != std::string_view::npos) return SystemError::InvalidName;
  // After "\\?\" a path is taken as it stands.
  const bool isLong = StartsWith(path, kLongPathPrefix);
  parsed.text_ = isLong ? std::string(path.substr(kLongPathPrefix.size())) : FullWindowsPath(path, current);
  if (isLong && EqualsIgnoreCase(std::string_view(parsed.text_).substr(0, kLongNetworkPrefix.size()),
                                 kLongNetworkPrefix))
    parsed.text_.replace(0, kLongNetworkPrefix.size(), kNetworkPrefix);
  const bool isNetwork = StartsWith(parsed.text_, kNetworkPrefix);
  if (isNetwork ? !CompleteShare(parsed.text_) : !BeginsWithDrive(parsed.text_))
    return SystemError::PathNotFound;
  if (parsed.text_.size() == 2) parsed.text_ += '\\';
  if (parsed.text_[2] != '\\' && !isNetwork) return SystemError::InvalidName;
  const std::size_t root = RootSize(parsed.text_);
  parsed.endsWithBackslash_ = parsed.text_.size() > root && parsed.text_.back() == '\\';
  if (parsed.endsWithBackslash_) parsed.text_.pop_back();

  // The names of a server and a share are limited as those of files are.
  const std::string_view names =
      std::string_view(parsed.text_).substr(isNetwork ? kNetworkPrefix.size() : root);
  if (names.find('/') != std::string_view::npos) return SystemError::InvalidName;  // only after "\\?\"
  if (isLong && names.find("\\\\") != std::string_view::npos) return SystemError::InvalidName;
  const SystemError error = CheckNames(names, wildcards == Wildcards::InName);
  if (error != SystemError::Success) return error;
  const std::size_t limit = isLong ? kMaximumLongPath : kMaximumPath;
  if (parsed.text_.size() >= limit && Utf16Length(parsed.text_) >= limit) {
    return SystemError::FilenameTooLong;
  }
  parsed.key_ = UpperCase(parsed.text_);
  parsed.rootSize_ = RootSize(parsed.key_) - 1;
  if (parsed.key_.size() == parsed.rootSize_ + 1) parsed.key_.pop_back();
  return SystemError::Success;
}

bool WindowsPath::CanHold(std::string_view name) const {
  const std::size_t length = Utf16Length(name);
  const std::size_t folder = Utf16Length(text_) + (IsRoot() ? 0 : 1);
  return IsPossibleName(name) && !IsDeviceName(name) && length <= kMaximumName &&
         folder + length < kMaximumPath;
}

WindowsPath WindowsPath::Parent() const {
  WindowsPath parent;
  parent.rootSize_ = rootSize_;
  parent.key_ = key_.substr(0, key_.rfind('\\'));
  parent.text_ = text_.substr(0, text_.rfind('\\') + (parent.IsRoot() ? 1 : 0));
  return parent;
}

}  // namespace bxvbwiz
