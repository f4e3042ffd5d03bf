#pragma once

#include <cstdint>
#include <string>

#include "project/CFiles.h"
#include "project/Executables.h"
#include "project/FileGroupBuilder.h"
#include "setupgen/DestinationSymbols.h"
#include "support/NumberedKeys.h"

namespace bxvbwiz {

// Decides for every file its destination, group, sharing and registration, and writes file groups into a
// setup project. A routine that fails logs the error and returns false, 0 or ""; a missing product key ends
// the wizard.
class CFileGroups : public DestinationSymbols, public FileGroupBuilder {
 public:
  // `projectFile`: see DestinationSymbols. `lists` remembers the numbered lists of the setup project between
  // calls; call its Forget() when others may have written to them between two calls, and that of
  // `executables` when files may have changed.
  CFileGroups(Platform& platform, basGlobal& global, std::function<std::string()> projectFile,
              NumberedKeys& lists, Executables& executables)
      : DestinationSymbols(platform, global, std::move(projectFile)),
        lists_(lists),
        executables_(executables) {}

  void GetFileGroupInfo(const std::string& destination, const std::string& filePath,
                        const std::string& depFile, const FileRecord* existing, FileRecord& target) override;
  // The group's name by destination, registration and sharing; `fileName` does not matter.
  std::string CreateFileGroupName(const std::string& fileName, const FileRecord& file);
  bool IsSharedFile(const FileRecord& file, const std::string& filePath);
  // The installation's index of redistributable files. A missing product key ends the wizard.
  std::string CoreCompIni();
  // The file's entry in that index; "" when it has none.
  std::string CheckCoreCompIni(const std::string& filePath);
  // The kRegister... code by extension or exports.
  std::int16_t CheckSelfRegister(const std::string& filePath);
  // The symbol of the file's folder, as the tables of groups and components know it.
  std::string FolderSymbol(const FileRecord& file);

  // Enters one file into its group's list and the group into its component. `projectDir` is the setup
  // project's folder with a trailing backslash.
  bool CreateFileGroup(const std::string& projectDir, const CFile& file);
  bool AddFileGroupToProject(const std::string& projectDir, const FileRecord& file);
  bool AddFileGroupToComponent(const std::string& projectDir, const FileRecord& file);

 private:
  // Sets the Destination; `section` describes the file in `depFile`. One that no symbol covers is the
  // application's folder, and a doubt when the .dep file names it.
  void DecideDestination(const std::string& destination, const std::string& filePath,
                         const std::string& depFile, const std::string& section, FileRecord& target);
  // Sets the code of the registration that `section` of `depFile` names. One that no setup does is a doubt.
  void DecideRegistration(const std::string& filePath, const std::string& depFile, const std::string& section,
                          FileRecord& target);
  // The place of shared files that `destination`, in upper case, is or lies below; empty when there is none.
  std::string SharedPlace(const std::string& destination);
  void WriteGroupProperties(const std::string& definitions, const FileRecord& file);

  NumberedKeys& lists_;
  Executables& executables_;
};

}  // namespace bxvbwiz
