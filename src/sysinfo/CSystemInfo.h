#pragma once

#include <cstdint>
#include <string>

#include "platform/Platform.h"

namespace bxvbwiz {

// Facts about the Windows machine that the wizard works on. Every folder ends in a backslash; each is asked
// for once and cached unless it came out empty. A folder whose registry entry is missing is reported and
// empty.
class CSystemInfo {
 public:
  explicit CSystemInfo(Platform& platform);

  const std::string& CommonFilesPath();
  const std::string& CommonFilesSysPath();
  const std::string& MSDAOPath();
  const std::string& ProgramFilesPath();
  const std::string& WinDir();
  const std::string& WinSysDir();
  // The folder below the Windows folder, whether it is there or not.
  const std::string& SysWow64Dir();
  // The major version does not count on the Windows 95 family, the minor one not on the NT family: 5.1 is NT
  // 5, and Me is not among them.
  bool IsWindows95() const { return isWindows95_; }
  bool IsWindows98() const { return isWindows98_; }
  bool IsWindowsNT351() const { return isWindowsNT351_; }
  bool IsWindowsNT4() const { return isWindowsNT4_; }
  bool IsWindowsNT5() const { return isWindowsNT5_; }
  std::int32_t WinVerMajor() const { return static_cast<std::int32_t>(version_.majorVersion); }
  std::int32_t WinVerMinor() const { return static_cast<std::int32_t>(version_.minorVersion); }
  std::int32_t WinBuildNumber() const { return static_cast<std::int32_t>(version_.buildNumber); }
  std::int32_t WinPlatformId() const { return static_cast<std::int32_t>(version_.platformId); }
  // The service-pack text as a number; raises the type mismatch (13) for the usual texts.
  std::int32_t WinCSDVersion() const;

 private:
  void SetWinInfo();
  VersionInfo GetWinVerInfo();
  std::string GetCommonFilesPath();
  std::string GetCommonFilesSysPath();
  std::string GetProgramFilesPath();
  std::string GetMSDAOPath();
  std::string GetWinSysDir();
  std::string GetWinDir();
  std::string CurrentVersionFolder(const char* valueName);

  Platform& platform_;
  VersionInfo version_;
  bool isWindows95_ = false;
  bool isWindows98_ = false;
  bool isWindowsNT351_ = false;
  bool isWindowsNT4_ = false;
  bool isWindowsNT5_ = false;
  std::string commonFilesPath_;
  std::string commonFilesSysPath_;
  std::string msDaoPath_;
  std::string programFilesPath_;
  std::string winDir_;
  std::string winSysDir_;
  std::string sysWow64Dir_;
};

}  // namespace bxvbwiz
