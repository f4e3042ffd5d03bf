#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "setupgen/SetupAnswers.h"
#include "setupgen/TreeNode.h"

namespace bxvbwiz {

// "<VBWizVar-n>" for each n from `oldCount` to `newCount` - 1.
std::vector<std::string> ScriptDefinedVariableNames(std::int16_t oldCount, std::int16_t newCount);

// The report's text, its paragraphs separated by empty lines (CR LF).
std::string AssembleReport(const StringTable& strings, const DataAccessNeeds& needs,
                           const std::vector<std::string>& newVariables);

// Breaks a text for a display of 80 columns: at blanks from column 75 on, and where "/n" stands.
std::string FormatFor80CharDisplay(const std::string& text);

// What the setup lacks, a sentence a line below a heading, to stand before the report on the screen, where it
// is seen without scrolling; empty when it lacks nothing.
std::string LeftToDo(const StringTable& strings, const std::vector<std::string>& incomplete);

// Appends the report and the printout of the project view to "Script Files\Report.txt" of the setup project.
// Raises what opening the file raises.
void WriteReport(Platform& platform, const std::string& setupDir, const std::string& report,
                 const TreeNodes& projectView);

}  // namespace bxvbwiz
