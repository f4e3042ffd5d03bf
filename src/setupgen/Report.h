#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "setupgen/SetupAnswers.h"
#include "setupgen/TreeNode.h"
#include "support/Findings.h"

namespace bxvbwiz {

// "<VBWizVar-n>" for each n from `oldCount` to `newCount` - 1.
std::vector<std::string> ScriptDefinedVariableNames(std::int16_t oldCount, std::int16_t newCount);

// The report's text, its paragraphs separated by empty lines (CR LF).
std::string AssembleReport(const StringTable& strings, const DataAccessNeeds& needs,
                           const std::vector<std::string>& newVariables);

// Breaks a text for a display of 80 columns: at blanks from column 75 on, and where "/n" stands.
std::string FormatFor80CharDisplay(const std::string& text);

// What was found, below a heading, to stand after the report on the screen; empty when nothing was.
std::string LeftToDo(const StringTable& strings, const Findings& findings);

// Appends the report and the printout of the project view to "Script Files\Report.txt" of the setup project.
// Raises what opening the file raises.
void WriteReport(Platform& platform, const std::string& setupDir, const std::string& report,
                 const TreeNodes& projectView);
// Its path.
std::string LeftToDoFile(const std::string& setupDir);
// Writes what was found to "Script Files\Left To Do.txt"; no file when nothing was. Raises what opening the
// file raises.
void WriteLeftToDo(Platform& platform, const std::string& setupDir, const Findings& findings);

}  // namespace bxvbwiz
