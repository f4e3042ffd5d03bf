#pragma once

#include "platform/FileSystem.h"

namespace bxvbwiz {

class Win32FileSystem : public FileSystem {
 public:
  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override;
  FileHandle Open(const std::string& path, std::uint32_t access, std::uint32_t share,
                  std::uint32_t disposition, std::uint32_t attributes) override;
  bool Close(FileHandle file) override;
  bool SetTimes(FileHandle file, FileTime time) override;
  SystemError Read(const std::string& path, std::string& bytes) override;
  SystemError Write(const std::string& path, std::string_view bytes, WriteMode mode) override;
  SystemError Map(const std::string& path, std::unique_ptr<FileView>& view) override;
  SystemError Copy(const std::string& source, const std::string& target) override;
  SystemError Rename(const std::string& source, const std::string& target) override;
  SystemError Delete(const std::string& path) override;
  SystemError MakeDirectory(const std::string& path) override;
  SystemError SetAttributes(const std::string& path, std::uint32_t attributes) override;
  std::string Search(const std::string& name) override;
  SystemError FullPath(const std::string& path, std::string& full) override;
  std::string CurrentDirectory() override;
  SystemError ChangeDirectory(const std::string& path) override;
};

}  // namespace bxvbwiz
