#include <filesystem>
#include <iostream>
#include <utility>

#include "cli/Commands.h"
#include "cli/FileSource.h"
#include "cli/Output.h"
#include "cli/Terminal.h"
#include "machine/CodePages.h"
#include "project/EXEFile.h"
#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

// Names in executables are ASCII, except those of a few odd tools; the Western code page decodes every byte.
constexpr int kCodePage = 1252;

// Opens a file, and says why when it cannot be opened. Only regular files are opened, so that nothing waits
// for a pipe.
std::string Open(const std::string& path, PartlyReadFile& file) {
  const fs::path place = fs::u8path(path);
  std::error_code failure;
  // PartlyReadFile does not follow a link.
  const fs::path target = fs::is_symlink(place, failure) ? fs::canonical(place, failure) : place;
  if (file.Open(target.generic_u8string()) == SystemError::Success) return "";
  if (!fs::exists(place, failure)) return path + " does not exist";
  return path + (fs::is_regular_file(place, failure) ? " cannot be read" : " is not a regular file");
}

Inspection InspectFile(const std::string& path, const FileSource& bytes, const CodePage& codePage) {
  Inspection inspection{path, EXEFile(codePage), ReadTypeLibraries(bytes, codePage), kRegisterNone, ""};
  try {
    inspection.executable.OpenSource(bytes);
    if (inspection.executable.IsExported("DLLRegisterServer")) inspection.selfRegister = kRegisterDll;
  } catch (const RuntimeError& error) {
    inspection.reason = error.what();
  }
  if (HasExtension(path, {".TLB", ".OLB"})) inspection.selfRegister = kRegisterTypeLibrary;
  return inspection;
}

}  // namespace

int InspectFiles(const Options& options) {
  const std::unique_ptr<CodePage> codePage = MakeCodePage(kCodePage);
  std::vector<Inspection> inspections;
  std::string firstFailure;
  const auto tell = [&](const std::string& failure) {
    std::cerr << "bxvbwiz: " << failure << '\n';
    if (firstFailure.empty()) firstFailure = failure;
  };
  PartlyReadFile file;
  for (const std::string& argument : options.files) {
    for (const std::string& path : FilesOf(argument)) {
      if (const std::string failure = Open(path, file); !failure.empty()) {
        tell(failure);
        continue;
      }
      Inspection inspection = InspectFile(path, FileSource(file), *codePage);
      if (file.Error() != SystemError::Success) tell(path + " cannot be read completely");
      if (!options.json) PrintText(inspection);
      if (options.json) inspections.push_back(std::move(inspection));
    }
  }
  const int code = firstFailure.empty() ? kExitFinished : kExitNotFinished;
  if (options.json) PrintJson(inspections, firstFailure, code);
  return code;
}

}  // namespace bxvbwiz
