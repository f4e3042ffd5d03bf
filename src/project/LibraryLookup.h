#pragma once

#include <string>
#include <utility>
#include <vector>

namespace bxvbwiz {

// What a line says of its library.
struct LibraryLine {
  std::string identifier;   // the type library's GUID with braces
  std::string version;      // as written, decimal or hexadecimal; may be empty
  std::string fileName;     // its file as the line names it; the line itself when it names none
  std::string description;  // references only
};

// What becomes of a library that a line names.
enum class LibraryOutcome {
  Installed,
  System,      // a file of Windows
  DataAccess,  // of a family that the setup installs as a whole
  Missing,     // not registered, or its file is not there
  Refused,     // the user did not want the version that there is
};

// A line's library, and what the look-up in the registry gave.
struct LibraryLookup : LibraryLine {
  LibraryLookup() = default;
  explicit LibraryLookup(LibraryLine line) : LibraryLine(std::move(line)) {}

  std::vector<std::string> registered;  // the versions, as the registry names them
  std::string taken;                    // one of them, or the version asked for; empty when none was
  std::string path;                     // of the library's file; empty when none was looked for
  bool hasRegisteredPath = false;       // otherwise `path` is in the system folder
  LibraryOutcome outcome = LibraryOutcome::Missing;
};

}  // namespace bxvbwiz
