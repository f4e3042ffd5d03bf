#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>

#include "cli/Options.h"
#include "cli/Outcome.h"

// Printing on standard output, and for browsers.
namespace bxvbwiz {

// Prints the trees, and after a generation also the report and the files written.
void PrintText(const Options& options, const Outcome& outcome, const StringTable& strings);
void PrintText(const Explanation& explanation, const StringTable& strings);
void PrintText(const Inspection& inspection);

// The parts of the JSON document of a run.
nlohmann::ordered_json PartsOf(const Options& options, const Outcome& outcome, const StringTable& strings);
// Prints the JSON document of a run on `out`; `code` is the exit code.
void PrintJson(const Options& options, const Outcome& outcome, const StringTable& strings, int code,
               std::ostream& out);
// Prints the document of a list of projects from the documents of their runs.
void PrintJson(Command command, const std::vector<std::string>& documents, int code);
// Prints the document of a command that could not begin or go on: wrong usage, no machine to work on.
void PrintJson(const Options& options, const std::string& error, int code);
// Prints the document of a command of machine folders, which printed `lines`; `error` says why it failed.
void PrintJson(const Options& options, const std::string& lines, const std::string& error, int code);
// Prints the document of inspect; `error` is empty, or says why a file could not be read.
void PrintJson(const std::vector<Inspection>& inspections, const std::string& error, int code);

// Writes the page of a run to the file that `options.html` names, whole or not at all, or prints it for "-".
// It shows what the JSON document has, needs no other file, and folds without its script.
SystemError WriteHtml(const Options& options, const Outcome& outcome, const StringTable& strings);

}  // namespace bxvbwiz
