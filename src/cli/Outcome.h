#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "support/User.h"
#include "wizard/Generation.h"

namespace bxvbwiz {

// A message that was shown, and how it was answered.
struct ShownMessage {
  Message message;
  Button answer = Button::Ok;
};

// What a run leaves to be printed.
struct Outcome {
  bool finished = false;
  std::int16_t returnCode = 0;
  std::unique_ptr<Analysis> analysis;  // null when none was started
  std::vector<std::string> symbols;    // the destination symbols of the analysis' files, in their order
  GeneratedSetup setup;
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
