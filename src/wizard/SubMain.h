#pragma once

#include <functional>
#include <string>

#include "wizard/FormHost.h"

namespace bxvbwiz {

// The start routine: reads the logging settings, runs `afterLogging` (which may see whether a log is written)
// and, in a stand-alone start, creates the wizard with the options of `commandLine` and shows it until it
// ends. Passes on what the view or `afterLogging` throws; a form that is loaded then stays loaded.
void SubMain(FormHost& host, const std::string& commandLine = {},
             const std::function<void()>& afterLogging = {});

}  // namespace bxvbwiz
