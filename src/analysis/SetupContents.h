#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/Platform.h"

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
  bool hasList = false;            // there is a list of its name
  bool isEntered = false;          // among the groups of the setup project
  std::vector<std::string> files;  // full paths of the source copies
  ProfileSection settings;         // TARGET, SELFREGISTERING and the like
  bool isUnreadable = false;       // the list could not be read, which is reported
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

bool operator==(const SetupGroup& left, const SetupGroup& right);
bool operator==(const SetupComponent& left, const SetupComponent& right);
bool operator==(const SetupContents& left, const SetupContents& right);

// Reads the setup project that lies in a folder, which may end in a backslash. What is not there is empty.
SetupContents ReadSetup(Platform& platform, const std::string& setupFolder);

}  // namespace bxvbwiz
