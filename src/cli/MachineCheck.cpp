#include <filesystem>
#include <ostream>

#include "cli/Commands.h"
#include "machine/Machine.h"
#include "support/basFile.h"
#include "support/basStr.h"
#include "support/Findings.h"
#include "sysinfo/Key.h"
#include "wizard/WizardCore.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBuffer = 260;  // MAX_PATH
constexpr const char* kWindowsKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion";

// A registry value that names a folder.
struct NeededFolder {
  RegistryHandle root;
  const char* key;
  const char* value;
  bool mustExist;    // no run makes it
  const char* file;  // a file that must be in it, or a pattern; null for none
};

constexpr NeededFolder kNeededFolders[] = {
    {kHKeyLocalMachine, kBorvexWizardKey, "DepFile", true, "VBWizDep.ini"},
    {kHKeyLocalMachine, kBorvexWizardKey, "TemplateSource", true, "*.bxp"},
    {kHKeyLocalMachine, kBorvexMainKey, "Path", true,
     "Redistributable\\Compressed Files\\Language Independent\\OS Independent\\corecomp.ini"},
    {kHKeyCurrentUser, kBorvexMainKey, "DataFile", false, nullptr},
    {kHKeyLocalMachine, kWindowsKey, "CommonFilesDir", false, nullptr},
    {kHKeyLocalMachine, kWindowsKey, "ProgramFilesDir", false, nullptr},
};

class MachineCheck {
 public:
  MachineCheck(const Options& options, std::ostream& out)
      : out_(out),
        machine_(options.machine, options.drives),
        core_(machine_.platform(), StartMode::Automation) {}

  int Run() {
    const SessionScope scope(core_.session());
    CheckFolders();
    CheckVisualBasic();
    CheckLibraries();
    if (machine_.SkippedRegistryValues() > 0)
      Tell(Severity::Error, TextId::CheckUnreadableValues,
           {std::to_string(machine_.SkippedRegistryValues())});
    if (errors_ == 0) out_ << CompiledText(TextId::CheckPassed) << '\n';
    return errors_ == 0 ? kExitFinished : kExitNotFinished;
  }

 private:
  void Tell(Severity severity, TextId text, const std::vector<std::string>& values) {
    if (severity == Severity::Error) ++errors_;
    out_ << NameOf(severity) << ": " << TokenReplace(CompiledText(text), values) << '\n';
  }

  // False when it does not exist.
  bool CheckFolder(const std::string& origin, const std::string& folder) {
    // A drive's root cannot be found, only listed.
    std::vector<FoundFile> found;
    if (platform_.files.Find(FixPath(folder) + "*", found) == SystemError::Success) return true;
    Tell(Severity::Error, TextId::CheckFolderMissing, {origin, folder});
    return false;
  }

  void CheckFolders() {
    CheckFolder("[Folders] Windows", platform_.facts.WindowsDirectory(kBuffer));
    CheckFolder("[Folders] System", platform_.facts.SystemDirectory(kBuffer));
    for (const NeededFolder& needed : kNeededFolders) {
      const auto root = Key::Root(platform_.registry, needed.root);
      const auto key = root->OpenSubKeyForReading(needed.key);
      const auto value = key == nullptr ? nullptr : key->Values().Item(std::string(needed.value));
      const std::string name = root->Name() + "\\" + needed.key + "\\" + needed.value;
      const std::string folder = value == nullptr ? std::string() : value->Text();
      if (!IsAbsolutePath(folder)) {
        Tell(Severity::Error, TextId::CheckValueMissing, {name});
      } else if (needed.mustExist && CheckFolder(name, folder) && needed.file != nullptr &&
                 Dir(platform_.files, FixPath(folder) + needed.file).empty()) {
        Tell(Severity::Error, TextId::CheckFileMissing, {folder, needed.file});
      }
    }
  }

  void CheckVisualBasic() {
    const std::string folder = core_.global().FindVB();
    if (folder.empty())
      return Tell(Severity::Error, TextId::CheckValueMissing,
                  {"HKEY_CLASSES_ROOT\\VisualBasic.Project\\shell\\Make\\command"});
    const std::string version = core_.global().GetVBVer();
    if (version.empty()) return Tell(Severity::Error, TextId::CheckFileMissing, {folder, "VB6.EXE"});
    const std::string compiler = folder + "VB" + version.substr(0, 1) + ".EXE";
    const std::string program = machine_.HostProgram(compiler);
    if (program.empty()) return Tell(Severity::Note, TextId::CheckNoCompiler, {compiler});
    std::error_code error;
    const fs::file_status status = fs::status(fs::u8path(program), error);
    constexpr fs::perms kAnyoneRuns = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    if (!fs::is_regular_file(status) || (status.permissions() & kAnyoneRuns) == fs::perms::none)
      Tell(Severity::Error, TextId::CheckProgramMissing, {program, compiler});
  }

  // A registry that was exported from a whole machine names many files that no project needs.
  void CheckLibraries() {
    std::size_t missing = 0;
    std::string first;
    const auto libraries =
        Key::Root(platform_.registry, RegConstants::HKeyClassesRoot)->OpenSubKeyForReading("TypeLib");
    ForEachSubKey(libraries, [&](const std::string& library) {
      ForEachSubKey(libraries->OpenSubKeyForReading(library), [&](const std::string& version) {
        const auto file = libraries->OpenSubKeyForReading(library + "\\" + version + "\\0\\win32");
        const auto value = file == nullptr ? nullptr : file->Values().Default();
        if (value == nullptr || IsLibraryThere(value->Text())) return;
        if (++missing == 1) first = value->Text();
      });
    });
    if (missing > 0) Tell(Severity::Note, TextId::CheckLibrariesMissing, {std::to_string(missing), first});
  }

  template <class Use>
  static void ForEachSubKey(const std::shared_ptr<Key>& key, const Use& use) {
    if (key == nullptr) return;
    for (std::size_t i = 1; i <= key->SubKeys().Count(); ++i) use(key->SubKeys().Item(i)->Name());
  }

  // A path may end in the number of a resource.
  bool IsLibraryThere(const std::string& path) {
    return !Dir(platform_.files, path).empty() || !Dir(platform_.files, GetPathFolder(path)).empty();
  }

  std::ostream& out_;
  Machine machine_;
  WizardCore core_;
  Platform& platform_ = machine_.platform();
  int errors_ = 0;
};

}  // namespace

int CheckMachine(const Options& options, std::ostream& out) {
  return MachineCheck(options, out).Run();
}

}  // namespace bxvbwiz
