#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/Platform.h"

namespace bxvbwiz {

// What matters to a setup of one file that may be an executable.
struct ExecutableFacts {
  bool isReadable = false;               // its bytes could be had
  bool isOpened = false;                 // a 32-bit PE file with imports
  std::int32_t exeType = 0;              // a kExeType... value
  std::uint16_t machine = 0;             // IMAGE_FILE_HEADER::Machine; 0 when it is no PE file
  bool exportsRegistration = false;      // exports DllRegisterServer, opened or not
  bool registersUnderOtherName = false;  // exports that name only with decoration ("_DllRegisterServer@0")
  // What a setup registers: it loads the file for it.
  bool RegistersItself() const { return isOpened && exportsRegistration; }
  std::vector<std::string> imports;  // names of the import table, in its order
  // What tells two files of one name apart.
  std::int32_t size = 0;       // in bytes
  std::uint32_t linkTime = 0;  // IMAGE_FILE_HEADER::TimeDateStamp
};

// The executables that an analysis meets. Each is read once, however many rules ask for it.
class Executables {
 public:
  explicit Executables(Platform& platform) : platform_(platform) {}

  // The facts of the file at a full path. The reference stays valid until Forget.
  const ExecutableFacts& Of(const std::string& path);
  // Lets the next question read the file again.
  void Forget() { facts_.clear(); }

 private:
  ExecutableFacts Read(const std::string& path);

  Platform& platform_;
  std::unordered_map<std::string, ExecutableFacts> facts_;  // by path in upper case
};

}  // namespace bxvbwiz
