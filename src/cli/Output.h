#pragma once

#include "cli/Options.h"
#include "cli/Outcome.h"

// Printing on standard output.
namespace bxvbwiz {

// Prints the trees, and after a generation also the report and the files written.
void PrintText(const Options& options, const Outcome& outcome, const StringTable& strings);
void PrintText(const Explanation& explanation, const StringTable& strings);
void PrintText(const Inspection& inspection);

// Prints the JSON document of a run; `code` is the exit code.
void PrintJson(const Options& options, const Outcome& outcome, const StringTable& strings, int code);
// Prints the document of a command that could not begin or go on: wrong usage, no machine to work on.
void PrintJson(const Options& options, const std::string& error, int code);
// Prints the document of a command of machine folders, which printed `lines`; `error` says why it failed.
void PrintJson(const Options& options, const std::string& lines, const std::string& error, int code);
// Prints the document of inspect; `error` is empty, or says why a file could not be read.
void PrintJson(const std::vector<Inspection>& inspections, const std::string& error, int code);

}  // namespace bxvbwiz
