#pragma once

#include <string>
#include <vector>

#include "cli/CapturedMachine.h"
#include "platform/Forwarding.h"

// What a run writes into the folders that it makes itself goes into a scratch machine, where it finds it
// again. The machine that it runs on stays as it is.
namespace bxvbwiz {

class ScratchFiles : public ForwardingFileSystem {
 public:
  ScratchFiles(FileSystem& source, CapturedMachine& scratch, CallHook& hook)
      : ForwardingFileSystem(source, hook), scratch_(scratch) {}

  SystemError Copy(const std::string& source, const std::string& target) override;
  void CopyFiles(const std::string& source, const std::string& target, const std::vector<std::string>& names,
                 const std::function<void(std::size_t, SystemError)>& done) override {
    for (std::size_t i = 0; i < names.size(); ++i) done(i, Copy(source + names[i], target + names[i]));
  }
  SystemError MakeDirectory(const std::string& path) override;
  // Makes a folder that is missing, with those above it.
  void MakeFolder(const std::string& path);

  // Whether the run made the folder that the path lies in, so that it is on the scratch machine.
  bool IsMade(const std::string& path);

 protected:
  FileSystem& For(const std::string& path) override {
    return IsMade(path) ? Scratch() : ForwardingFileSystem::For(path);
  }

 private:
  std::string Full(const std::string& path);
  FileSystem& Scratch() { return scratch_.platform().files; }

  CapturedMachine& scratch_;
  std::vector<std::string> made_;  // in upper case, without a backslash at the end
};

class ScratchProfileStrings : public ForwardingProfileStrings {
 public:
  ScratchProfileStrings(ProfileStrings& source, ScratchFiles& files, ProfileStrings& scratch, CallHook& hook)
      : ForwardingProfileStrings(source, hook), files_(files), scratch_(scratch) {}

  std::vector<std::string> Flush() override;

 protected:
  ProfileStrings& For(const std::string& file) override {
    return files_.IsMade(file) ? scratch_ : ForwardingProfileStrings::For(file);
  }

 private:
  ScratchFiles& files_;
  ProfileStrings& scratch_;
};

}  // namespace bxvbwiz
