#pragma once

#include <cstdint>
#include <string>

#include "project/FileRecord.h"
#include "setupgen/DestinationSymbols.h"
#include "support/NumberedKeys.h"

namespace bxvbwiz {

// Makes the components of a setup project and their script-defined variables. `projectDir` is the setup
// project's folder with a trailing backslash. A routine that fails logs the error and returns false, "" or
// the count so far.
class CComponents {
 public:
  CComponents(Platform& platform, DestinationSymbols& symbols, NumberedKeys& lists)
      : platform_(platform), symbols_(symbols), lists_(lists) {}

  // The component's name by the file's destination macro; not used by the generation.
  std::string CreateComponentName(const std::string& fileName, const FileRecord& file);
  // Makes sure that the component exists; `file` is the first file that it receives.
  bool CreateComponent(const std::string& projectDir, const std::string& componentName,
                       const FileRecord& file);
  // Makes a script-defined variable for the component, or finds "<DAO>". Gives its name.
  std::string AddScriptDefinedVariable(const std::string& projectDir, const std::string& componentName,
                                       const FileRecord& file);

 private:
  Platform& platform_;
  DestinationSymbols& symbols_;
  NumberedKeys& lists_;
};

// The number of "<VBWizVar-" folders that the setup project has.
void FindScriptDefinedVariables(Platform& platform, const std::string& projectDir, std::int16_t& count);

// The last component of `folder` with the first letter of each word in upper case and the rest in lower case;
// empty for a root.
std::string ProperCaseFolderName(const std::string& folder);

}  // namespace bxvbwiz
