#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "cli/Check.h"
#include "support/User.h"
#include "wizard/Generation.h"

namespace bxvbwiz {

// A message that was shown, and how it was answered.
struct ShownMessage {
  Message message;
  Button answer = Button::Ok;
};

// What asks for a file, and what asks for that in turn.
struct Asker {
  Origin origin;
  std::vector<Asker> askers;
};

// What explain tells of one name.
struct Explanation {
  std::string name;  // as it was given
  // Where it is in the setup, or why it is not.
  Sentence verdict;
  bool isKnown = false;           // the project asks for it
  std::vector<std::string> near;  // names like one that is not known
  std::vector<Asker> askers;
  bool hasMoreAskers = false;
  std::vector<LibraryLookup> lookups;
  std::vector<Sentence> reasons;
  std::vector<Finding> findings;
};

// What a run leaves to be printed.
struct Outcome {
  bool finished = false;
  std::int16_t returnCode = 0;
  std::unique_ptr<Analysis> analysis;  // null when none was started
  std::vector<std::string> symbols;    // the destination symbols of the analysis' files, in their order
  std::vector<Sentence> components;    // why each of them goes into its component, which is the first value
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

// "ok", "yes", ...
const char* NameOfButton(Button button);

}  // namespace bxvbwiz
