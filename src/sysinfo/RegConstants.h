#pragma once

#include <cstdint>

#include "platform/Registry.h"

namespace bxvbwiz {

// The numbers of the registry interface, as in winnt.h, winreg.h and winerror.h.
struct RegConstants {
  static constexpr std::int32_t Success = 0;
  static constexpr std::int32_t RegMaxDataSize = 2048;  // bytes of a value that the wizard reads
  static constexpr std::uint32_t RegNone = 0;
  static constexpr std::uint32_t RegSz = 1;
  static constexpr std::uint32_t RegExpandSz = 2;
  static constexpr std::uint32_t RegBinary = 3;
  static constexpr std::uint32_t RegDWord = 4;
  static constexpr std::uint32_t RegDWordLittleEndian = 4;
  static constexpr std::uint32_t RegDWordBigEndian = 5;
  static constexpr std::uint32_t RegLink = 6;
  static constexpr std::uint32_t RegMultiSz = 7;
  static constexpr std::uint32_t RegResourceList = 8;
  static constexpr std::uint32_t RegFullResourceDescriptor = 9;
  static constexpr std::uint32_t RegResourceRequirementsList = 10;
  static constexpr std::uint32_t RegOptionReserved = 0;
  static constexpr std::uint32_t RegOptionNonVolatile = 0;
  static constexpr std::uint32_t RegOptionVolatile = 1;
  static constexpr std::uint32_t RegOptionCreateLink = 2;
  static constexpr std::uint32_t RegOptionBackupRestore = 4;
  static constexpr std::uint32_t ReadControl = 0x20000;
  static constexpr std::uint32_t KeyQueryValue = 1;
  static constexpr std::uint32_t KeySetValue = 2;
  static constexpr std::uint32_t KeyCreateSubKey = 4;
  static constexpr std::uint32_t KeyEnumerateSubKeys = 8;
  static constexpr std::uint32_t KeyNotify = 16;
  static constexpr std::uint32_t KeyCreateLink = 32;
  static constexpr std::uint32_t KeyRead = KeyQueryValue + KeyEnumerateSubKeys + KeyNotify + ReadControl;
  static constexpr std::uint32_t KeyWrite = KeySetValue + KeyCreateSubKey + ReadControl;
  static constexpr std::uint32_t KeyExecute = KeyRead;
  // Without the delete, write-owner and write-DAC rights of the system's own mask, on purpose.
  static constexpr std::uint32_t KeyAllAccess = KeyQueryValue + KeySetValue + KeyCreateSubKey +
                                                KeyEnumerateSubKeys + KeyNotify + KeyCreateLink + ReadControl;
  static constexpr RegistryHandle HKeyClassesRoot = static_cast<RegistryHandle>(0x80000000U);
  static constexpr RegistryHandle HKeyCurrentUser = static_cast<RegistryHandle>(0x80000001U);
  static constexpr RegistryHandle HKeyLocalMachine = static_cast<RegistryHandle>(0x80000002U);
  static constexpr RegistryHandle HKeyUsers = static_cast<RegistryHandle>(0x80000003U);
  static constexpr RegistryHandle HKeyPerformanceData = static_cast<RegistryHandle>(0x80000004U);
};

}  // namespace bxvbwiz
