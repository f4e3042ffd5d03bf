#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "cli/CapturedMachine.h"
#include "platform/Forwarding.h"

// Wrappers of the seam that let a whole run go through on a machine, note what it asks for in a captured
// machine, and write into a scratch machine what the run writes into the folders that it makes itself.
namespace bxvbwiz {

class CaptureRegistry : public ForwardingRegistry {
 public:
  CaptureRegistry(Registry& source, Registry& captured) : ForwardingRegistry(source), captured_(captured) {}

  SystemError OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                      RegistryHandle& opened) override;
  SystemError CloseKey(RegistryHandle key) override;
  SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                        std::uint32_t access, RegistryHandle& opened) override;
  SystemError EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name) override;
  SystemError EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name,
                        std::uint32_t& type) override;
  SystemError QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                         RegistryData& data) override;

 private:
  SystemError Opened(SystemError error, RegistryHandle key, const std::string& path, RegistryHandle opened);
  RegistryHandle InCaptured(RegistryHandle key) const;
  void TakeValue(RegistryHandle key, const std::string& name);

  Registry& captured_;
  std::unordered_map<RegistryHandle, RegistryHandle> keys_;  // the captured machine's, by the source's
};

class CaptureFiles : public ForwardingFileSystem {
 public:
  CaptureFiles(FileSystem& source, CapturedMachine& captured, CapturedMachine& scratch)
      : ForwardingFileSystem(source), captured_(captured), scratch_(scratch) {}

  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override;
  FileHandle Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                  std::uint32_t disposition, std::uint32_t attributes) override;
  bool Close(FileHandle file) override;
  bool SetTimes(FileHandle file, FileTime time) override;
  SystemError Read(const std::string& path, std::string& bytes) override;
  SystemError Write(const std::string& path, std::string_view bytes, WriteMode mode) override;
  SystemError Map(const std::string& path, std::unique_ptr<FileView>& view) override;
  SystemError Copy(const std::string& source, const std::string& target) override;
  void CopyFiles(const std::string& source, const std::string& target, const std::vector<std::string>& names,
                 const std::function<void(std::size_t, SystemError)>& done) override {
    FileSystem::CopyFiles(source, target, names, done);
  }
  SystemError Rename(const std::string& source, const std::string& target) override;
  SystemError Delete(const std::string& path) override;
  SystemError MakeDirectory(const std::string& path) override;
  SystemError SetAttributes(const std::string& path, std::uint32_t attributes) override;
  std::string Search(const std::string& name) override;
  SystemError ChangeDirectory(const std::string& path) override;

  // Takes a file whole that is read by other calls.
  void Take(const std::string& path);
  // Whether the run made the folder that the path lies in, so that it is on the scratch machine.
  bool IsMade(const std::string& path);

 private:
  std::string Full(const std::string& path);
  FileSystem& Scratch() { return scratch_.platform().files; }

  CapturedMachine& captured_;
  CapturedMachine& scratch_;
  std::vector<std::string> made_;  // in upper case, without a backslash at the end
  std::unordered_map<FileHandle, FileHandle>
      open_;              // files of the scratch machine, by the handle that was given
  FileHandle next_ = -2;  // downwards: handles of the source are positive
};

class CaptureProfileStrings : public ForwardingProfileStrings {
 public:
  CaptureProfileStrings(Platform& source, CaptureFiles& files, ProfileStrings& scratch)
      : ForwardingProfileStrings(source.profiles), facts_(source.facts), files_(files), scratch_(scratch) {}

  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string& file) override;
  bool WriteString(ProfileText section, ProfileText key, ProfileText value, const std::string& file) override;
  bool WriteSection(ProfileText section, ProfileText entries, const std::string& file) override;
  std::vector<std::string> Unreadable() override;
  std::vector<std::string> Flush() override;

 private:
  SystemFacts& facts_;
  CaptureFiles& files_;
  ProfileStrings& scratch_;
};

}  // namespace bxvbwiz
