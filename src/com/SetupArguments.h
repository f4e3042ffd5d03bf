#pragma once

#include <string>

#include "com/Server.h"

// What the classes that write into a setup project take from their hosts.
namespace bxvbwiz {

// The setup project's folder with its trailing backslash. Throws ComError when there is no such folder:
// nothing could be written.
std::string SetupFolderArgument(Server& server, const std::string& folder, const char* argument);
// The Visual Basic project that the form or its automation object names; empty without a form.
std::string CurrentProjectFile(Server& server);

}  // namespace bxvbwiz
