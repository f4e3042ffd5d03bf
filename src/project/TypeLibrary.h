#pragma once

#include <string>
#include <string_view>

#include "project/Library.h"

// From a "Reference=" or "Object=" line to the file of the type library that it names.
namespace bxvbwiz {

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
// agrees, the highest one above it. `path` is left alone when the library is left out. `lookup` holds the
// line, and receives what was found except the outcome of a library that was found.
LibrarySearch FindLibraryFile(AnalysisContext& context, LibraryLookup& lookup, std::string& path);

// Shows that the setup will lack the library; `library` is its name as the user knows it.
void ShowMissingLibrary(AnalysisContext& context, const LibraryLookup& lookup, const std::string& library);

// Shows a message with its "%%1" filled, and `more` on a line of its own. `component` is the library's file
// name, when `library` is not.
Button ShowLibraryMessage(AnalysisContext& context, TextId number, int style, const std::string& library,
                          const std::string& more = {}, const std::string& component = {});

// Fills the facts of the library's file and reads what it needs. Gives its .dep file, empty when there is
// none.
std::string DescribeLibrary(AnalysisContext& context, const std::string& path, FileRecord& record,
                            CDependencies& dependencies);

// True when `version`, read as a decimal number ("1.10" is 1.1), is greater than `other`.
bool IsHigherVersion(std::string_view version, std::string_view other);

}  // namespace bxvbwiz
