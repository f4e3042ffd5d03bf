#include "project/basGlobal.h"

#include <algorithm>

#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/basStr.h"
#include "support/Findings.h"
#include "support/NumberedKeys.h"
#include "sysinfo/Key.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr const char* kSystemFileList = "VBWizDep.ini";

bool HoldsProgram(FileSystem& files, std::string_view routine, const std::string& folder,
                  const std::string& name) {
  return RetryOrCancel(routine, [&] { return EqualsIgnoreCase(Dir(files, folder + name), name); });
}

bool IsHexDigit(char character) {
  return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') ||
         (character >= 'A' && character <= 'F');
}

}  // namespace

std::string ClassDefault(Registry& registry, const std::string& path) {
  const std::shared_ptr<Key> root = Key::Root(registry, RegConstants::HKeyClassesRoot);
  const std::shared_ptr<Key> key = root->OpenSubKeyForReading(path);
  const std::shared_ptr<Value> value = key ? key->Values().Default() : nullptr;
  return value ? value->Text() : std::string();
}

void EndWithMissingKey(User& user, const StringTable& strings, const std::string& fullKeyPath) {
  const std::string text = TokenReplace(strings.Text(TextId::RegistryKeyMissing), {fullKeyPath});
  user.ShowMessage({TextId::RegistryKeyMissing, kStyleCritical, text, {}});
  EndWizard(user);
}

bool ConvertHexVersion(std::string_view hexVersion, std::string& decimalVersion) {
  decimalVersion.clear();
  constexpr std::size_t kMostDigits = 7;
  constexpr int kHexadecimal = 16;
  std::string_view rest = hexVersion;
  while (!rest.empty()) {
    const std::size_t point = rest.find('.');
    const std::string part(rest.substr(0, point));
    rest.remove_prefix(point == std::string_view::npos ? rest.size() : point + 1);
    const bool isHexNumber = std::all_of(part.begin(), part.end(), IsHexDigit);
    if (part.empty() || part.size() > kMostDigits || !isHexNumber) return false;
    if (!decimalVersion.empty()) decimalVersion += '.';
    decimalVersion += std::to_string(std::stoul(part, nullptr, kHexadecimal));
  }
  return true;
}

std::string basGlobal::FindVB() {
  const CallStackEntry entry("FindVB");
  const std::string progId = ClassDefault(platform_.registry, ".vbp");
  if (progId.empty()) return {};
  const std::string command = ClassDefault(platform_.registry, progId + "\\shell\\Make\\command");

  // Usually "C:\...\VB6.EXE" /make "%1", the program with or without quotes. What stays in front of the
  // placeholder need not be a path to its last character: the folder is what counts.
  std::string_view program = command;
  if (StartsWith(program, "\"")) program.remove_prefix(1);
  const std::size_t placeholder = program.find('%');
  if (placeholder != std::string_view::npos) {
    constexpr std::size_t kBlankAndQuote = 2;
    program = program.substr(0, placeholder);
    program = FirstCharacters(program, std::max(CharacterCount(program), kBlankAndQuote) - kBlankAndQuote);
  }
  const std::string folder = GetPathFolder(program);
  return folder.empty() ? folder : FixPath(folder);
}

std::string basGlobal::GetVBVer() {
  const CallStackEntry entry("GetVBVer");
  const std::string folder = FindVB();
  // On purpose: a machine without Visual Basic gets the files of version 5.
  if (folder.empty()) return kVersion5;
  if (HoldsProgram(platform_.files, "GetVBVer", folder, "vb5.exe")) return kVersion5;
  if (HoldsProgram(platform_.files, "GetVBVer", folder, "vb6.exe")) return kVersion6;
  return {};
}

std::string basGlobal::FindVBRedistFolder() {
  const CallStackEntry entry("FindVBRedistFolder");
  const std::string folder = FindVB();
  if (folder.empty()) return {};
  const std::string version = GetVBVer();
  if (version == kVersion5) return folder + "setupkit\\kitfil32\\sys32\\";
  if (version == kVersion6) return folder + "Wizards\\PDWizard\\Redist";
  return {};
}

const std::string& basGlobal::RedistributablesFolder() {
  if (redistributables_) return *redistributables_;
  const std::string folder = FindVBRedistFolder();
  return redistributables_.emplace(folder.empty() ? folder : FixPath(folder));
}

void basGlobal::LoadSystemFiles() {
  const CallStackEntry entry("LoadSystemFiles");
  if (systemFilesLoaded_) return TellEmptyList();
  const std::shared_ptr<Key> root = Key::Root(platform_.registry, RegConstants::HKeyLocalMachine);
  const std::shared_ptr<Key> key = root->OpenSubKeyForReading(kBorvexWizardKey);
  if (!key) {
    if (registryErrorShown_) EndWizard(*user);
    registryErrorShown_ = true;
    EndWithMissingKey(*user, platform_.strings, std::string("HKEY_LOCAL_MACHINE\\") + kBorvexWizardKey);
  }
  depFilePath_ = FixPath(key->RequiredText("DepFile")) + kSystemFileList;

  systemFiles_ = std::make_unique<CFiles>(platform_.codePage);
  systemFileNames_.clear();
  NumberedKeys::List list{depFilePath_, "System", "File", NumberedKeys::Spelling::NumberThenName};
  list.first = 1;
  NumberedKeys keys(platform_.profiles);
  for (const std::string& name : keys.Entries(list)) {
    // Different names may have one key ("a-b.dll", "ab.dll"); all of them are system files.
    systemFileNames_.insert(UpperCase(name));
    if (!systemFiles_->FindItem(systemFiles_->KeyOf(name))) systemFiles_->Add(name);
  }
  TellEmptyList();
  systemFilesLoaded_ = true;
}

void basGlobal::TellEmptyList() const {
  if (systemFileNames_.empty()) AddFinding(FindingId::SystemFileListEmpty, {depFilePath_});
}

bool basGlobal::IsSystemFile(const std::string& fileName) const {
  const CallStackEntry entry("IsSystemFile");
  return systemFileNames_.count(UpperCase(fileName)) != 0;
}

std::int16_t basGlobal::NextProgressValue() {
  if (progress_ >= progressLimit_) progress_ = 0;
  return ++progress_;
}

void basGlobal::ResetProgress(std::int16_t limit) {
  progress_ = 0;
  progressLimit_ = limit;
}

}  // namespace bxvbwiz
