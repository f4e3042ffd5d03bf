#include <algorithm>
#include <filesystem>
#include <iostream>

#include "cli/Commands.h"
#include "cli/FileSource.h"
#include "machine/Machine.h"
#include "machine/MachineError.h"
#include "machine/PartlyReadFile.h"
#include "project/TypeLibraryFile.h"
#include "support/basFile.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestData = 0x10000;  // bytes; a registry value of a type library is a short text

void Complain(const std::string& subject, const std::string& text) {
  std::cerr << "bxvbwiz: " << subject << ": " << text << '\n';
}

struct Component {
  std::string hostPath;
  std::string path;  // on the machine
  bool isNamed;      // by the user, not found in a folder
};

// Writes texts below a key; a text that is there already is left alone.
class RegistryText {
 public:
  explicit RegistryText(Registry& registry) : registry_(registry) {}

  // The default value of a key; empty when it has none.
  std::string Get(const std::string& path) {
    RegistryHandle key = 0;
    RegistryData data;
    if (registry_.OpenKey(kHKeyClassesRoot, path, kKeyRead, key) != SystemError::Success) return {};
    const SystemError error = registry_.QueryValue(key, "", kLongestData, data);
    registry_.CloseKey(key);
    return error == SystemError::Success ? data.data.substr(0, data.data.find('\0')) : std::string();
  }

  // Throws MachineError.
  void Set(const std::string& path, const std::string& text) {
    RegistryHandle key = 0;
    SystemError error = registry_.CreateKey(kHKeyClassesRoot, path, 0, kKeyAllAccess, key);
    if (error == SystemError::Success) {
      RegistryData data;
      const std::string stored = text + '\0';
      const bool isThere = registry_.QueryValue(key, "", kLongestData, data) == SystemError::Success &&
                           data.type == kRegSz && data.data == stored;
      if (!isThere) error = registry_.SetValue(key, "", {kRegSz, stored});
      registry_.CloseKey(key);
    }
    if (error != SystemError::Success) throw MachineError("the registry key " + path + " cannot be written");
  }

 private:
  Registry& registry_;
};

class Registration {
 public:
  Registration(const std::string& folder, const Machine::Drives& drives)
      : machineFolder_(folder), machine_(folder, drives), registry_(machine_.platform().registry) {}

  // Throws MachineError when the registry cannot be written.
  int Run(const std::vector<std::string>& paths) {
    std::vector<Component> components;
    for (const std::string& path : paths) {
      if (!Collect(path, components)) return kExitUsage;
    }
    bool isComplete = true;
    for (const Component& component : components) isComplete = Register(component) && isComplete;
    machine_.Save();
    std::cout << "Registered " << libraries_ << (libraries_ == 1 ? " type library" : " type libraries")
              << " of " << components.size() << (components.size() == 1 ? " file" : " files") << ".\n";
    return isComplete ? kExitFinished : kExitNotFinished;
  }

 private:
  // Adds a file, or the files of a folder and those below in the order of their paths. False when it is not
  // on the machine.
  bool Collect(const std::string& path, std::vector<Component>& components) {
    std::error_code error;
    const fs::path place = fs::absolute(fs::u8path(path), error).lexically_normal();
    if (path.empty() || !fs::exists(place, error)) {
      Complain("'" + path + "'", "no such file or folder");
      return false;
    }
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
      if (windowsPath.empty()) {
        std::cerr << "bxvbwiz: "
                  << TokenReplace(CompiledText(TextId::OutsideTheDrives), {path, machineFolder_}) << '\n';
        return false;
      }
      components.push_back({std::move(file), windowsPath, isNamed});
    }
    return true;
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
    const std::string key = "TypeLib\\" + library.identifier + "\\" + library.version;
    const std::string fileKey = key + "\\" + library.language + "\\win32";
    // The first resource needs no number.
    const std::string value = library.resource > 1 ? path + "\\" + std::to_string(library.resource) : path;
    const std::string before = registry_.Get(fileKey);
    registry_.Set(key, library.description);
    registry_.Set(key + "\\FLAGS", std::to_string(library.flags));
    registry_.Set(fileKey, value);
    registry_.Set(key + "\\HELPDIR", GetPathFolder(path));
    ++libraries_;
    std::cout << value << ": " << library.identifier << " version " << library.version << ", "
              << (library.description.empty() ? "without a description" : library.description) << '\n';
    if (!before.empty() && !EqualsIgnoreCase(before, value))
      std::cout << "  in the place of " << before << '\n';
  }

  const std::string& machineFolder_;
  Machine machine_;
  RegistryText registry_;
  int libraries_ = 0;
};

}  // namespace

int RegisterComponents(const Options& options) {
  try {
    return Registration(options.machine, options.drives).Run(options.components);
  } catch (const MachineError& error) {
    Complain(options.machine, error.what());
    return kExitUsage;
  }
}

}  // namespace bxvbwiz
