#pragma once

#include <filesystem>
#include <string>

#include "cli/CapturedMachine.h"
#include "cli/Computer.h"
#include "cli/ScratchWrites.h"

namespace bxvbwiz {

// A folder in a temporary place, removed at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// A computer on which a run makes a setup project that is thrown away: `source`, with the folders that the
// run makes in a scratch machine. The settings of the log are those of `source`.
class ScratchComputer : public Computer {
 public:
  // Both must outlive this. `hook` sees what the run asks the files and profile strings for.
  ScratchComputer(Computer& source, CallHook& hook)
      : source_(source),
        scratch_(folder_.Path(), source.platform()),
        files_(source.platform().files, scratch_, hook),
        profiles_(source.platform().profiles, files_, scratch_.platform().profiles, hook),
        platform_(WithParts(source.platform(), files_, profiles_)) {}

  Platform& platform() override { return platform_; }
  std::string ProjectPath(const std::string& project) override { return source_.ProjectPath(project); }
  void MakeFolder(const std::string& path) override { files_.MakeFolder(path); }
  std::string HostPath(const std::string&) override { return {}; }  // the setup project is thrown away
  void Save() override {}

 private:
  Computer& source_;
  TemporaryFolder folder_;
  CapturedMachine scratch_;
  ScratchFiles files_;
  ScratchProfileStrings profiles_;
  Platform platform_;
};

}  // namespace bxvbwiz
