#pragma once

#include <string>
#include <string_view>

#include "platform/SystemError.h"

namespace bxvbwiz {

// The text that GetFullPathNameA gives for `path`, which must not be empty: with "\" for "/", with "." and
// ".." resolved, without blanks and dots at the end. `current` is the current directory, a full path. A
// network path or "\\?\" path stays one.
std::string FullWindowsPath(std::string_view path, std::string_view current);

// The path of a name in a folder.
std::string JoinPath(std::string_view folder, std::string_view name);

// The length in UTF-16 units, which is what the system's limits count.
std::size_t Utf16Length(std::string_view text);

// True when Windows allows the name; this computer may allow others.
bool IsPossibleName(std::string_view name);

// True when Windows takes the name for a device, whatever its folder and extension are.
bool IsDeviceName(std::string_view name);

// True when a file name matches a pattern with "*" and "?" as for FindFirstFile: "*.*" also matches a name
// without a dot. Both must be in upper case.
bool MatchesPattern(std::string_view name, std::string_view pattern);

// A full path on a drive or a network share, and its parts.
class WindowsPath {
 public:
  enum class Wildcards { Refused, InName };

  // InvalidName for characters or names that no path can have, FilenameTooLong, PathNotFound for a network
  // path without a share and for a device.
  static SystemError Parse(std::string_view path, std::string_view current, Wildcards wildcards,
                           WindowsPath& parsed);

  // "C:\Folder\name"; a root is "C:\" or "\\server\share\".
  const std::string& Text() const { return text_; }
  // The same in upper case, without "\" after a root: equal for all spellings of one path.
  const std::string& Key() const { return key_; }
  // The key of its drive or share.
  std::string_view RootKey() const { return std::string_view(key_).substr(0, rootSize_); }
  bool IsRoot() const { return key_.size() == rootSize_; }
  // The last name as given and in upper case; empty for a root.
  std::string_view Name() const { return IsRoot() ? std::string_view() : AfterBackslash(text_); }
  std::string_view NameKey() const { return IsRoot() ? std::string_view() : AfterBackslash(key_); }
  // The path of the folder that holds it. Not for a root.
  WindowsPath Parent() const;
  // Whether a file in this folder can have the name: it is possible, no device, and the path is short enough
  // for every call.
  bool CanHold(std::string_view name) const;
  // Whether it was given with "\" at its end, which only a folder's path may have.
  bool EndsWithBackslash() const { return endsWithBackslash_; }

 private:
  static std::string_view AfterBackslash(std::string_view text) { return text.substr(text.rfind('\\') + 1); }

  std::string text_;
  std::string key_;
  std::size_t rootSize_ = 0;  // of the root in key_
  bool endsWithBackslash_ = false;
};

}  // namespace bxvbwiz
