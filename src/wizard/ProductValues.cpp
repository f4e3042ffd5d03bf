#include "wizard/ProductValues.h"

#include "project/basGlobal.h"
#include "support/basFile.h"
#include "sysinfo/Key.h"

namespace bxvbwiz {
namespace {

std::string ProductFolder(Platform& platform, User& user, RegistryHandle root, const std::string& path,
                          const std::string& valueName) {
  const auto rootKey = Key::Root(platform.registry, root);
  const auto key = rootKey->OpenSubKeyForReading(path);
  if (key == nullptr) EndWithMissingKey(user, platform.strings, rootKey->Name() + "\\" + path);
  return FixPath(key->RequiredText(valueName));
}

}  // namespace

std::string DataFolder(Platform& platform, User& user) {
  return ProductFolder(platform, user, RegConstants::HKeyCurrentUser, kBorvexMainKey, "DataFile");
}

std::string TemplateFolder(Platform& platform, User& user) {
  return ProductFolder(platform, user, RegConstants::HKeyLocalMachine, kBorvexWizardKey, "TemplateSource");
}

}  // namespace bxvbwiz
