#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "cli/Check.h"
#include "project/EXEFile.h"
#include "project/TypeLibraryFile.h"
#include "support/User.h"
#include "wizard/Generation.h"

namespace bxvbwiz {

// A message that was shown, and how it was answered.
struct ShownMessage {
  Message message;
  Button answer = Button::Ok;
};

// A file of the setup, and where it is in the setup project.
struct InstalledFile {
  const CFile* record;  // of the analysis
  std::string symbol;   // of its destination; empty when it could not be found out
  Sentence component;   // its value, and why; without one as long as there is no symbol

  std::string Component() const { return component.values.empty() ? "" : component.values.front(); }
  // The rules that decided all this, in their order.
  std::vector<Sentence> Why() const {
    std::vector<Sentence> why = record->reasons;
    if (!component.values.empty()) why.push_back(component);
    return why;
  }
};

// What explain tells of one name.
struct Explanation {
  std::string name;               // of its file, or as it was given
  Sentence verdict;               // where it is in the setup, or why it is not
  bool isKnown = false;           // the project asks for it
  std::vector<std::string> near;  // names like one that is not known
  TreeNode askers;                // its children ask for it, theirs for them
  bool hasMoreAskers = false;
  std::vector<LibraryLookup> lookups;
  std::vector<Sentence> why;
  std::vector<Finding> findings;
};

// What a run leaves to be printed.
struct Outcome {
  bool finished = false;
  std::int16_t returnCode = 0;
  std::unique_ptr<Analysis> analysis;  // null when none was started
  std::vector<InstalledFile> files;
  std::unique_ptr<Explanation> explanation;  // of explain; null when it has none
  std::string error;                         // why the program could not go on, as it was printed
  GeneratedSetup setup;
  Comparison comparison;  // of check
  std::vector<ShownMessage> messages;
  std::string projectFile;                // of the setup project, a Windows path
  std::string projectFileHere;            // the same on this computer
  std::vector<std::string> writtenFiles;  // below the setup folder

  // What was found; null when no analysis was started.
  const Findings* Found() const { return analysis == nullptr ? nullptr : &analysis->Found(); }
};

// What inspect knows about one file.
struct Inspection {
  std::string file;
  EXEFile executable;
  TypeLibraryFile typeLibraries;
  std::int32_t selfRegister = kRegisterNone;
  std::string reason;  // why it is not an executable
};

}  // namespace bxvbwiz
