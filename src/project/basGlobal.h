#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "platform/Platform.h"
#include "project/CFiles.h"
#include "support/User.h"

namespace bxvbwiz {

// Registry paths of the Borvex product.
constexpr const char* kBorvexMainKey = "SOFTWARE\\Borvex\\Borvex Professional\\6.0\\Main";
constexpr const char* kBorvexWizardKey = "SOFTWARE\\Borvex\\Borvex Professional\\6.0\\VBWiz";

// The versions of Visual Basic that are known.
constexpr const char* kVersion5 = "5";
constexpr const char* kVersion6 = "6";

// The default value of a key below HKEY_CLASSES_ROOT; empty when there is none.
std::string ClassDefault(Registry& registry, const std::string& path);

// Shows that a registry key is missing ("HKEY_...\" and its path), as a critical message, and ends the
// wizard.
[[noreturn]] void EndWithMissingKey(User& user, const StringTable& strings, const std::string& fullKeyPath);

// Converts a dotted hexadecimal version ("1.a") to decimal ("1.10"). False when a part is empty (except a
// last one), longer than 7 digits or not hexadecimal, or the text begins with "."; `decimalVersion` then
// holds the parts before the bad one. The empty text converts to itself.
bool ConvertHexVersion(std::string_view hexVersion, std::string& decimalVersion);

// What the machine offers to the wizard; lives as long as the session. The user is replaceable,
// because each run of the wizard has its own form.
class basGlobal {
 public:
  explicit basGlobal(Platform& platform) : platform_(platform) {}

  // The form or command line that messages go to; set before any other call.
  User* user = nullptr;

  // The Visual Basic folder with a trailing backslash, empty when none is registered. It is taken from the
  // command that builds a project; one that names no folder counts as none.
  std::string FindVB();
  // "5", "6" or ""; "5" when no Visual Basic is registered.
  std::string GetVBVer();
  // The folder of the redistributable files; Visual Basic 6's comes without a trailing backslash. Empty when
  // none.
  std::string FindVBRedistFolder();
  // The same with a trailing backslash, asked for once in an analysis.
  const std::string& RedistributablesFolder();
  // Lets the machine be asked again for what is asked once in an analysis.
  void StartAnalysis() { redistributables_.reset(); }
  // Reads the system-file list once; later calls only report an empty one again. A missing product
  // key is shown (once in its life) and ends the wizard. Of entries with the same key
  // gSystemFiles holds the first.
  void LoadSystemFiles();
  // True when the system-file list holds the name, case ignored.
  bool IsSystemFile(const std::string& fileName) const;

  // The progress bar's next value: counts to the limit, then from 1 again.
  std::int16_t NextProgressValue();
  // Restarts the progress (when the form loads).
  void ResetProgress(std::int16_t limit);
  // Another limit for the progress that has begun.
  void SetProgressLimit(std::int16_t limit) { progressLimit_ = limit; }

  const CFiles* gSystemFiles() const { return systemFiles_.get(); }
  bool gSystemFilesLoaded() const { return systemFilesLoaded_; }
  const std::string& gDepFilePath() const { return depFilePath_; }
  Platform& platform() const { return platform_; }

 private:
  void TellEmptyList() const;

  Platform& platform_;
  std::unique_ptr<CFiles> systemFiles_;
  std::unordered_set<std::string> systemFileNames_;  // upper case
  std::string depFilePath_;
  std::optional<std::string> redistributables_;
  bool systemFilesLoaded_ = false;
  bool registryErrorShown_ = false;
  std::int16_t progress_ = 0;
  std::int16_t progressLimit_ = 0;
};

}  // namespace bxvbwiz
