#pragma once

#include <string>
#include <utility>
#include <vector>

#include "project/CDependencies.h"

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
  // The version that was taken without a question in place of the one asked for; empty for that one.
  std::string takenUnasked;
  bool hasRegisteredPath = false;  // otherwise `path` is in the system folder
  LibraryOutcome outcome = LibraryOutcome::Missing;
};

// A library that a line of the project names: a control or a type library.
class Library : public FileRecord {
 public:
  Library(AnalysisContext& context, RecordKind recordKind)
      : FileRecord(recordKind), context_(context), dependencies_(context) {}

  std::string Name;     // the file name of the line, after the resolution its full path
  std::string DepFile;  // full path of its .dep file, empty when none was found
  std::string Key;
  bool Include = false;  // whether its file is to be installed

  CDependencies& Dependencies() { return dependencies_; }
  const std::string& RawName() const { return rawName_; }
  // What the raw line names and what was found of it.
  const LibraryLookup& Lookup() const { return lookup_; }

 protected:
  AnalysisContext& context_;
  CDependencies dependencies_;
  std::string rawName_;
  LibraryLookup lookup_;
};

}  // namespace bxvbwiz
