#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "text/Text.h"

namespace bxvbwiz {

struct IgnoringCase {
  bool operator()(const std::string& left, const std::string& right) const;
};

// The keys of a section and their values.
using ProfileSection = std::map<std::string, std::string, IgnoringCase>;

// The value of a key, or "".
std::string ValueOf(const ProfileSection& section, const std::string& key);

// A file group: its list of files and its properties.
struct SetupGroup {
  std::string name;
  bool isEntered = false;          // among the groups of the setup project
  std::vector<std::string> files;  // full paths of the source copies
  ProfileSection settings;         // TARGET, SELFREGISTERING and the like
  bool isUnreadable = false;       // the list could not be read, which is told
};

struct SetupComponent {
  std::string name;
  std::vector<std::string> groups;
  std::vector<std::string> members;   // components below it
  std::vector<std::string> required;  // components that are installed with it
  ProfileSection settings;            // MONIKER, GUID and the like, without the lists above
};

// What a setup project holds, as its files say.
struct SetupContents {
  std::string projectFile;         // name; empty when there is none
  ProfileSection data;             // the project file's section "Data"
  std::vector<SetupGroup> groups;  // those that are entered, in their order, then those with a list only
  std::vector<SetupComponent> components;  // in their order, those of the run-time kind last
  std::map<std::string, std::vector<std::string>, IgnoringCase> setupTypes;  // the components of each
  std::vector<std::string> folders;  // the symbols of the script-defined folders
  ProfileSection substitutions;      // the text substitutions and their values
  ProfileSection targets;            // of the shell objects, by section
};

// The group or component of a name; null when there is none.
template <class Named>
const Named* FindNamed(const std::vector<Named>& all, const std::string& name) {
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const Named& one) { return EqualsIgnoreCase(one.name, name); });
  return found == all.end() ? nullptr : &*found;
}

// Whether a name is in a list, in any case.
bool Holds(const std::vector<std::string>& names, const std::string& name);

// Reads the setup project that lies in a folder, which may end in a backslash. What is not there is empty;
// what cannot be read is a finding.
SetupContents ReadSetup(Platform& platform, const std::string& setupFolder);

}  // namespace bxvbwiz
