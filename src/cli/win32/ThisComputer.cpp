#include "cli/Computer.h"
#include "win32/Win32Platform.h"

namespace bxvbwiz {
namespace {

class ThisComputer : public Computer {
 public:
  Platform& platform() override { return platform_.platform(); }
  std::string ProjectPath(const std::string& project) override {
    std::string full;
    return platform().files.FullPath(project, full) == SystemError::Success ? full : std::string();
  }
  void MakeFolder(const std::string&) override {}
  std::string HostPath(const std::string& windowsPath) override { return windowsPath; }
  void Save() override {}  // the system stores every write immediately

 private:
  Win32Platform platform_;
};

}  // namespace

std::unique_ptr<Computer> OpenThisComputer() {
  return std::make_unique<ThisComputer>();
}

}  // namespace bxvbwiz
