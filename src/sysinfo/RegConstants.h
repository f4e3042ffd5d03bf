#pragma once

#include <cstdint>

#include "platform/Registry.h"

namespace bxvbwiz {

// The numbers of the registry interface under the names of the registry classes, complete.
struct RegConstants {
  static constexpr std::int32_t Success = 0;
  static constexpr std::int32_t RegMaxDataSize = 2048;  // bytes of a value that the wizard reads
  static constexpr std::uint32_t RegNone = 0;
  static constexpr std::uint32_t RegSz = kRegSz;
  static constexpr std::uint32_t RegExpandSz = kRegExpandSz;
  static constexpr std::uint32_t RegBinary = kRegBinary;
  static constexpr std::uint32_t RegDWord = kRegDword;
  static constexpr std::uint32_t RegDWordLittleEndian = kRegDword;
  static constexpr std::uint32_t RegDWordBigEndian = 5;
  static constexpr std::uint32_t RegLink = 6;
  static constexpr std::uint32_t RegMultiSz = kRegMultiSz;
  static constexpr std::uint32_t RegResourceList = 8;
  static constexpr std::uint32_t RegFullResourceDescriptor = 9;
  static constexpr std::uint32_t RegResourceRequirementsList = 10;
  static constexpr std::uint32_t RegOptionReserved = 0;
  static constexpr std::uint32_t RegOptionNonVolatile = 0;
  static constexpr std::uint32_t RegOptionVolatile = 1;
  static constexpr std::uint32_t RegOptionCreateLink = 2;
  static constexpr std::uint32_t RegOptionBackupRestore = 4;
  static constexpr std::uint32_t ReadControl = kReadControl;
  static constexpr std::uint32_t KeyQueryValue = kKeyQueryValue;
  static constexpr std::uint32_t KeySetValue = kKeySetValue;
  static constexpr std::uint32_t KeyCreateSubKey = kKeyCreateSubKey;
  static constexpr std::uint32_t KeyEnumerateSubKeys = kKeyEnumerateSubKeys;
  static constexpr std::uint32_t KeyNotify = kKeyNotify;
  static constexpr std::uint32_t KeyCreateLink = kKeyCreateLink;
  static constexpr std::uint32_t KeyRead = kKeyRead;
  static constexpr std::uint32_t KeyWrite = kKeyWrite;
  static constexpr std::uint32_t KeyExecute = KeyRead;
  static constexpr std::uint32_t KeyAllAccess = kKeyAllAccess;
  static constexpr RegistryHandle HKeyClassesRoot = kHKeyClassesRoot;
  static constexpr RegistryHandle HKeyCurrentUser = kHKeyCurrentUser;
  static constexpr RegistryHandle HKeyLocalMachine = kHKeyLocalMachine;
  static constexpr RegistryHandle HKeyUsers = kHKeyUsers;
  static constexpr RegistryHandle HKeyPerformanceData = kHKeyPerformanceData;
};

}  // namespace bxvbwiz
