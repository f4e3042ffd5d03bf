#pragma once

#include <memory>

#include "cli/Computer.h"
#include "platform/CallHook.h"

namespace bxvbwiz {

// Sees what a run on a scratch computer asks the registry, the files and the profile strings for.
class Recorder : public CallHook {
 public:
  // Stores what was seen. Throws MachineError.
  virtual void Save() = 0;
  // Whether it could all be recorded; otherwise the run counts as not finished.
  virtual bool IsComplete() const = 0;
};

// A computer on which a run makes a setup project that is thrown away: `source`, with the folders that the
// run makes in a scratch machine, where it finds again what it wrote. `source` stays as it is.
// `makesFolders` says whether MakeFolder does. Throws MachineError.
std::unique_ptr<Computer> MakeScratchComputer(Computer& source, bool makesFolders = true,
                                              Recorder* recorder = nullptr);

}  // namespace bxvbwiz
