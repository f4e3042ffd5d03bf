#include "wizard/SetupPaths.h"

#include "project/basGlobal.h"
#include "setupgen/Report.h"
#include "setupgen/SetupFiles.h"
#include "sysinfo/Key.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// Of a file's path and a folder's, with the end that the system adds.
constexpr std::size_t kLongestFile = 260;
constexpr std::size_t kLongestFolder = 248;

std::string FolderOfProduct(Platform& platform, RegistryHandle root, const char* path, const char* name) {
  const auto key = Key::Root(platform.registry, root)->OpenSubKeyForReading(path);
  const auto value = key == nullptr ? nullptr : key->Values().Item(std::string(name));
  const std::string folder = value == nullptr ? "" : value->Text();
  return folder.empty() ? "" : FixPath(folder);
}

// A path that the setup project would have, and the length that it must not reach.
struct LimitedPath {
  std::string path;
  std::size_t limit;
};

// Adds what a copy of the folder `source` in `target` would have; both end in a backslash.
void AddCopies(FileSystem& files, const std::string& source, const std::string& target,
               std::vector<LimitedPath>& paths) {
  std::vector<FoundFile> found;
  if (files.Find(source + "*.*", found) != SystemError::Success) return;
  for (const FoundFile& file : found) {
    if (file.name == "." || file.name == "..") continue;
    const bool isFolder = (file.attributes & kAttributeDirectory) != 0;
    paths.push_back({target + file.name, isFolder ? kLongestFolder : kLongestFile});
    if (isFolder) AddCopies(files, source + file.name + "\\", target + file.name + "\\", paths);
  }
}

}  // namespace

std::optional<NameRefusal> RefusalOfLength(Platform& platform, const Analysis& analysis,
                                           const std::string& name) {
  const std::string data = FolderOfProduct(platform, kHKeyCurrentUser, kBorvexMainKey, "DataFile");
  if (data.empty()) return std::nullopt;
  const std::string folder = data + name + "\\";
  std::vector<LimitedPath> paths = {{data + name, kLongestFolder},
                                    {folder + name + ".bxp", kLongestFile},
                                    {ComponentsFile(folder), kLongestFile},
                                    {LeftToDoFile(folder), kLongestFile}};
  for (const CFile& file : analysis.Files())
    paths.push_back({GroupsFolder(folder) + file.FileGroup + ".fgl", kLongestFile});
  const std::string source = FolderOfProduct(platform, kHKeyLocalMachine, kBorvexWizardKey, "TemplateSource");
  if (!source.empty()) AddCopies(platform.files, source, folder, paths);
  for (const auto& [path, limit] : paths) {
    if (CharacterCount(path) >= limit)
      return NameRefusal{TextId::IllegalApplicationName, {TextId::NameTooLong, {name, path}}};
  }
  return std::nullopt;
}

}  // namespace bxvbwiz
