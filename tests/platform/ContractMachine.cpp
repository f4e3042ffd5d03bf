#include "platform/ContractPlatform.h"
#include "TestMachine.h"

namespace bxvbwiz {
namespace {

class ContractMachine : public ContractPlatform {
 public:
  ContractMachine() {
    machine_.Write("drive_c/work/x", "");
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
