#include <cstdlib>

#include "project/EXEFile.h"
#include "TestMachine.h"

// Reads the input as an executable. Only the reader's own error may come out of it, and no more names than
// the file can pay for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace bxvbwiz;
  static TestMachine machine;
  EXEFile file(machine.platform(), nullptr);
  bool opened = false;
  try {
    opened = file.OpenBytes(std::string_view(reinterpret_cast<const char*>(data), size), false);
  } catch (const RuntimeError& error) {
    if (error.Number() != kExeFileError || file.ErrorType == kExeErrorNone) std::abort();
  }
  if (opened && file.ErrorType != kExeErrorNone) std::abort();
  std::size_t names = 0;
  for (const Dependency& import : file.Dependencies) names += import.ShortName.size() + 1;
  for (const std::string& name : file.Exports) names += name.size() + 1;
  // A byte of the code page takes at most three in UTF-8.
  if (names > 3 * (size + 0x10000)) std::abort();
  return 0;
}
