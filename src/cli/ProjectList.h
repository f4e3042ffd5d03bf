#pragma once

#include <string>
#include <vector>

#include "cli/Computer.h"
#include "cli/Options.h"

namespace bxvbwiz {

struct ListedProject {
  std::string path;   // on the machine; as it was given when it is not there
  std::string error;  // why it cannot be done; empty when it can
};

// Whether the options name a list of projects: several, or a group (.vbg).
bool NamesList(const Options& options);

// The projects that the options name, and those of groups, each once and those first that others need.
// Otherwise, and where projects need one another, the order stays. Prints what is odd about the list.
std::vector<ListedProject> ListProjects(const Options& options, Computer& computer);

}  // namespace bxvbwiz
