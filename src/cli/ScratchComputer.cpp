#include "cli/ScratchComputer.h"

#include <algorithm>
#include <optional>
#include <random>

#include "cli/MachineCopy.h"
#include "cli/Options.h"
#include "platform/Forwarding.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

// Makes a folder in a temporary place, which is removed with the last pointer to its path.
std::shared_ptr<const fs::path> MakeTemporaryFolder() {
  std::random_device random;
  fs::path folder;
  do {
    folder = fs::temp_directory_path() / ("bxvbwiz-" + std::to_string(random()));
  } while (!fs::create_directory(folder));
  return {new fs::path(folder), [](const fs::path* made) {
            std::error_code ignored;
            fs::remove_all(*made, ignored);
            delete made;
          }};
}

// What a run writes into the folders that it makes itself goes into a scratch machine.
class ScratchFiles : public ForwardingFileSystem {
 public:
  ScratchFiles(FileSystem& source, MachineCopy& scratch, CallHook& hook)
      : ForwardingFileSystem(source, hook), machine_(scratch), scratch_(scratch.platform().files) {}

  SystemError Copy(const std::string& source, const std::string& target) override {
    if (!IsMade(target)) return ForwardingFileSystem::Copy(source, target);
    std::string bytes;
    SystemError error = Read(source, bytes);
    if (error == SystemError::Success) error = scratch_.Write(target, bytes, WriteMode::Create);
    const bool isReadOnly =
        error == SystemError::Success && (Attributes(source).value_or(0) & kAttributeReadOnly) != 0;
    return isReadOnly ? scratch_.SetAttributes(target, kAttributeReadOnly) : error;
  }
  void CopyFiles(const std::string& source, const std::string& target, const std::vector<std::string>& names,
                 const std::function<void(std::size_t, SystemError)>& done) override {
    for (std::size_t i = 0; i < names.size(); ++i) done(i, Copy(source + names[i], target + names[i]));
  }
  SystemError MakeDirectory(const std::string& path) override {
    const std::string full = FullFolder(path);
    if (!IsMade(full)) {
      // What the machine would say, without asking it to make the folder.
      if (Attributes(full)) return SystemError::AlreadyExists;
      const std::string parent = FolderOf(full);
      const bool isRoot = parent.size() == 2;
      if (!isRoot && (Attributes(parent).value_or(0) & kAttributeDirectory) == 0)
        return SystemError::PathNotFound;
      machine_.AddFolder(parent);
      made_.push_back(UpperCase(full));
    }
    return scratch_.MakeDirectory(full);
  }
  // Makes a folder that is missing, with those above it.
  void MakeFolder(const std::string& path) {
    const std::string full = FullFolder(path);
    if (IsMade(full) || Attributes(full)) return;
    machine_.AddFolder(full);
    made_.push_back(UpperCase(full));
  }
  // Whether the run made the folder that the path lies in, so that it is on the scratch machine.
  bool IsMade(const std::string& path) {
    const std::string full = UpperCase(Full(path));
    return std::any_of(made_.begin(), made_.end(), [&](const std::string& folder) {
      return StartsWith(full, folder) && (full.size() == folder.size() || full[folder.size()] == '\\');
    });
  }

 protected:
  FileSystem& For(const std::string& path) override {
    return IsMade(path) ? scratch_ : ForwardingFileSystem::For(path);
  }

 private:
  std::string Full(const std::string& path) {
    std::string full;
    return FullPath(path, full) == SystemError::Success ? full : path;
  }
  std::string FullFolder(const std::string& path) {
    return Full(path.back() == '\\' ? FolderOf(path) : path);
  }
  // Of a file or folder; nothing when there is none.
  std::optional<std::uint32_t> Attributes(const std::string& path) {
    std::vector<FoundFile> found;
    if (Find(path, found) != SystemError::Success) return std::nullopt;
    return found.front().attributes;
  }

  MachineCopy& machine_;
  FileSystem& scratch_;
  std::vector<std::string> made_;  // in upper case, without a backslash at the end
};

class ScratchProfileStrings : public ForwardingProfileStrings {
 public:
  ScratchProfileStrings(ProfileStrings& source, ScratchFiles& files, ProfileStrings& scratch, CallHook& hook)
      : ForwardingProfileStrings(source, hook), files_(files), scratch_(scratch) {}

  std::vector<std::string> Flush() override {
    std::vector<std::string> files = ForwardingProfileStrings::Flush();
    for (std::string& file : scratch_.Flush()) files.push_back(std::move(file));
    return files;
  }

 protected:
  ProfileStrings& For(const std::string& file) override {
    return files_.IsMade(file) ? scratch_ : ForwardingProfileStrings::For(file);
  }

 private:
  ScratchFiles& files_;
  ProfileStrings& scratch_;
};

// The settings of the log are those of `source`.
class ScratchComputer : public Computer {
 public:
  ScratchComputer(Computer& source, bool makesFolders, Recorder* recorder)
      : source_(source),
        makesFolders_(makesFolders),
        recorder_(recorder),
        hook_(recorder == nullptr ? NoHook() : *recorder),
        scratch_(*folder_, source.platform()),
        registry_(source.platform().registry, hook_),
        files_(source.platform().files, scratch_, hook_),
        profiles_(source.platform().profiles, files_, scratch_.platform().profiles, hook_),
        platform_(WithParts(source.platform(), registry_, files_, profiles_)) {}

  Platform& platform() override { return platform_; }
  std::string ProjectPath(const std::string& project) override { return source_.ProjectPath(project); }
  void MakeFolder(const std::string& path) override {
    if (makesFolders_) files_.MakeFolder(path);
  }
  std::string HostPath(const std::string&) override { return {}; }
  void RegisterProgram(const std::string& path) override { source_.RegisterProgram(path); }
  void Save() override {
    if (recorder_ == nullptr) return;
    source_.Save();
    recorder_->Save();
  }
  int ExitCode(int code) const override {
    const bool hasRun = code == kExitFinished || code == kExitIncomplete;
    return hasRun && recorder_ != nullptr && !recorder_->IsComplete() ? kExitNotFinished : code;
  }
  std::vector<Finding> Found() const override { return source_.Found(); }

 private:
  Computer& source_;
  const bool makesFolders_;
  Recorder* const recorder_;
  CallHook& hook_;
  const std::shared_ptr<const fs::path> folder_ = MakeTemporaryFolder();
  MachineCopy scratch_;
  ForwardingRegistry registry_;
  ScratchFiles files_;
  ScratchProfileStrings profiles_;
  Platform platform_;
};

}  // namespace

std::unique_ptr<Computer> MakeScratchComputer(Computer& source, bool makesFolders, Recorder* recorder) {
  return std::make_unique<ScratchComputer>(source, makesFolders, recorder);
}

}  // namespace bxvbwiz
