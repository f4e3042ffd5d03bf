#include "analysis/SourceFindings.h"

#include <algorithm>
#include <unordered_set>

#include "project/WindowsDlls.h"
#include "support/basFile.h"
#include "sysinfo/CSystemInfo.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using Control = Sources::Control;
using Lister = Sources::Lister;

bool IsSameVersion(const std::string& left, const std::string& right) {
  std::string leftDecimal;
  std::string rightDecimal;
  if (EqualsIgnoreCase(left, right)) return true;
  return ConvertHexVersion(left, leftDecimal) && ConvertHexVersion(right, rightDecimal) &&
         leftDecimal == rightDecimal;
}

bool IsOfSameLibrary(const Control& left, const Control& right) {
  return EqualsIgnoreCase(left.line.identifier, right.line.identifier);
}

// The file name of a DLL, as the system completes it.
std::string DllName(const std::string& path) {
  const std::string name = GetPathFileName(path);
  return name.find('.') == std::string::npos ? name + ".dll" : name;
}

// The program of a command line as the registry gives servers: in quotes, or up to its arguments.
std::string ProgramOf(const std::string& command) {
  if (StartsWith(command, "\"")) return command.substr(1, command.find('"', 1) - 1);
  const std::size_t extension = UpperCase(command).find(".EXE ");
  return extension == std::string::npos ? command : command.substr(0, extension + 4);
}

class SourceCheck {
 public:
  SourceCheck(AnalysisContext& context, CProject& project, const CFiles& files)
      : context_(context), files_(context.platform.files), project_(project), system_(context.platform) {
    for (const CFile& file : files) installed_.insert(UpperCase(GetPathFileName(file.FileName)));
  }

  void TellAll() {
    for (const Finding& unread : project_.sources().Unread()) {
      if (unread.id != FindingId::SourceMissing || !project_.IsMisread) AddFinding(unread);
    }
    for (const Control& control : project_.sources().Controls()) TellControl(control);
    std::unordered_set<std::string> told;
    for (const Sources::Use& use : project_.sources().Uses()) {
      const bool isDll = use.kind == CodeUse::Kind::Dll;
      if (!told.insert(UpperCase(isDll ? DllName(use.name) : use.name)).second) continue;
      if (isDll) {
        TellDll(use);
      } else {
        TellObject(use);
      }
    }
    for (CReference& reference : project_.References()) TellProduct(reference);
    for (CObject& control : project_.Objects()) TellLicence(control);
    for (CForm& form : project_.Forms()) {
      for (CObject& control : form.Objects()) TellLicence(control);
    }
  }

 private:
  bool IsInstalled(const std::string& path) const {
    return installed_.count(UpperCase(GetPathFileName(path))) != 0;
  }

  // Without a form there is nothing that a control could be on, and code alone uses it.
  bool AreAllFormsKnown() const {
    return project_.sources().Unread().empty() && project_.Forms().Count() > 0;
  }

