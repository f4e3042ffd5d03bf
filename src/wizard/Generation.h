#pragma once

#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "project/basGlobal.h"
#include "setupgen/SetupAnswers.h"

namespace bxvbwiz {

// The first of "Name", "Name-1", "Name-2", ... that is not yet a folder below the data folder, so that no
// setup project is overwritten. `applicationName` is the user's answer. A missing product key ends the
// wizard.
std::string ChooseSetupProjectName(Platform& platform, User& user, const std::string& applicationName);

// Adds a finding for each answer that is still the text with which its box begins. Call it when nobody has
// seen the boxes.
void NoteInitialTexts(const StringTable& strings, const Analysis& analysis, const SetupAnswers& answers);

// What a generation has made so far.
struct GeneratedSetup {
  std::string folder;  // with a trailing backslash; empty until it was created
  std::vector<std::string> scriptDefinedVariables;
  std::string report;  // the text of Report.txt, without the printout
};

// Makes the setup project of an analysis: the sequence that Finish starts. Any step may end the wizard; what
// was written before stays.
class Generation {
 public:
  // `name` is that of the new setup project; `setup` receives what is made. All must outlive the generation.
  Generation(Platform& platform, basGlobal& global, User& user, Analysis& analysis, SetupAnswers answers,
             std::string name, GeneratedSetup& setup);

  // Does everything except write the report's file.
  void MakeSetupProject();
  // Writes Report.txt, and what was found beside it.
  void SaveReport();

 private:
  void MakeSetupFolder();
  void CopyTemplate();
  void RenameAndPatchProjectFile();
  void MakeFileGroups();
  void CreateFileGroups();

  Platform& platform_;
  basGlobal& global_;
  User& user_;
  Analysis& analysis_;
  const SetupAnswers answers_;
  const std::string name_;
  GeneratedSetup& setup_;
  std::string templateProjectFile_;  // name of the template's .bxp
};

}  // namespace bxvbwiz
