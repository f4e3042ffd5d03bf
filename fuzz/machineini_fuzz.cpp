#include <cstddef>
#include <cstdint>
#include <string>

#include "machine/Machine.h"
#include "machine/MachineIni.h"

// A machine.ini of any bytes is read or refused with a message, and what was read is usable.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace bxvbwiz;
  try {
    const MachineIni ini = ReadMachineIni({reinterpret_cast<const char*>(data), size}, "machine.ini");
    if (!ini.codePage || ini.windowsFolder.size() < 3 || ini.systemFolder.size() < 3) __builtin_trap();
    for (const auto& [program, host] : ini.programs) {
      if (program.size() < 3 || host.empty()) __builtin_trap();
    }
  } catch (const MachineError& error) {
    if (std::string(error.what()).find("machine.ini") == std::string::npos) __builtin_trap();
  }
  return 0;
}