  // The first line of one of the listers that names the same library; null when there is none.
  template <class IsLister>
  const Control* Find(const Control& control, const IsLister& isLister) const {
    const std::vector<Control>& all = project_.sources().Controls();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Control& other) {
      return isLister(other.lister) && IsOfSameLibrary(other, control);
    });
    return found == all.end() ? nullptr : &*found;
  }

  void TellControl(const Control& control) const {
    if (!StartsWith(control.line.identifier, "{")) return;  // another project of the same group
    const std::string& name = control.line.fileName;
    if (control.lister == Lister::Project) {
      const bool isUsed = Find(control, [](Lister lister) { return lister != Lister::Project; }) != nullptr;
      if (isUsed || !AreAllFormsKnown() || !IsInstalled(name)) return;
      return AddFinding({FindingId::ControlUnused, {name}, control.origin});
    }
    if (const Control* listed = Find(control, [](Lister lister) { return lister == Lister::Project; })) {
      if (IsSameVersion(control.line.version, listed->line.version)) return;
      return AddFinding({FindingId::ControlVersionDiffers,
                         {name, control.line.version, listed->line.version,
                          TextOf(context_.platform.strings, listed->origin)},
                         control.origin});
    }
    if (IsInstalled(name)) {
      return AddFinding({FindingId::ControlNotInProject, {name, control.line.version}, control.origin});
    }
    // What a form asks for was looked up, and told when it was not found.
    if (control.lister == Lister::Form || context_.global.IsSystemFile(name)) return;
    AddFinding({FindingId::ControlNotInstalled, {name, control.line.version}, control.origin});
  }

  void TellDll(const Sources::Use& use) {
    const std::string name = DllName(use.name);
    if (IsWindowsDll(name) || context_.global.IsSystemFile(name) || IsInstalled(name)) return;
    const std::string projectFolder = FixPath(GetPathFolder(project_.FileName()));
    const std::string ownFolder = FixPath(GetPathFolder(project_.OutputPath()));
    for (const std::string& folder : {ownFolder, projectFolder}) {
      if (!FolderHoldsFile(files_, folder, name)) continue;
      return AddFinding({FindingId::DeclaredDllLeftOut, {name, folder}, use.origin});
    }
    const std::string named = GetPathFolder(use.name);
    for (const std::string& folder :
         {named.empty() ? named : FixPath(named), system_.WinSysDir(), system_.WinDir()}) {
      if (folder.empty() || !FolderHoldsFile(files_, folder, name)) continue;
      return AddFinding({FindingId::DeclaredDllElsewhere, {name, folder}, use.origin});
    }
    AddFinding({FindingId::DeclaredDllMissing, {name}, use.origin});
  }

  void TellObject(const Sources::Use& use) const {
    const std::string server = ServerOf(use.name);
    const std::string file = GetPathFileName(server);
    if (file.empty()) {
      // Until it is registered, the project's own class looks like any other.
      if (EqualsIgnoreCase(use.name.substr(0, use.name.find('.')), project_.Name)) return;
      return AddFinding({FindingId::ObjectByNameUnknown, {use.name}, use.origin});
    }
    if (IsInstalled(file) || IsWindowsDll(file) || context_.global.IsSystemFile(file)) return;
    AddFinding({FindingId::ObjectByName, {use.name, server}, use.origin});
  }

  // The file that makes the object of a name; empty when none is registered.
  std::string ServerOf(const std::string& progId) const {
    Registry& registry = context_.platform.registry;
    std::string classId = ClassDefault(registry, progId + "\\CLSID");
    if (classId.empty()) {
      const std::string current = ClassDefault(registry, progId + "\\CurVer");
      if (!current.empty()) classId = ClassDefault(registry, current + "\\CLSID");
    }
    if (classId.empty()) return "";
    for (const char* key : {"\\InprocServer32", "\\LocalServer32"}) {
      const std::string server = ClassDefault(registry, "CLSID\\" + classId + key);
      // Without a default value it would be the first of the others, which name no file.
      if (server.find('.') != std::string::npos) return NormalPath(files_, ProgramOf(server));
    }
    return "";
  }

  // The type library of a product, or its program, which a setup cannot bring one by one. A program beside
  // the project is one of the author's own.
  void TellProduct(const CReference& reference) {
    if (!reference.Include) return;
    const std::string path = UpperCase(reference.Name);
    const bool isProgram = EndsWith(path, ".EXE") &&
                           StartsWith(path, UpperCase(system_.ProgramFilesPath())) &&
                           !StartsWith(path, UpperCase(FixPath(GetPathFolder(project_.OutputPath()))));
    if (!isProgram && !EndsWith(path, ".OLB")) return;
    AddFinding({FindingId::LibraryOfProduct, {reference.Name}, reference.FirstAsker()});
  }

  void TellLicence(const CObject& control) const {
    const std::string folder = GetPathFolder(control.Name);
    if (!control.Include || folder.empty()) return;
    const std::string licence =
        Dir(files_, FixPath(folder) + ParsePath(control.Name, PathPart::Title) + ".lic");
    if (licence.empty()) return;
    const std::string path = FixPath(folder) + licence;
    if (IsInstalled(licence)) return AddFinding({FindingId::LicenceInSetup, {path}, control.FirstAsker()});
    AddFinding({FindingId::LicenceFile, {path, GetPathFileName(control.Name)}, control.FirstAsker()});
  }

  AnalysisContext& context_;
  FileSystem& files_;
  CProject& project_;
  CSystemInfo system_;
  std::unordered_set<std::string> installed_;  // names in upper case
};

}  // namespace

void TellOfSources(AnalysisContext& context, CProject& project, const CFiles& files) {
  SourceCheck(context, project, files).TellAll();
}

}  // namespace bxvbwiz
