#include "machine/Machine.h"

#include <cstdlib>

#include "machine/CompiledStringTable.h"
#include "machine/DriveTree.h"
#include "machine/FileBytes.h"
#include "machine/MachineFacts.h"
#include "machine/MachineFiles.h"
#include "machine/MachineIni.h"
#include "machine/MachineProcesses.h"
#include "machine/MachineProfileStore.h"
#include "machine/MachineRegistry.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr const char* kIniName = "/machine.ini";
constexpr const char* kRegistryName = "/registry.reg";
constexpr const char* kDriveName = "/drive_";  // and its letter
constexpr const char* kFirstDriveName = "/drive_c";
constexpr const char* kEmptyRegistry = "REGEDIT4\r\n\r\n";

std::string ReasonOf(SystemError error) {
  switch (error) {
    case SystemError::AccessDenied:
      return "it cannot be accessed, or is not a file";
    case SystemError::WriteProtect:
      return "the file system is read-only";
    case SystemError::DiskFull:
      return "the disk is full";
    case SystemError::NotEnoughMemory:
      return "it is too large";
    default:
      return "error " + std::to_string(static_cast<std::uint32_t>(error));
  }
}

bool Exists(const std::string& path) {
  return host::StatusOf(path).kind != host::FileKind::Missing;
}

// The absolute path of a machine folder.
std::string OpenMachineFolder(const std::string& folder) {
  std::string real = host::RealPath(folder);
  if (real.empty()) throw MachineError(folder + ": the machine folder does not exist");
  if (host::StatusOf(real).kind != host::FileKind::Folder) throw MachineError(folder + ": not a folder");
  if (!Exists(real + kIniName) && !Exists(real + kRegistryName) && !Exists(real + kFirstDriveName)) {
    throw MachineError(folder + ": not a machine folder: it has no machine.ini, registry.reg or drive_c");
  }
  return real;
}

// A file of the machine folder itself; empty when it is missing.
std::string ReadFile(const std::string& path) {
  std::string bytes;
  if (!Exists(path)) return bytes;
  const SystemError error = ReadWholeFile(path, bytes);
  if (error != SystemError::Success) throw MachineError(path + ": cannot be read: " + ReasonOf(error));
  return bytes;
}

// Where a drive's folder lies. Throws MachineError when it cannot stand for the drive.
std::string OpenDrive(const std::string& machineFolder, const MappedDrive& drive) {
  const bool isAbsolute = host::IsAbsolutePath(drive.folder);
  std::string real = host::RealPath(isAbsolute ? drive.folder : machineFolder + "/" + drive.folder);
  if (real.empty() || host::StatusOf(real).kind != host::FileKind::Folder)
    throw MachineError(drive.origin + ": no such folder");
  const std::string own = machineFolder + kDriveName;
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    const std::string folder = own + letter;
    if (drive.root == UpperCase(std::string(1, letter)) + ":" && Exists(folder))
      throw MachineError(drive.origin + ": the machine folder has a drive of this letter, " + folder);
    if (real == folder || host::IsBelow(real, folder))
      throw MachineError(drive.origin + ": the folder lies in another drive, " + folder);
  }
  return real;
}

// The drives and shares that folders of this computer stand for.
DriveTree::Drives OpenDrives(const std::string& machineFolder, DriveTree::Drives drives,
                             const Machine::Drives& given) {
  for (const auto& [letter, folder] : given) {
    const std::string root = std::string(1, letter) + ":";
    const std::string origin = "--drive " + std::string(1, letter) + "=" + folder;
    // From here on a relative folder would start at the machine folder.
    const std::string real = host::RealPath(folder);
    if (real.empty()) throw MachineError(origin + ": no such folder");
    drives[root] = {root, real, origin};
  }
  for (auto& [root, drive] : drives) drive.folder = OpenDrive(machineFolder, drive);
  // A file has one path on the drives. A share may be what a drive stands for, as on Windows.
  for (const auto& [root, drive] : drives) {
    for (const auto& [otherRoot, other] : drives) {
      const bool areDrives = root != otherRoot && root[1] == ':' && otherRoot[1] == ':';
      if (areDrives && (drive.folder == other.folder || host::IsBelow(drive.folder, other.folder)))
        throw MachineError(drive.origin + ": the folder lies in another drive, " + other.origin);
    }
  }
  return drives;
}

MachineRegistry OpenRegistry(const std::string& path, const CodePage& codePage) {
  try {
    return MachineRegistry(Exists(path) ? ReadFile(path) : std::string(kEmptyRegistry), codePage);
  } catch (const RegTextError& error) {
    throw MachineError(path + ": " + error.what());
  }
}

}  // namespace

