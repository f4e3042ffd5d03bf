#pragma once

#include <map>

#include "platform/CallHook.h"
#include "platform/FileSystem.h"

namespace bxvbwiz {

// Passes every call on, past a hook. An open file has a handle of its own here.
class ForwardingFileSystem : public FileSystem, protected Hooked {
 public:
  explicit ForwardingFileSystem(FileSystem& inner, CallHook& hook = NoHook()) : Hooked(hook), inner_(inner) {}
  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    return Pass({"Find", pattern}, [&] { return For(pattern).Find(pattern, found); });
  }
  FileHandle Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                  std::uint32_t disposition, std::uint32_t attributes) override {
    FileSystem& files = For(path);
    const FileHandle opened = Ask({"Open", path}, kInvalidFile,
                                  [&] { return files.Open(path, access, share, disposition, attributes); });
    if (opened == kInvalidFile) return opened;
    open_.emplace(++last_, OpenFile{files, opened, path});
    return last_;
  }
  bool Close(FileHandle file) override {
    const auto found = open_.find(file);
    if (found == open_.end()) return false;
    const OpenFile closing = found->second;
    open_.erase(found);
    // The system lets go of it in any case.
    const bool closed = closing.files.Close(closing.handle);
    return Ask({"Close", closing.path}, false, [&] { return closed; });
  }
  bool SetTimes(FileHandle file, FileTime time) override {
    const auto found = open_.find(file);
    if (found == open_.end()) return false;
    const OpenFile& open = found->second;
    return Ask({"SetTimes", open.path}, false, [&] { return open.files.SetTimes(open.handle, time); });
  }
  SystemError Read(const std::string& path, std::string& bytes) override {
    return Pass({"Read", path}, [&] { return For(path).Read(path, bytes); });
  }
  SystemError Write(const std::string& path, std::string_view bytes, WriteMode mode) override {
    return Pass({"Write", path}, [&] { return For(path).Write(path, bytes, mode); });
  }
  SystemError Map(const std::string& path, std::unique_ptr<FileView>& view) override {
    return Pass({"Map", path}, [&] { return For(path).Map(path, view); });
  }
  SystemError Copy(const std::string& source, const std::string& target) override {
    return Pass({"Copy", source}, [&] { return inner_.Copy(source, target); });
  }
  // A hook that does not let this through gets one Copy after the other. A class that changes Copy changes
  // this too.
  void CopyFiles(const std::string& source, const std::string& target, const std::vector<std::string>& names,
                 const std::function<void(std::size_t, SystemError)>& done) override {
    const bool together = hook_.Before({"CopyFiles", source}) == SystemError::Success;
    together ? inner_.CopyFiles(source, target, names, done)
             : FileSystem::CopyFiles(source, target, names, done);
  }
  SystemError Rename(const std::string& source, const std::string& target) override {
    return Pass({"Rename", target}, [&] { return For(source).Rename(source, target); });
  }
  SystemError Delete(const std::string& path) override {
    return Pass({"Delete", path}, [&] { return For(path).Delete(path); });
  }
  SystemError MakeDirectory(const std::string& path) override {
    return Pass({"MakeDirectory", path}, [&] { return For(path).MakeDirectory(path); });
  }
  SystemError SetAttributes(const std::string& path, std::uint32_t attributes) override {
    return Pass({"SetAttributes", path}, [&] { return For(path).SetAttributes(path, attributes); });
  }
  std::string Search(const std::string& name) override {
    return Ask({"Search", name}, std::string(), [&] { return inner_.Search(name); });
  }
  SystemError FullPath(const std::string& path, std::string& full) override {
    return Pass({"FullPath", path}, [&] { return inner_.FullPath(path, full); });
  }
  std::string CurrentDirectory() override {
    return Ask({"CurrentDirectory"}, std::string(), [&] { return inner_.CurrentDirectory(); });
  }
  SystemError ChangeDirectory(const std::string& path) override {
    return Pass({"ChangeDirectory", path}, [&] { return inner_.ChangeDirectory(path); });
  }

 protected:
  // Where the file of this path, or the files of this pattern, are.
  virtual FileSystem& For(const std::string& /*path*/) { return inner_; }

 private:
  struct OpenFile {
    FileSystem& files;
    FileHandle handle;
    std::string path;
  };

  FileSystem& inner_;
  std::map<FileHandle, OpenFile> open_;
  FileHandle last_ = 0;
};

}  // namespace bxvbwiz
