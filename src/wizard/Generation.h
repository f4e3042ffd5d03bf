#pragma once

#include <cstdint>
#include <string>

#include "ui/frmMain.h"

namespace bxvbwiz {

// Makes the setup project of an analysed project: the sequence that Finish starts. May end the wizard at
// every step; what was written before stays.
class Generation {
 public:
  Generation(Platform& platform, basGlobal& global, frmMain& form)
      : platform_(platform), global_(global), form_(form) {}

  // Needs form.setupProjectName.
  void Run();

 private:
  void DetectDataAccess();
  void MakeSetupFolder();
  void CopyTemplate();
  void RenameAndPatchProjectFile();
  void MakeFileGroups();
  void ShowReport();
  void CreateFileGroups();

  Platform& platform_;
  basGlobal& global_;
  frmMain& form_;
  std::string templateFolder_;       // with a trailing backslash
  std::string templateProjectFile_;  // name of the template's .bxp
};

}  // namespace bxvbwiz