struct Machine::Parts : public ProcessObserver {
  Parts(const std::string& folder, const Drives& drives)
      : root(OpenMachineFolder(folder)),
        ini(ReadMachineIni(ReadFile(root + kIniName), root + kIniName)),
        registry(OpenRegistry(root + kRegistryName, *ini.codePage)),
        tree(root, OpenDrives(root, ini.drives, drives)),
        profileStore(tree),
        profiles(*ini.codePage, profileStore, ini.windowsFolder),
        files(tree, profiles, *ini.codePage, {ini.systemFolder, ini.windowsFolder}),
        facts(ini, *ini.codePage),
        processes(tree, ini.programs, {ini.systemFolder, ini.windowsFolder}, *this),
        settings(registry),
        guids(std::getenv("SOURCE_DATE_EPOCH") != nullptr),
        clock(std::getenv("SOURCE_DATE_EPOCH")),
        platform{registry, facts,    files, profiles,      processes,
                 guids,    settings, clock, *ini.codePage, strings} {}

  // Without them no file would be known to lie in the system folder, and all would go elsewhere.
  void RequireSystemFolders() {
    const auto isMissing = [this](const std::string& folder) {
      const std::string path = tree.HostPathOf(folder);
      return path.empty() || host::StatusOf(path).kind != host::FileKind::Folder;
    };
    if (!isMissing(ini.windowsFolder) && !isMissing(ini.systemFolder)) return;
    throw MachineError(root + ": [Folders] of machine.ini names Windows=" + ini.windowsFolder +
                       " and System=" + ini.systemFolder + ", but the drives do not have both");
  }

  void BeforeStart() override {
    profiles.StoreAll();
    // A registry that cannot be stored is reported by the end of the run, which tries again.
    StoreRegistry();
    tree.Forget();
  }
  void AfterEnd() override { tree.Forget(); }

  SystemError StoreRegistry() {
    if (!registry.Changed()) return SystemError::Success;
    const std::string path = root + kRegistryName;
    host::ContentOptions options;
    const host::FileStatus status = host::StatusOf(path);
    if (status.kind != host::FileKind::Missing) {
      if (status.kind != host::FileKind::File || !status.writable) return SystemError::AccessDenied;
      options.permissions = status.permissions;
    }
    const SystemError error = host::ReplaceContent(path, registry.Text(), options);
    if (error == SystemError::Success) registry.SetStored();
    return error;
  }

  std::string root;
  MachineIni ini;
  MachineRegistry registry;
  DriveTree tree;
  MachineProfileStore profileStore;
  MachineProfileStrings profiles;
  MachineFiles files;
  MachineFacts facts;
  MachineProcesses processes;
  MachineSettings settings;
  MachineGuids guids;
  MachineClock clock;
  CompiledStringTable strings;
  Platform platform;
};

Machine::Machine(const std::string& folder, const Drives& drives)
    : parts_(std::make_unique<Parts>(folder, drives)) {}

Machine::~Machine() = default;

void Machine::RequireSystemFolders() {
  parts_->RequireSystemFolders();
}

Platform& Machine::platform() {
  return parts_->platform;
}

std::string Machine::WindowsPath(const std::string& hostPath) const {
  return parts_->tree.WindowsPathOf(hostPath);
}

std::string Machine::HostPath(const std::string& windowsPath) const {
  return parts_->tree.HostPathOf(windowsPath);
}

std::string Machine::HostProgram(const std::string& windowsPath) const {
  return parts_->processes.HostProgram(windowsPath);
}

void Machine::MakeFolder(const std::string& windowsPath) {
  bxvbwiz::WindowsPath path;
  if (parts_->tree.Parse(windowsPath, path) != SystemError::Success) return;
  if (path.IsRoot()) return parts_->tree.MakeDrive(path);
  MakeFolder(path.Parent().Text());
  parts_->files.MakeDirectory(path.Text());
}

void Machine::AddShare(const std::string& share, const std::string& folder) {
  bxvbwiz::WindowsPath path;
  if (parts_->tree.Parse(share, path) == SystemError::Success && path.IsRoot())
    parts_->tree.Map(path, {share, host::RealPath(folder), {}});
}

void Machine::Save() {
  std::string failed;
  for (const std::string& path : parts_->profiles.Flush()) failed += (failed.empty() ? "" : ", ") + path;
  const SystemError error = parts_->StoreRegistry();
  std::string message;
  if (!failed.empty()) message = "cannot be stored: " + failed;
  if (error != SystemError::Success) {
    if (!message.empty()) message += "; ";
    message += parts_->root + kRegistryName + ": cannot be written: " + ReasonOf(error);
  }
  if (!message.empty()) throw MachineError(message);
}

std::size_t Machine::SkippedRegistryValues() const {
  return parts_->registry.Skipped();
}

const std::vector<SkippedRegValue>& Machine::SkippedValues() const {
  return parts_->registry.SkippedValues();
}

}  // namespace bxvbwiz
