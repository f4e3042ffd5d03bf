#pragma once

#include <string>

#include "platform/Processes.h"
#include "support/User.h"

namespace bxvbwiz {

// Runs a command line and waits for its end, letting the user's events run meanwhile. A process that cannot
// be started ends the wait at once; the exit code is not read.
void ShellAndWait(Processes& processes, User& user, const std::string& commandLine);

}  // namespace bxvbwiz
