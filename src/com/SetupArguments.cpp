#include "com/SetupArguments.h"

#include "com/ComError.h"
#include "support/basFile.h"
#include "support/Errors.h"

namespace bxvbwiz {

std::string SetupFolderArgument(Server& server, const std::string& folder, const char* argument) {
  std::string fixed = FixPath(folder);
  // The system would end a name at a NUL and find another folder.
  const bool isCut = folder.find('\0') != std::string::npos;
  if (folder.empty() || isCut || Dir(server.core().platform().files, fixed + "*.*", true).empty()) {
    throw ComError(
        RunTimeErrorCode(kErrorPathNotFound),
        "Path not found: the argument " + std::string(argument) + " is \"" + folder.c_str() + "\"");
  }
  return fixed;
}

std::string CurrentProjectFile(Server& server) {
  const frmMain* form = server.formHost().Form();
  if (form == nullptr) return {};
  if (form->txtVBPname.text.empty() && form->App != nullptr) return form->App->ProjectPath();
  return form->txtVBPname.text;
}

}  // namespace bxvbwiz
