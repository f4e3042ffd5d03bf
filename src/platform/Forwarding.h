#pragma once

#include "platform/Platform.h"

// Wrappers that pass every call on. Whoever watches or breaks some calls overrides those only.
namespace bxvbwiz {

class ForwardingRegistry : public Registry {
 public:
  explicit ForwardingRegistry(Registry& inner) : inner_(inner) {}
  SystemError OpenKey(RegistryHandle key, const std::string& path, std::uint32_t access,
                      RegistryHandle& opened) override {
    return inner_.OpenKey(key, path, access, opened);
  }
  SystemError CloseKey(RegistryHandle key) override { return inner_.CloseKey(key); }
  SystemError CreateKey(RegistryHandle key, const std::string& path, std::uint32_t options,
                        std::uint32_t access, RegistryHandle& opened) override {
    return inner_.CreateKey(key, path, options, access, opened);
  }
  SystemError DeleteKey(RegistryHandle key, const std::string& name) override {
    return inner_.DeleteKey(key, name);
  }
  SystemError EnumKey(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name) override {
    return inner_.EnumKey(key, index, size, name);
  }
  SystemError EnumValue(RegistryHandle key, std::uint32_t index, std::size_t size, std::string& name,
                        std::uint32_t& type) override {
    return inner_.EnumValue(key, index, size, name, type);
  }
  SystemError QueryValue(RegistryHandle key, const std::string& name, std::size_t size,
                         RegistryData& data) override {
    return inner_.QueryValue(key, name, size, data);
  }
  SystemError SetValue(RegistryHandle key, const std::string& name, const RegistryData& data) override {
    return inner_.SetValue(key, name, data);
  }
  SystemError DeleteValue(RegistryHandle key, const std::string& name) override {
    return inner_.DeleteValue(key, name);
  }

 private:
  Registry& inner_;
};

// Whoever changes Copy has to say what CopyFiles does: FileSystem's is one Copy after the other.
class ForwardingFileSystem : public FileSystem {
 public:
  explicit ForwardingFileSystem(FileSystem& inner) : inner_(inner) {}
  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    return inner_.Find(pattern, found);
  }
  FileHandle Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                  std::uint32_t disposition, std::uint32_t attributes) override {
    return inner_.Open(path, access, share, disposition, attributes);
  }
  bool Close(FileHandle file) override { return inner_.Close(file); }
  bool SetTimes(FileHandle file, FileTime time) override { return inner_.SetTimes(file, time); }
  SystemError Read(const std::string& path, std::string& bytes) override { return inner_.Read(path, bytes); }
  SystemError Write(const std::string& path, std::string_view bytes, WriteMode mode) override {
    return inner_.Write(path, bytes, mode);
  }
  SystemError Map(const std::string& path, std::unique_ptr<FileView>& view) override {
    return inner_.Map(path, view);
  }
  SystemError Copy(const std::string& source, const std::string& target) override {
    return inner_.Copy(source, target);
  }
  void CopyFiles(const std::string& source, const std::string& target, const std::vector<std::string>& names,
                 const std::function<void(std::size_t, SystemError)>& done) override {
    inner_.CopyFiles(source, target, names, done);
  }
  SystemError Rename(const std::string& source, const std::string& target) override {
    return inner_.Rename(source, target);
  }
  SystemError Delete(const std::string& path) override { return inner_.Delete(path); }
  SystemError MakeDirectory(const std::string& path) override { return inner_.MakeDirectory(path); }
  SystemError SetAttributes(const std::string& path, std::uint32_t attributes) override {
    return inner_.SetAttributes(path, attributes);
  }
  std::string Search(const std::string& name) override { return inner_.Search(name); }
  SystemError FullPath(const std::string& path, std::string& full) override {
    return inner_.FullPath(path, full);
  }
  std::string CurrentDirectory() override { return inner_.CurrentDirectory(); }
  SystemError ChangeDirectory(const std::string& path) override { return inner_.ChangeDirectory(path); }

 private:
  FileSystem& inner_;
};

class ForwardingProfileStrings : public ProfileStrings {
 public:
  explicit ForwardingProfileStrings(ProfileStrings& inner) : inner_(inner) {}
  std::string GetString(ProfileText section, ProfileText key, std::string_view defaultValue, std::size_t size,
                        const std::string& file) override {
    return inner_.GetString(section, key, defaultValue, size, file);
  }
  bool WriteString(ProfileText section, ProfileText key, ProfileText value,
                   const std::string& file) override {
    return inner_.WriteString(section, key, value, file);
  }
  bool WriteSection(ProfileText section, ProfileText entries, const std::string& file) override {
    return inner_.WriteSection(section, entries, file);
  }
  std::vector<std::string> Unreadable() override { return inner_.Unreadable(); }
  std::vector<std::string> Flush() override { return inner_.Flush(); }

 private:
  ProfileStrings& inner_;
};

class ForwardingProcesses : public Processes {
 public:
  explicit ForwardingProcesses(Processes& inner) : inner_(inner) {}
  std::unique_ptr<Process> Start(const std::string& commandLine) override {
    return inner_.Start(commandLine);
  }

 private:
  Processes& inner_;
};

}  // namespace bxvbwiz
