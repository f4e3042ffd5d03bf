#include <algorithm>
#include <filesystem>
#include <iostream>

#include "cli/Commands.h"
#include "cli/Computer.h"
#include "cli/FileSource.h"
#include "machine/Machine.h"
#include "machine/MachineError.h"
#include "machine/PartlyReadFile.h"
#include "project/TypeLibraryFile.h"
#include "support/basFile.h"
#include "support/basStr.h"
#include "sysinfo/Key.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

struct Component {
  std::string hostPath;
  std::string path;  // on the machine
  bool isNamed;      // by the user, not found in a folder
};

// The default value of a class's key; empty when it has none.
std::string ClassText(Registry& registry, const std::string& path) {
  const auto key = Key::Root(registry, kHKeyClassesRoot)->OpenSubKeyForReading(path);
  const auto value = key == nullptr ? nullptr : key->Values().Item(std::string());
  return value == nullptr ? "" : value->Text();
}

// Writes it, unless it is there already; a volatile key only where there is none. Throws MachineError.
void SetClassText(Registry& registry, const std::string& path, const std::string& text,
                  std::uint32_t options) {
  if (!text.empty() && ClassText(registry, path) == text) return;
  const auto root = Key::Root(registry, kHKeyClassesRoot);
  if (options == kRegOptionVolatile && root->OpenSubKeyForReading(path) != nullptr) return;
  RegistryHandle key = 0;
  SystemError error = registry.CreateKey(kHKeyClassesRoot, path, options, kKeyAllAccess, key);
  if (error == SystemError::Success) {
    error = registry.SetValue(key, "", {kRegSz, text + '\0'});
    registry.CloseKey(key);
  }
  if (error != SystemError::Success) throw MachineError("the registry key " + path + " cannot be written");
}

// The path by which the registry names a library of a file; the first resource needs no number.
std::string RegisteredPath(const std::string& path, const TypeLibraryFacts& library) {
  return library.resource > 1 ? path + "\\" + std::to_string(library.resource) : path;
}

// Writes what registering a library writes, and gives the path that was registered before. `options` are
// those of new keys. Throws MachineError.
std::string Enter(Registry& registry, const std::string& path, const TypeLibraryFacts& library,
                  std::uint32_t options) {
  const std::string key = "TypeLib\\" + library.identifier + "\\" + library.version;
  const std::string fileKey = key + "\\" + library.language + "\\win32";
  std::string before = ClassText(registry, fileKey);
  SetClassText(registry, key, library.description, options);
  SetClassText(registry, key + "\\FLAGS", std::to_string(library.flags), options);
  SetClassText(registry, fileKey, RegisteredPath(path, library), options);
  SetClassText(registry, key + "\\HELPDIR", GetPathFolder(path), options);
  return before;
}

class Registration {
 public:
  Registration(const Options& options, std::ostream& out)
      : options_(options),
        out_(out),
        machine_(options.machine, options.drives),
        registry_(machine_.platform().registry) {}

  // Throws MachineError.
  int Run() {
    std::vector<Component> components;
    for (const std::string& path : options_.components) Collect(path, components);
    bool isComplete = true;
    for (const Component& component : components) isComplete = Register(component) && isComplete;
    machine_.Save();
    out_ << "Registered " << libraries_ << (libraries_ == 1 ? " type library" : " type libraries") << " of "
         << components.size() << (components.size() == 1 ? " file" : " files") << ".\n";
    return isComplete ? kExitFinished : kExitNotFinished;
  }

 private:
  // In a document it is one of the lines.
  void Complain(const std::string& path, const std::string& text) {
    (options_.json ? out_ : std::cerr << "bxvbwiz: ") << path << ": " << text << '\n';
  }

  // Adds a file, or the files of a folder and those below in the order of their paths. Throws MachineError
  // when it is not on the machine.
  void Collect(const std::string& path, std::vector<Component>& components) {
    std::error_code error;
    fs::path place = fs::absolute(fs::u8path(path), error).lexically_normal();
    // One outside the drives may be a path on the machine.
    const fs::path inside = fs::u8path(machine_.HostPath(path));
    if (machine_.WindowsPath(place.u8string()).empty() && fs::exists(inside, error)) place = inside;
    if (path.empty() || !fs::exists(place, error))
      throw MachineError("'" + path + "': no such file or folder");
    std::vector<std::string> found;
    if (fs::is_directory(place, error)) {
      for (const fs::directory_entry& entry :
           fs::recursive_directory_iterator(place, fs::directory_options::skip_permission_denied)) {
        if (entry.is_regular_file(error)) found.push_back(entry.path().u8string());
      }
      std::sort(found.begin(), found.end(), [](const std::string& left, const std::string& right) {
        return std::make_pair(UpperCase(left), left) < std::make_pair(UpperCase(right), right);
      });
    } else {
      found.push_back(place.u8string());
    }
    const bool isNamed = !fs::is_directory(place, error);
    for (std::string& file : found) {
      const std::string windowsPath = machine_.WindowsPath(file);
      if (windowsPath.empty())
        throw MachineError(TokenReplace(CompiledText(TextId::OutsideTheDrives), {path, options_.machine}));
      components.push_back({std::move(file), windowsPath, isNamed});
    }
  }

  // False when a file that the user named cannot be read or holds no type library.
  bool Register(const Component& component) {
    PartlyReadFile file;
    if (file.Open(component.hostPath) != SystemError::Success) {
      Complain(component.path, "cannot be read");
      return !component.isNamed;
    }
    const TypeLibraryFile content = ReadTypeLibraries(FileSource(file), machine_.platform().codePage);
    for (const std::string& fault : content.faults) Complain(component.path, fault);
    if (content.libraries.empty() && content.faults.empty() && component.isNamed)
      Complain(component.path, "holds no type library");
    for (const TypeLibraryFacts& library : content.libraries) Register(component.path, library);
    return !component.isNamed || (content.faults.empty() && !content.libraries.empty());
  }

  void Register(const std::string& path, const TypeLibraryFacts& library) {
    const std::string value = RegisteredPath(path, library);
    const std::string before = Enter(registry_, path, library, kRegOptionNonVolatile);
    ++libraries_;
    out_ << value << ": " << library.identifier << " version " << library.version << ", "
         << (library.description.empty() ? "without a description" : library.description) << '\n';
    if (!before.empty() && !EqualsIgnoreCase(before, value)) out_ << "  in the place of " << before << '\n';
  }

  const Options& options_;
  std::ostream& out_;
  Machine machine_;
  Registry& registry_;
  int libraries_ = 0;
};

}  // namespace

int RegisterComponents(const Options& options, std::ostream& out) {
  return Registration(options, out).Run();
}

void EnterForThisRun(Platform& platform, const std::string& path) {
  for (const TypeLibraryFacts& library : ReadTypeLibraries(platform, path).libraries)
    Enter(platform.registry, path, library, kRegOptionVolatile);
}

}  // namespace bxvbwiz
