#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Platform.h"

namespace bxvbwiz {

// A drive or a network share that is a folder of this computer.
struct MappedDrive {
  std::string root;    // "P:" or "\\server\share"
  std::string folder;  // as given, or once the machine is open its absolute path without links
  std::string origin;  // what gives it, for messages
};

// What machine.ini says about the machine. Every key is optional; the initial values are the defaults.
struct MachineIni {
  std::unique_ptr<CodePage> codePage;   // 1252 by default; never null after ReadMachineIni
  std::uint32_t userLanguage = 0x0409;  // an LCID; this one is English (United States)
  VersionInfo version = {5, 1, 2600, 2, "Service Pack 3"};
  std::string windowsFolder = "C:\\WINDOWS";
  std::string systemFolder = "C:\\WINDOWS\\system32";
  // The host program that runs in place of a program, by that program's full path in upper case.
  std::map<std::string, std::string> programs;
  std::map<std::string, MappedDrive, std::less<>> drives;  // by root in upper case
};

// Reads the bytes of a machine.ini, which are UTF-8. `path` is for messages. Throws MachineError for a value
// that cannot be used.
MachineIni ReadMachineIni(std::string_view bytes, const std::string& path);

}  // namespace bxvbwiz
