#pragma once

#include <string>

#include "platform/Processes.h"
#include "support/User.h"

namespace bxvbwiz {

// Runs a command line and waits until it ends; meanwhile the user's events run. False, at once, when the
// process cannot be started. The exit code is not read.
bool ShellAndWait(Processes& processes, User& user, const std::string& commandLine);

}  // namespace bxvbwiz
