#pragma once

#include <string>
#include <string_view>

#include "project/AnalysisContext.h"
#include "project/CDependencies.h"
#include "project/FileRecord.h"

// From a "Reference=" or "Object=" line to the component's file: both kinds name a registered type library.
namespace bxvbwiz {

// What a line says of its component.
struct ComponentLine {
  std::string identifier;   // the type library's GUID with braces
  std::string version;      // as written, decimal or hexadecimal; may be empty
  std::string fileName;     // its file as the line names it; the line itself when it names none
  std::string description;  // references only
};

// Reads `*\G{guid}#version#lcid#path#description`. The file name is that of the path.
ComponentLine ReadReferenceLine(std::string_view rawLine);
// Reads `{guid}#version#lcid; file`, the identifier and the file quoted or not. A line without ";" names its
// file by its last path component.
ComponentLine ReadControlLine(std::string_view rawLine);

enum class LibrarySearch {
  Found,        // `path` is the component's file
  FileMissing,  // registered without a path, and not in the system folder, where `path` points; not yet told
  LeftOut,      // not registered or not wanted; the user knows
};

// Looks the component up in the registry: takes the version that the line asks for, or else, when the user
// agrees, the highest one above it. `path` is left alone when the component is left out.
LibrarySearch FindLibraryFile(AnalysisContext& context, const ComponentLine& line, std::string& path);

// Tells the user that the setup will lack the component.
void ShowMissingComponent(AnalysisContext& context, const std::string& component);

// Shows a message with its "%%1" filled.
Button ShowComponentMessage(AnalysisContext& context, TextId number, int style, const std::string& component);

// Fills the facts of the component's file and reads what it needs. Gives its .dep file, empty when there is
// none.
std::string DescribeComponent(AnalysisContext& context, const std::string& path, FileRecord& record,
                              CDependencies& dependencies);

// True when `version`, read as a decimal number ("1.10" is 1.1), is greater than `other`.
bool IsHigherVersion(std::string_view version, std::string_view other);

}  // namespace bxvbwiz
