#include "sysinfo/CSystemInfo.h"

#include <limits>

#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/Conversion.h"
#include "support/Findings.h"
#include "sysinfo/Key.h"

namespace bxvbwiz {
namespace {

// dwPlatformId of OSVERSIONINFOA: VER_PLATFORM_WIN32_WINDOWS and VER_PLATFORM_WIN32_NT of winnt.h.
constexpr std::uint32_t kWindows95Family = 1;
constexpr std::uint32_t kWindowsNtFamily = 2;
// sizeof(szCSDVersion) of OSVERSIONINFOA.
constexpr std::size_t kCsdVersionSize = 128;
// The buffer for a folder that the system names.
constexpr std::size_t kFolderSize = 254;

constexpr char kCurrentVersion[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
constexpr char kSharedDao[] = "SOFTWARE\\Microsoft\\Shared Tools\\DAO";

// Runs a routine of the class under its call-stack name. An error is reported and, whatever was pressed but
// Cancel, the routine then ends without a result: it is not run again. The answer holds for the whole run.
template <class Routine>
auto Reported(std::string_view name, Routine&& routine) -> decltype(routine()) {
  const CallStackEntry entry(name);
  try {
    return routine();
  } catch (const WizardEnded&) {
    throw;
  } catch (...) {
    const RuntimeError error = CurrentError();
    Finding finding{FindingId::SystemInformationMissing, {std::string(name), error.what()}, CurrentOrigin()};
    if (IsFound(finding)) return {};
    ReportError(name, error);
    AddFinding(std::move(finding));
  }
  return {};
}

[[noreturn]] void RaiseMissing(const std::string& registryPath) {
  throw RuntimeError(kErrorObjectNotSet, "Object variable or With block variable not set: " + registryPath);
}

// The folder that a registry value gives. Without a full path all files would seem to lie outside it.
std::string FolderOfValue(FileSystem& files, Value& value, const std::string& folder) {
  if (!IsAbsolutePath(folder))
    AddFinding(FindingId::SystemFolderUnusable, {value.Parent().FullPath() + "\\" + value.Name(), folder});
  return FixPath(NormalPath(files, folder));
}

}  // namespace

CSystemInfo::CSystemInfo(Platform& platform) : platform_(platform) {
  SetWinInfo();
}

const std::string& CSystemInfo::CommonFilesPath() {
  if (commonFilesPath_.empty()) commonFilesPath_ = GetCommonFilesPath();
  return commonFilesPath_;
}

const std::string& CSystemInfo::CommonFilesSysPath() {
  if (commonFilesSysPath_.empty()) commonFilesSysPath_ = GetCommonFilesSysPath();
  return commonFilesSysPath_;
}

const std::string& CSystemInfo::MSDAOPath() {
  if (msDaoPath_.empty()) msDaoPath_ = GetMSDAOPath();
  return msDaoPath_;
}

const std::string& CSystemInfo::ProgramFilesPath() {
  if (programFilesPath_.empty()) programFilesPath_ = GetProgramFilesPath();
  return programFilesPath_;
}

const std::string& CSystemInfo::WinDir() {
  if (winDir_.empty()) winDir_ = GetWinDir();
  return winDir_;
}

const std::string& CSystemInfo::WinSysDir() {
  if (winSysDir_.empty()) winSysDir_ = GetWinSysDir();
  return winSysDir_;
}

const std::string& CSystemInfo::SysWow64Dir() {
  if (sysWow64Dir_.empty() && !WinDir().empty()) sysWow64Dir_ = WinDir() + "SysWOW64\\";
  return sysWow64Dir_;
}

std::int32_t CSystemInfo::WinCSDVersion() const {
  // The whole buffer is converted, its NULs too, which no number holds: only a text that fills it can be one.
  std::string buffer = version_.csdVersion;
  buffer.resize(kCsdVersionSize, '\0');
  const std::optional<double> number = TextToNumber(buffer);
  if (!number) throw RuntimeError(kErrorTypeMismatch, "Type mismatch");
  using Limits = std::numeric_limits<std::int32_t>;
  const std::optional<long> rounded = RoundToInteger(*number, Limits::min(), Limits::max());
  if (!rounded) throw RuntimeError(kErrorOverflow, "Overflow");
  return static_cast<std::int32_t>(*rounded);
}

void CSystemInfo::SetWinInfo() {
  const CallStackEntry entry("CSystemInfo:SetWinInfo");
  version_ = GetWinVerInfo();
  const bool is95Family = version_.platformId == kWindows95Family;
  const bool isNtFamily = version_.platformId == kWindowsNtFamily;
  isWindows95_ = is95Family && version_.minorVersion == 0;
  isWindows98_ = is95Family && version_.minorVersion == 10;
  isWindowsNT351_ = isNtFamily && version_.majorVersion == 3;
  isWindowsNT4_ = isNtFamily && version_.majorVersion == 4;
  isWindowsNT5_ = isNtFamily && version_.majorVersion == 5;
}

VersionInfo CSystemInfo::GetWinVerInfo() {
  return Reported("CSystemInfo:GetWinVerInfo", [&] { return platform_.facts.Version(); });
}

std::string CSystemInfo::GetWinDir() {
  return Reported("CSystemInfo:GetWinDir",
                  [&] { return FixPath(StripAtNull(platform_.facts.WindowsDirectory(kFolderSize))); });
}

std::string CSystemInfo::GetWinSysDir() {
  return Reported("CSystemInfo:GetWinSysDir",
                  [&] { return FixPath(StripAtNull(platform_.facts.SystemDirectory(kFolderSize))); });
}

std::string CSystemInfo::GetCommonFilesPath() {
  return Reported("CSystemInfo:GetCommonFilesPath",
                  [&] { return isWindowsNT351_ ? GetWinDir() : CurrentVersionFolder("CommonFilesDir"); });
}

std::string CSystemInfo::GetProgramFilesPath() {
  return Reported("CSystemInfo:GetProgramFilesPath",
                  [&] { return isWindowsNT351_ ? GetWinDir() : CurrentVersionFolder("ProgramFilesDir"); });
}

std::string CSystemInfo::GetCommonFilesSysPath() {
  return Reported("CSystemInfo:GetCommonFilesSysPath",
                  [&] { return isWindowsNT351_ ? GetWinSysDir() : GetCommonFilesPath() + "System\\"; });
}

std::string CSystemInfo::GetMSDAOPath() {
  return Reported("CSystemInfo:GetMSDAOPath", [&] {
    const auto root = Key::Root(platform_.registry, RegConstants::HKeyLocalMachine);
    const auto key = root->OpenSubKeyForReading(kSharedDao);
    std::string folder;
    // "Path" names the engine's file, not its folder. The spelling counts here, other than in Item.
    for (std::size_t position = 1; key && position <= key->Values().Count(); ++position) {
      const auto value = key->Values().Item(position);
      if (value->Name() == "Path")
        folder = FolderOfValue(platform_.files, *value, GetPathFolder(value->Text()));
    }
    if (!folder.empty()) return folder;
    return isWindowsNT351_ ? GetWinDir() + "MSAPPS\\DAO\\" : GetCommonFilesPath() + "Microsoft Shared\\DAO\\";
  });
}

// The data of a value of the CurrentVersion key as a folder.
std::string CSystemInfo::CurrentVersionFolder(const char* valueName) {
  const auto root = Key::Root(platform_.registry, RegConstants::HKeyLocalMachine);
  const auto key = root->OpenSubKeyForReading(kCurrentVersion);
  if (!key) RaiseMissing(root->FullPath() + "\\" + kCurrentVersion);
  const auto value = key->Values().Item(valueName);
  if (!value) RaiseMissing(key->FullPath() + "\\" + valueName);
  return FolderOfValue(platform_.files, *value, value->Text());
}

}  // namespace bxvbwiz
