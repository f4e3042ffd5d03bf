#include "cli/MachineCopy.h"

#include <cstdio>
#include <fstream>

#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

void WriteText(const fs::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  file.close();
  if (file.fail()) throw MachineError(path.u8string() + ": cannot be written");
}

std::string IniOf(Platform& source) {
  char language[8];
  std::snprintf(language, sizeof(language), "%04X", source.facts.UserLanguage() & 0xFFFF);
  const VersionInfo version = source.facts.Version();
  return "[Machine]\r\nCodePage=" + std::to_string(source.codePage.Number()) + "\r\nLanguage=" + language +
         "\r\n[Version]\r\nPlatformId=" + std::to_string(version.platformId) +
         "\r\nMajorVersion=" + std::to_string(version.majorVersion) +
         "\r\nMinorVersion=" + std::to_string(version.minorVersion) +
         "\r\nBuildNumber=" + std::to_string(version.buildNumber) + "\r\nCSDVersion=" + version.csdVersion +
         "\r\n[Folders]\r\nWindows=" + source.facts.WindowsDirectory(kPathBuffer) +
         "\r\nSystem=" + source.facts.SystemDirectory(kPathBuffer) + "\r\n";
}

}  // namespace

MachineCopy::MachineCopy(const fs::path& folder, Platform& source) : folder_(folder), ini_(IniOf(source)) {
  std::error_code error;
  const std::string name = folder.u8string();
  if (fs::exists(folder, error) && (!fs::is_directory(folder, error) || !fs::is_empty(folder, error))) {
    throw MachineError(name + ": already exists and is not empty");
  }
  fs::create_directories(folder, error);
  if (error) throw MachineError(name + ": cannot be made: " + error.message());
  WriteText(folder / "machine.ini", ini_);
  WriteText(folder / "registry.reg", "REGEDIT4\r\n");
  machine_ = std::make_unique<Machine>(name);
  AddFolder(source.facts.SystemDirectory(kPathBuffer));
  AddFolder(source.facts.WindowsDirectory(kPathBuffer));
}

void MachineCopy::AddFolder(const std::string& path) {
  if (StartsWith(path, "\\\\")) AddShare(path);
  if (!path.empty()) machine_->MakeFolder(path);
}

// A share is a folder of the captured machine that machine.ini names.
void MachineCopy::AddShare(const std::string& path) {
  std::int16_t position = 0;
  const std::string share = SplitPathRoot(path, position);
  if (share.find('\\', 2) == std::string::npos || !shares_.insert(UpperCase(share)).second) return;
  const std::string name = "share_" + std::to_string(shares_.size());
  std::error_code ignored;
  fs::create_directory(folder_ / name, ignored);
  machine_->AddShare(share, (folder_ / name).u8string());
  ini_ += (shares_.size() == 1 ? "[Shares]\r\n" : "") + share + "=" + name + "\r\n";
}

void MachineCopy::Save() {
  machine_->Save();
  if (!shares_.empty()) WriteText(folder_ / "machine.ini", ini_);
}

}  // namespace bxvbwiz
