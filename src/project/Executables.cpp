#include "project/Executables.h"

#include "project/EXEFile.h"
#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr const char* kRegisterFunction = "DllRegisterServer";

bool ExportsDecorated(const EXEFile& file) {
  for (const std::string& name : file.Exports) {
    if (UpperCase(name).find("DLLREGISTERSERVER") != std::string::npos) return true;
  }
  return false;
}

}  // namespace

const ExecutableFacts& Executables::Of(const std::string& path) {
  const std::string key = UpperCase(path);
  const auto known = facts_.find(key);
  return known != facts_.end() ? known->second : facts_.emplace(key, Read(path)).first->second;
}

ExecutableFacts Executables::Read(const std::string& path) {
  ExecutableFacts facts;
  std::unique_ptr<FileView> view;
  if (path.empty() || platform_.files.Map(path, view) != SystemError::Success || !view) return facts;
  facts.isReadable = true;
  // Where the imports lie is of no interest here, and the system's own belong to the facts.
  EXEFile file(platform_, nullptr);
  try {
    facts.isOpened = file.OpenBytes(view->Bytes(), false);
  } catch (const RuntimeError&) {
    // No executable, or none that says what it imports.
  }
  facts.exeType = file.ExeType;
  facts.machine = file.Machine;
  facts.size = file.FileSize;
  facts.linkTime = file.LinkTime;
  facts.exportsRegistration = file.IsExported(kRegisterFunction);
  facts.registersUnderOtherName = !facts.exportsRegistration && ExportsDecorated(file);
  if (facts.isOpened) {
    for (const Dependency& import : file.Dependencies) facts.imports.push_back(import.ShortName);
  }
  return facts;
}

}  // namespace bxvbwiz
