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

// Looks for the first path that is too long.
class PathFinder {
 public:
  PathFinder(Platform& platform, std::string folder) : platform_(platform), folder_(std::move(folder)) {}

  void Folder(const std::string& name) { Look(folder_ + name, kLongestFolder); }
  void File(const std::string& name) { Look(folder_ + name, kLongestFile); }
  void Tree(const std::string& source, const std::string& name) {
    std::vector<FoundFile> found;
    if (platform_.files.Find(source + "*.*", found) != SystemError::Success) return;
    for (const FoundFile& file : found) {
      if (file.name == "." || file.name == "..") continue;
      const bool isFolder = (file.attributes & kAttributeDirectory) != 0;
      Look(folder_ + name + file.name, isFolder ? kLongestFolder : kLongestFile);
      if (isFolder && tooLong_.empty()) Tree(source + file.name + "\\", name + file.name + "\\");
    }
  }
  const std::string& TooLong() const { return tooLong_; }

 private:
  void Look(const std::string& path, std::size_t limit) {
    if (tooLong_.empty() && CharacterCount(path) >= limit) tooLong_ = path;
  }

  Platform& platform_;
  const std::string folder_;
  std::string tooLong_;
};

}  // namespace

std::optional<NameRefusal> RefusalOfLength(Platform& platform, const Analysis& analysis,
                                           const std::string& name) {
  const std::string data =
      FolderOfProduct(platform, RegConstants::HKeyCurrentUser, kBorvexMainKey, "DataFile");
  if (data.empty()) return std::nullopt;
  PathFinder paths(platform, data + name);
  paths.Folder("");
  paths.File("\\" + name + ".bxp");
  paths.File(ComponentsFile("\\"));
  paths.File(LeftToDoFile("\\"));
  for (const CFile& file : analysis.Files()) paths.File(GroupsFolder("\\") + file.FileGroup + ".fgl");
  const std::string source =
      FolderOfProduct(platform, RegConstants::HKeyLocalMachine, kBorvexWizardKey, "TemplateSource");
  if (!source.empty() && paths.TooLong().empty()) paths.Tree(source, "\\");
  if (paths.TooLong().empty()) return std::nullopt;
  return NameRefusal{TextId::IllegalApplicationName, {TextId::NameTooLong, {name, paths.TooLong()}}};
}

}  // namespace bxvbwiz
