#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Forwarding.h"

namespace bxvbwiz {

// Files whose failed look-ups are not lost. Whoever looks for a file or maps it takes every failure for a
// missing file; one that leaves open whether the file is there is told.
class CheckedFileSystem : public ForwardingFileSystem {
 public:
  explicit CheckedFileSystem(FileSystem& inner) : ForwardingFileSystem(inner) {}

  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override;
  SystemError Map(const std::string& path, std::unique_ptr<FileView>& view) override;
};

// The system's folders, told when the system does not name them.
class CheckedFacts : public SystemFacts {
 public:
  explicit CheckedFacts(SystemFacts& inner) : inner_(inner) {}

  VersionInfo Version() override { return inner_.Version(); }
  std::string WindowsDirectory(std::size_t size) override;
  std::string SystemDirectory(std::size_t size) override;
  std::uint32_t UserLanguage() override { return inner_.UserLanguage(); }

 private:
  SystemFacts& inner_;
};

}  // namespace bxvbwiz
