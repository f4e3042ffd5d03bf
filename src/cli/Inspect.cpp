#include "cli/Inspect.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "cli/JsonOutput.h"
#include "cli/TextOutput.h"
#include "platform/machine/CodePages.h"
#include "platform/Text.h"
#include "project/EXEFile.h"

namespace bxvbwiz {
namespace {

// Names in executables are ASCII, but for those of some odd tools; the Western code page reads every byte.
constexpr int kCodePage = 1252;

// False, with a message, for what cannot be read; only regular files are opened, so that nothing waits for a
// pipe.
bool ReadBytes(const std::string& path, std::string& bytes) {
  const std::filesystem::path place = std::filesystem::u8path(path);
  std::error_code error;
  if (!std::filesystem::is_regular_file(place, error)) {
    const bool exists = std::filesystem::exists(place, error);
    std::cerr << "bxvbwiz: " << path << (exists ? " is no regular file\n" : " does not exist\n");
    return false;
  }
  std::ifstream file(place, std::ios::binary);
  bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  if (!file.is_open() || file.bad()) {
    std::cerr << "bxvbwiz: " << path << " cannot be read\n";
    return false;
  }
  return true;
}

Inspection InspectBytes(const std::string& path, const std::string& bytes, const CodePage& codePage) {
  Inspection inspection;
  inspection.file = path;
  EXEFile file(codePage);
  try {
    file.OpenBytes(bytes, false);
  } catch (const RuntimeError& error) {
    inspection.reason = error.what();
  }
  inspection.valid = file.IsValid;
  inspection.exeType = file.ExeType;
  inspection.errorType = file.ErrorType;
  for (const Dependency& import : file.Dependencies) inspection.imports.push_back(import.ShortName);
  for (const std::string& name : file.Exports) inspection.exports.push_back(name);
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
  std::string bytes;
  for (const std::string& path : options.files) {
    if (ReadBytes(path, bytes)) {
      inspections.push_back(InspectBytes(path, bytes, *codePage));
    } else {
      code = kExitNotFinished;
    }
  }
  if (options.json) {
    PrintJson(inspections);
  } else {
    PrintText(inspections);
  }
  return code;
}

}  // namespace bxvbwiz
