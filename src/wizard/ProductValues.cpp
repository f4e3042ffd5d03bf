#include "wizard/ProductValues.h"

#include "project/basGlobal.h"
#include "support/basFile.h"
#include "sysinfo/Key.h"

namespace bxvbwiz {
namespace {

bool IsFullPath(const std::string& path) {
  if (!IsAbsolutePath(path)) return false;
  return path[1] != ':' || (path.size() > 2 && (path[2] == '\\' || path[2] == '/'));
}

std::string ProductFolder(Platform& platform, User& user, RegistryHandle root, const std::string& path,
                          const std::string& valueName) {
  const auto rootKey = Key::Root(platform.registry, root);
  const auto key = rootKey->OpenSubKeyForReading(path);
  if (key == nullptr) EndWithMissingKey(user, platform.strings, rootKey->Name() + "\\" + path);
  const std::string folder = key->RequiredText(valueName);
  // A folder without a drive would be one of the current drive, which no one chose.
  if (!IsFullPath(folder)) {
    throw RuntimeError(kErrorObjectNotSet, "Object variable or With block variable not set: the value " +
                                               valueName + " of the registry key " + key->FullPath() +
                                               " is not the full path of a folder");
  }
  return FixPath(folder);
}

}  // namespace

std::string DataFolder(Platform& platform, User& user) {
  return ProductFolder(platform, user, RegConstants::HKeyCurrentUser, kBorvexMainKey, "DataFile");
}

std::string TemplateFolder(Platform& platform, User& user) {
  return ProductFolder(platform, user, RegConstants::HKeyLocalMachine, kBorvexWizardKey, "TemplateSource");
}

}  // namespace bxvbwiz
