#include "contract/ContractPlatform.h"
#include "TestMachine.h"

namespace bxvbwiz {
namespace {

class ContractMachine : public ContractPlatform {
 public:
  ContractMachine() {
    machine_.Write("machine.ini",
                   "[Folders]\r\nWindows=C:\\windows\r\nSystem=C:\\windows\\system32\r\n[Programs]\r\n" +
                       ChildProgram() + "=" BXVBWIZ_CHILD_PROGRAM "\r\n");
    machine_.Write("drive_c/work/x", "");
    machine_.Write("drive_c/My Tools/child.exe", "");
    machine_.platform().files.Delete("C:\\work\\x");
    machine_.platform().files.ChangeDirectory(Folder());
  }
  Platform& platform() override { return machine_.platform(); }
  std::string Folder() const override { return "C:\\work"; }

 private:
  TestMachine machine_;
};

}  // namespace

std::unique_ptr<ContractPlatform> MakeContractPlatform() {
  return std::make_unique<ContractMachine>();
}

}  // namespace bxvbwiz
