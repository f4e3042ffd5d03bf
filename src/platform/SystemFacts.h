#pragma once

#include <cstdint>
#include <string>

namespace bxvbwiz {

// The version record of GetVersionExA.
struct VersionInfo {
  std::uint32_t majorVersion = 0;
  std::uint32_t minorVersion = 0;
  std::uint32_t buildNumber = 0;  // Windows 95 family: the high word holds major and minor version
  std::uint32_t platformId = 0;   // 1 = Windows 95 family, 2 = Windows NT family
  std::string csdVersion;         // szCSDVersion up to its first NUL
};

// What the system says about itself.
class SystemFacts {
 public:
  virtual ~SystemFacts() = default;

  // GetVersionExA; all zero when the call fails.
  virtual VersionInfo Version() = 0;
  // GetWindowsDirectoryA and GetSystemDirectoryA: the folder without a trailing backslash (except a drive's
  // root). `size` is the buffer in bytes of the code page, the NUL included; empty when the folder does not
  // fit.
  virtual std::string WindowsDirectory(std::size_t size) = 0;
  virtual std::string SystemDirectory(std::size_t size) = 0;
  // GetUserDefaultLCID: the language in the low word (0x0409), its primary language in that word's low 10
  // bits.
  virtual std::uint32_t UserLanguage() = 0;
};

}  // namespace bxvbwiz
