#include <set>

#include "analysis/Audit.h"
#include "support/basFile.h"
#include "sysinfo/WindowsFiles.h"
#include "text/Text.h"

// What the source files of a project ask for and neither its lists nor the files of the setup have: controls,
// DLLs, objects; and what these files are to the products that they belong to.
namespace bxvbwiz {
namespace {

using Control = Sources::Control;
using Lister = Sources::Lister;

// A version in the form in which two are compared: one text for "a.0" and "A.00".
std::string Comparable(const std::string& version) {
  std::string decimal;
  return ConvertHexVersion(version, decimal) ? decimal : UpperCase(version);
}

// Whether the setup brings a file of this name, or the target computer has it.
bool IsAtHand(const AuditSubject& subject, const std::string& name) {
  const std::optional<WindowsFileUse> use = UseOfWindowsFile(name);
  const bool isOfWindows = use && *use != WindowsFileUse::Debug;
  return isOfWindows || subject.global.IsSystemFile(name) || subject.Installed(name) != nullptr;
}

// The first line that names the same library, one of the project file or another one; null when there is
// none.
const Control* FindLine(const AuditSubject& subject, const Control& control, bool isOfProject) {
  for (const Control& other : subject.project.sources().Controls()) {
    if ((other.lister == Lister::Project) == isOfProject &&
        EqualsIgnoreCase(other.line.identifier, control.line.identifier))
      return &other;
  }
  return nullptr;
}

void TellUnread(const AuditSubject& subject) {
  for (const Finding& unread : subject.project.sources().Unread()) {
    if (unread.id != FindingId::SourceMissing || !subject.project.IsMisread) AddFinding(unread);
  }
}

// When a file was last changed; 0 when that is unknown.
FileTime WhenWritten(FileSystem& files, const std::string& path) {
  std::vector<FoundFile> found;
  const bool isFound = files.Find(path, found) == SystemError::Success && !found.empty();
  return isFound ? found.front().written : 0;
}

// A program that was built before one of its sources was changed. A checkout writes all files anew, in any
// order, which may take minutes. The project file does not count: Visual Basic saves it after it has
// compiled.
void TellOlderOutput(const AuditSubject& subject) {
  constexpr FileTime kCheckout = FileTime{kUnitsPerSecond} * 60 * 10;
  if (subject.output == nullptr || !subject.output->LinkResolves) return;
  FileSystem& files = subject.platform.files;
  const std::string program = subject.output->Source();
  const FileTime built = WhenWritten(files, program);
  FileTime latest = built + kCheckout;
  const std::string* newest = nullptr;
  for (const std::string& source : subject.project.sources().Paths()) {
    const FileTime written = WhenWritten(files, source);
    if (written <= latest) continue;
    latest = written;
    newest = &source;
  }
  if (built != 0 && newest != nullptr)
    AddFinding({FindingId::OutputOlder, {program, *newest}, subject.output->FirstAsker()});
}

// A control line of the project file against those of the other files, or the other way round.
void TellControl(const AuditSubject& subject, const Control& control) {
  CProject& project = subject.project;
  const auto& [identifier, version, name, description] = control.line;
  const bool isInstalled = subject.Installed(name) != nullptr;
  const bool isListed = control.lister == Lister::Project;
  const Control* const other = FindLine(subject, control, !isListed);
  // Without a form there is nothing that a control could be on, and code alone uses it.
  const bool areFormsKnown = project.sources().Unread().empty() && project.Forms().Count() > 0;
  if (isListed) {
    if (other == nullptr && isInstalled && areFormsKnown) AddFinding(FindingId::ControlUnused, {name});
  } else if (other != nullptr) {
    if (Comparable(version) == Comparable(other->line.version)) return;
    AddFinding(FindingId::ControlVersionDiffers,
               {name, version, other->line.version, TextOf(subject.platform.strings, other->origin)});
  } else if (isInstalled) {
    AddFinding(FindingId::ControlNotInProject, {name, version});
  } else if (control.lister != Lister::Form && !subject.global.IsSystemFile(name)) {
    // What a form asks for was looked up, and told when it was not found.
    AddFinding(FindingId::ControlNotInstalled, {name, version});
  }
}

void TellControls(const AuditSubject& subject) {
  for (const Control& control : subject.project.sources().Controls()) {
    const OriginScope origin(control.origin);
    // Without an identifier it is another project of the same group.
    if (StartsWith(control.line.identifier, "{")) TellControl(subject, control);
  }
}

// The file name of a DLL, as the system completes it.
std::string DllName(const std::string& path) {
  const std::string name = GetPathFileName(path);
  return name.find('.') == std::string::npos ? name + ".dll" : name;
}

void TellDll(const AuditSubject& subject, const std::string& path) {
  const std::string name = DllName(path);
  if (IsAtHand(subject, name)) return;
  CSystemInfo system(subject.platform);
  for (const std::string& file : {subject.project.OutputPath(), subject.project.FileName()}) {
    const std::string folder = FixPath(GetPathFolder(file));
    if (subject.Exists(folder + name)) return AddFinding(FindingId::DeclaredDllLeftOut, {name, folder});
  }
  for (const std::string& folder : {FixPath(GetPathFolder(path)), system.WinSysDir(), system.WinDir()}) {
    if (folder.size() > 1 && subject.Exists(folder + name))
      return AddFinding(FindingId::DeclaredDllElsewhere, {name, folder});
  }
  AddFinding(FindingId::DeclaredDllMissing, {name});
}

// The program of a command line as the registry gives servers: in quotes, or up to its arguments.
std::string ProgramOf(const std::string& command) {
  if (StartsWith(command, "\"")) return command.substr(1, command.find('"', 1) - 1);
  const std::size_t extension = UpperCase(command).find(".EXE ");
  return extension == std::string::npos ? command : command.substr(0, extension + 4);
}

// The file that makes the object of a name; empty when none is registered.
std::string ServerOf(Platform& platform, const std::string& progId) {
  Registry& registry = platform.registry;
  std::string classId = ClassDefault(registry, progId + "\\CLSID");
  const std::string current = classId.empty() ? ClassDefault(registry, progId + "\\CurVer") : "";
  if (!current.empty()) classId = ClassDefault(registry, current + "\\CLSID");
  if (classId.empty()) return "";
  for (const char* key : {"\\InprocServer32", "\\LocalServer32"}) {
    const std::string server = ClassDefault(registry, "CLSID\\" + classId + key);
    // Without a default value it would be the first of the others, which name no file.
    if (server.find('.') != std::string::npos) return NormalPath(platform.files, ProgramOf(server));
  }
  return "";
}

void TellObject(const AuditSubject& subject, const std::string& progId) {
  const std::string server = ServerOf(subject.platform, progId);
  // Until it is registered, the project's own class looks like any other.
  const bool isOwn = EqualsIgnoreCase(progId.substr(0, progId.find('.')), subject.project.Name);
  if (!server.empty() && !IsAtHand(subject, GetPathFileName(server)))
    AddFinding(FindingId::ObjectByName, {progId, server});
  if (server.empty() && !isOwn) AddFinding(FindingId::ObjectByNameUnknown, {progId});
}

void TellUses(const AuditSubject& subject) {
  std::set<std::string> told;
  for (const Sources::Use& use : subject.project.sources().Uses()) {
    const bool isDll = use.kind == CodeUse::Kind::Dll;
    if (!told.insert(UpperCase(isDll ? DllName(use.name) : use.name)).second) continue;
    const OriginScope origin(use.origin);
    (isDll ? TellDll : TellObject)(subject, use.name);
  }
}

// The type library of a product, or its program, which a setup cannot bring one by one. A program beside the
// project is one of the author's own.
void TellProduct(const AuditSubject& subject, const Library& library) {
  if (!library.Include || library.kind != RecordKind::TypeLibrary) return;
  const std::string path = UpperCase(library.Name);
  const bool isProgram = HasExtension(path, {".EXE"}) &&
                         StartsWith(path, UpperCase(CSystemInfo(subject.platform).ProgramFilesPath())) &&
                         !StartsWith(path, UpperCase(FixPath(GetPathFolder(subject.project.OutputPath()))));
  if (isProgram || HasExtension(path, {".OLB"})) AddFinding(FindingId::LibraryOfProduct, {library.Name});
}

void TellLicence(const AuditSubject& subject, const Library& library) {
  const std::string folder = GetPathFolder(library.Name);
  if (!library.Include || library.kind != RecordKind::Control || folder.empty()) return;
  const std::string title = ParsePath(library.Name, PathPart::Title);
  const std::string licence = Dir(subject.platform.files, FixPath(folder) + title + ".lic");
  if (licence.empty()) return;
  const std::string path = FixPath(folder) + licence;
  if (subject.Installed(licence) != nullptr) return AddFinding(FindingId::LicenceInSetup, {path});
  AddFinding(FindingId::LicenceFile, {path, GetPathFileName(library.Name)});
}

}  // namespace

AuditChecks SourceChecks() {
  return {TellUnread,
          TellOlderOutput,
          TellControls,
          TellUses,
          ForEachLibrary<TellProduct>,
          ForEachLibrary<TellLicence>};
}

}  // namespace bxvbwiz
