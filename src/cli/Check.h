#pragma once

#include <string>
#include <vector>

#include "analysis/SetupContents.h"
#include "cli/Computer.h"

namespace bxvbwiz {

// A difference between the setup project that generate would make now and one that lies there.
struct Difference {
  enum class Sign : char { Added = '+', Gone = '-', Other = '~' };
  Sign sign;             // what generate would do to it
  bool byHand;           // a person may have made it on purpose, so the setup project counts as up to date
  std::string kind;      // "file", "file group", "answer", ...
  std::string name;      // of the file, the group, ...
  std::string owner;     // the group or component that it is in; empty for none
  std::string present;   // of a value: what the setup project has
  std::string expected;  // and what generate would write
};

// What was compared.
struct Comparison {
  std::string setupFolder;  // a Windows path that ends in a backslash; empty when nothing was compared
  std::vector<Difference> differences;
  bool IsEqual() const;  // but for what was made by hand
};

// The folder of a setup project on the machine, from the path of the folder or of its project file; empty
// when none lies there.
std::string SetupFolderOf(Computer& computer, const std::string& path);

// Compares what the wizard decides: files and their groups, where and how these are installed, components,
// and the answers. What it leaves to people is told as made by hand, and so is a file group whose name is not
// one of the wizard's. GUIDs and the folder may differ.
std::vector<Difference> DifferencesOf(const SetupContents& present, const SetupContents& expected);

}  // namespace bxvbwiz
