#pragma once

#include <string>
#include <string_view>

#include "platform/SystemError.h"

namespace bxvbwiz {

// The text that GetFullPathNameA gives for `path`, which has at least one character: "/" is "\", "." and ".."
// are resolved, blanks and dots at the end are gone. `current` is the current directory, itself a full path.
// Network paths and "\\?\" paths stay such.
std::string FullWindowsPath(std::string_view path, std::string_view current);

// The path of a name in a folder.
std::string JoinPath(std::string_view folder, std::string_view name);

// The length in UTF-16 units, which is what the system's limits count.
std::size_t Utf16Length(std::string_view text);

// True when a file can have this name; a folder of this computer may hold others.
bool IsPossibleName(std::string_view name);

// True when the system takes the name for a device, whatever folder and extension it is given with.
bool IsDeviceName(std::string_view name);

// True when the name of a file matches a pattern with "*" and "?", as for FindFirstFile: "*.*" matches a name
// without a dot too. Both are in upper case.
bool MatchesPattern(std::string_view name, std::string_view pattern);

// A full path on a drive, taken apart.
class WindowsPath {
 public:
  enum class Wildcards { Refused, InName };

  // InvalidName for a text or name that no path can have, FilenameTooLong, PathNotFound for a network path or
  // a device.
  static SystemError Parse(std::string_view path, std::string_view current, Wildcards wildcards,
                           WindowsPath& parsed);

  // "C:\Folder\name"; a drive's root is "C:\".
  const std::string& Text() const { return text_; }
  // The same in upper case, without "\" after a drive's root: equal for all spellings of one path.
  const std::string& Key() const { return key_; }
  char Drive() const { return key_[0]; }
  bool IsRoot() const { return key_.size() == 2; }
  // The last name as given and in upper case; empty for a root.
  std::string_view Name() const { return IsRoot() ? std::string_view() : AfterBackslash(text_); }
  std::string_view NameKey() const { return IsRoot() ? std::string_view() : AfterBackslash(key_); }
  // The path of the folder that holds it; not for a root.
  WindowsPath Parent() const;
  // Whether a file in this folder can have the name: a possible one, no device, and no path too long for all
  // calls.
  bool CanHold(std::string_view name) const;
  // It was given with "\" at its end, which only a folder may have.
  bool EndsWithBackslash() const { return endsWithBackslash_; }

 private:
  static std::string_view AfterBackslash(std::string_view text) { return text.substr(text.rfind('\\') + 1); }

  std::string text_;
  std::string key_;
  bool endsWithBackslash_ = false;
};

}  // namespace bxvbwiz
