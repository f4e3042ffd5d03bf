#include <filesystem>
#include <iostream>
#include <utility>

#include "cli/Commands.h"
#include "cli/FileSource.h"
#include "cli/Output.h"
#include "cli/Terminal.h"
#include "machine/CodePages.h"
#include "project/EXEFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// Names in executables are ASCII, except those of a few odd tools; the Western code page decodes every byte.
constexpr int kCodePage = 1252;

void Tell(const std::string& text, std::string& error) {
  std::cerr << "bxvbwiz: " << text << '\n';
  if (error.empty()) error = text;
}

// Prints a message and gives false when the file cannot be opened; the first one stays in `error`. Only
// regular files are opened, so that nothing waits for a pipe.
bool Open(const std::string& path, PartlyReadFile& file, std::string& error) {
  const std::filesystem::path place = std::filesystem::u8path(path);
  std::error_code failure;
  // Open does not follow a link.
  const bool isLink = std::filesystem::is_symlink(place, failure);
  const std::filesystem::path target = isLink ? std::filesystem::canonical(place, failure) : place;
  if (file.Open(target.generic_u8string()) == SystemError::Success) return true;
  const char* reason = " cannot be read";
  if (!std::filesystem::exists(place, failure)) {
    reason = " does not exist";
  } else if (!std::filesystem::is_regular_file(place, failure)) {
    reason = " is not a regular file";
  }
  Tell(path + reason, error);
  return false;
}

Inspection InspectFile(const std::string& path, const FileSource& bytes, const CodePage& codePage) {
  Inspection inspection;
  inspection.file = path;
  EXEFile file(codePage);
  try {
    file.OpenSource(bytes);
  } catch (const RuntimeError& error) {
    inspection.reason = error.what();
  }
  inspection.valid = file.IsValid;
  inspection.exeType = file.ExeType;
  inspection.errorType = file.ErrorType;
  for (const Dependency& import : file.Dependencies) inspection.imports.push_back(import.ShortName);
  for (const std::string& name : file.Exports) inspection.exports.push_back(name);
  inspection.typeLibraries = ReadTypeLibraries(bytes, codePage);
  const std::string upper = UpperCase(path);
  if (EndsWith(upper, ".TLB") || EndsWith(upper, ".OLB")) {
    inspection.selfRegister = kRegisterTypeLibrary;
  } else if (inspection.reason.empty() && file.IsExported("DLLRegisterServer")) {
    inspection.selfRegister = kRegisterDll;
  }
  return inspection;
}

}  // namespace

int InspectFiles(const Options& options) {
  const std::unique_ptr<CodePage> codePage = MakeCodePage(kCodePage);
  std::vector<Inspection> inspections;
  int code = kExitFinished;
  std::string failure;
  PartlyReadFile file;
  std::vector<std::string> paths;
  for (const std::string& argument : options.files) {
    for (std::string& path : FilesOf(argument)) paths.push_back(std::move(path));
  }
  for (const std::string& path : paths) {
    if (!Open(path, file, failure)) {
      code = kExitNotFinished;
      continue;
    }
    Inspection inspection = InspectFile(path, FileSource(file), *codePage);
    if (file.Error() != SystemError::Success) {
      Tell(path + " cannot be read completely", failure);
      code = kExitNotFinished;
    }
    if (options.json) {
      inspections.push_back(std::move(inspection));
    } else {
      PrintText(inspection);
    }
  }
  if (options.json) PrintJson(inspections, failure, code);
  return code;
}

}  // namespace bxvbwiz
