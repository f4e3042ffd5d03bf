#include <windows.h>

#include <filesystem>

#include "contract/ContractPlatform.h"
#include "win32/Win32Platform.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

class ContractWin32 : public ContractPlatform {
 public:
  ContractWin32() {
    Remove();
    fs::create_directory(Folder());
    fs::create_directory("C:\\My Tools");
    fs::copy_file(BXVBWIZ_CHILD_PROGRAM, ChildProgram(), fs::copy_options::overwrite_existing);
    platform().files.ChangeDirectory(Folder());
  }
  ~ContractWin32() override {
    platform().files.ChangeDirectory("C:\\");
    Remove();
  }
  Platform& platform() override { return platform_.platform(); }
  std::string Folder() const override { return "C:\\bxvbwiz contract"; }
  bool IsWine() const override {
    return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
  }

 private:
  void Remove() {
    std::error_code ignored;
    for (fs::recursive_directory_iterator entry(Folder(), ignored), end; entry != end;
         entry.increment(ignored))
      fs::permissions(entry->path(), fs::perms::all, ignored);
    fs::remove_all(Folder(), ignored);
  }

  Win32Platform platform_;
};

}  // namespace

std::unique_ptr<ContractPlatform> MakeContractPlatform() {
  return std::make_unique<ContractWin32>();
}

}  // namespace bxvbwiz
