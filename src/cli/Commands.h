#pragma once

#include <iosfwd>

#include "cli/Computer.h"
#include "cli/Options.h"

// The commands that RunWizard.h does not name. Each gives the exit code.
namespace bxvbwiz {

// capture: runs the wizard on `computer` without writing a setup project, and records everything that it
// reads in a machine folder. On that folder generate makes the same setup project. kExitNotFinished also when
// something could not be captured. Throws MachineError when the folder cannot be made.
int Capture(const Options& options, Computer& computer, const WizardRun& run);
// inspect: prints what is known about the files. kExitNotFinished when one could not be read at all.
int InspectFiles(const Options& options);

// The commands of machine folders print what they did on `out`. They throw MachineError when the folder
// cannot be what they need, and std::runtime_error when it cannot be written.

// machine new: lays out a machine folder with the product, a template setup project and a registered Visual
// Basic 6. The folder must be new or empty.
int MakeMachine(const Options& options, std::ostream& out);
// machine register: enters the type libraries of files into the registry of a machine folder, as registering
// them on a Windows machine would.
int RegisterComponents(const Options& options, std::ostream& out);
// machine check: says what a run on a machine folder would trip over. kExitNotFinished when a run would fail.
int CheckMachine(const Options& options, std::ostream& out);

}  // namespace bxvbwiz
