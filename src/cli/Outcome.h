#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "setupgen/Report.h"
#include "setupgen/TreeNode.h"
#include "support/User.h"

namespace bxvbwiz {

class frmMain;

// A message that was shown, and how it was answered.
struct ShownMessage {
  Message message;
  Button answer = Button::Ok;
};

struct FileFacts {
  std::string fileName;
  std::string destination;
  std::string symbol;
  bool sharedFile = false;
  std::int32_t selfRegister = 0;
  std::string fileLinkPath;
  bool linkResolves = false;
  std::string fileGroup;
};

struct ProjectFacts {
  std::string fileName, name, exeName, exePath, majorVer, minorVer, revisionVer, versionCompanyName;
  std::int16_t projectType = 0;
  bool needsRebuild = false;
};

// A node of a tree, without the form that it comes from.
struct TreeText {
  std::string text;
  std::vector<TreeText> children;
};

// All that a run leaves to be printed. The form is gone when the wizard has ended, so it is taken from it
// before.
struct Outcome {
  bool finished = false;
  std::int16_t returnCode = 0;
  ProjectFacts project;
  std::vector<TreeText> projectView;
  std::vector<TreeText> fileGroupView;
  std::vector<FileFacts> files;
  DataAccessNeeds dataAccess;
  std::vector<ShownMessage> messages;
  std::vector<std::string> incomplete;
  std::string setupFolder;
  std::string projectFile;
  std::string projectFileHere;
  std::vector<std::string> scriptDefinedVariables;
  std::string report;
  std::vector<std::string> writtenFiles;  // below the setup folder
};

// "ok", "yes", ...
const char* NameOfButton(Button button);

// Takes what the form knows.
void TakeFromForm(frmMain& form, Outcome& outcome);

}  // namespace bxvbwiz
