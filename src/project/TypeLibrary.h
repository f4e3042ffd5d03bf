#pragma once

#include <string>
#include <string_view>

#include "project/AnalysisContext.h"
#include "project/CDependencies.h"
#include "project/FileRecord.h"

// From a "Reference=" or "Object=" line to the file of the type library that it names.
namespace bxvbwiz {

// What a line says of its library.
struct LibraryLine {
  std::string identifier;   // the type library's GUID with braces
  std::string version;      // as written, decimal or hexadecimal; may be empty
  std::string fileName;     // its file as the line names it; the line itself when it names none
  std::string description;  // references only
};

// Reads `*\G{guid}#version#lcid#path#description`. The file name is that of the path.
LibraryLine ReadReferenceLine(std::string_view rawLine);
// Reads `{guid}#version#lcid; file`, the identifier and the file quoted or not. A line without ";" names its
// file by the last part of its path.
LibraryLine ReadControlLine(std::string_view rawLine);

enum class LibrarySearch {
  Found,        // `path` is the library's file
  FileMissing,  // registered without a path, and not in the system folder, where `path` points; not yet
                // reported
  LeftOut,      // not registered or not wanted; the user knows
};

// Looks the library up in the registry: takes the version that the line asks for, or else, when the user
// agrees, the highest one above it. `path` is left alone when the library is left out.
LibrarySearch FindLibraryFile(AnalysisContext& context, const LibraryLine& line, std::string& path);

// Shows that the setup will lack the library; `library` is its name as the user knows it.
void ShowMissingLibrary(AnalysisContext& context, const std::string& library);

// Shows a message with its "%%1" filled.
Button ShowLibraryMessage(AnalysisContext& context, TextId number, int style, const std::string& library);

// Fills the facts of the library's file and reads what it needs. Gives its .dep file, empty when there is
// none.
std::string DescribeLibrary(AnalysisContext& context, const std::string& path, FileRecord& record,
                            CDependencies& dependencies);

// True when `version`, read as a decimal number ("1.10" is 1.1), is greater than `other`.
bool IsHigherVersion(std::string_view version, std::string_view other);

}  // namespace bxvbwiz
