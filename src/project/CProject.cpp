#include "project/CProject.h"

#include <array>

#include "project/basDependency.h"
#include "project/OtherCodePage.h"
#include "project/TypeLibrary.h"
#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// A key whose value goes into a property of the project.
struct TextKey {
  std::string_view key;
  std::string CProject::*property;
  bool quoted;
};

constexpr std::string_view kCompanyKey = "VersionCompanyName=";
constexpr std::array<TextKey, 7> kTextKeys{{
    {"ExeName32=", &CProject::ExeName, true},
    {"Path32=", &CProject::ExePath, true},
    {"Name=", &CProject::Name, true},
    {"MajorVer=", &CProject::MajorVer, false},
    {"MinorVer=", &CProject::MinorVer, false},
    {"RevisionVer=", &CProject::RevisionVer, false},
    {kCompanyKey, &CProject::VersionCompanyName, true},
}};

// How the lines of source files that are no forms begin, and whether a name and a ";" stand before the file.
struct SourceKey {
  std::string_view key;
  bool isNamed;
};

constexpr SourceKey kSourceKeys[] = {
    {"Module=", true},        {"Class=", true},         {"UserControl=", false},
    {"PropertyPage=", false}, {"UserDocument=", false}, {"Designer=", false},
};

// What follows `key` in `line`. False when the line begins otherwise.
bool Follows(std::string_view line, std::string_view key, std::string_view& value) {
  if (!StartsWith(line, key)) return false;
  value = line.substr(key.size());
  return true;
}

// The extension of a project's output; empty for a project without a type.
const char* OutputExtension(std::int16_t projectType) {
  switch (projectType) {
    case CProject::PTStandardExe:
    case CProject::PTActiveXExe:
    case CProject::PTActiveXDocExe:
      return ".EXE";
    case CProject::PTActiveXDLL:
    case CProject::PTActiveXDocDll:
      return ".DLL";
    case CProject::PTUserControl:
      return ".OCX";
    default:
      return "";
  }
}

// The folder of a project file without a trailing backslash, except a drive's root.
std::string ProjectFolder(FileSystem& files, const std::string& projectFile) {
  std::string folder = GetPathFolder(projectFile);
  if (!folder.empty()) return folder;
  std::string full;
  CheckSystem(files.FullPath(projectFile, full), projectFile);
  return GetPathFolder(full);
}

std::string WhyUnreadable(const StringTable& strings, SystemError error, const std::string& path) {
  if (MeansMissing(error)) return TextOf(strings, {TextId::FileDoesNotExist, {path}});
  return TextOf(strings, {TextId::FileMayNotBeRead, {path, ErrorCode(error)}});
}

}  // namespace

std::string OutputFolder(FileSystem& files, const std::string& projectFile, const std::string& exePath) {
  std::string projectFolder = FixPath(ProjectFolder(files, projectFile));
  if (exePath.empty()) return projectFolder;
  std::string path = exePath;
  if (!IsAbsolutePath(path) && !StartsWith(path, "\\\\")) {
    // A path from the root means that of the project's drive or share.
    const bool isFromRoot = StartsWith(path, "\\");
    path.insert(
        0, isFromRoot ? StripTrailingBackslash(ParsePath(projectFolder, PathPart::Root)) : projectFolder);
  }
  std::string full;
  CheckSystem(files.FullPath(path, full), path);
  return FixPath(full);
}

std::string CompanyOfProject(Platform& platform, const std::string& projectFile) {
  std::string bytes;
  std::string company;
  if (platform.files.Read(projectFile, bytes) != SystemError::Success) return company;
  LineReader reader(bytes);
  std::string_view line;
  std::string_view value;
  while (reader.Next(line)) {
    if (Follows(line, kCompanyKey, value)) company = StripQuotes(platform.codePage.Decode(value));
  }
  return company;
}

// The kind of server that a project's type line names. Its members decide the project type.
enum class CProject::ServerKind { None, Dll, Exe };

CProject::CProject(const AnalysisContext& context)
    : context_(context),
      sources_(context_.platform),
      allControls_(context_, nullptr),
      forms_(context_, allControls_, sources_),
      objects_(context_, &allControls_),
      references_(context_) {
  const CallStackEntry entry("CProject:Class_Initialize");
  WinSysDir = SystemFolder(context_.platform);
  context_.global.LoadSystemFiles();
}

void CProject::SetFileName(const std::string& fileName) {
  const CallStackEntry entry("CProject:FileName (Let)");
  fileName_ = fileName;
  std::string bytes;
  try {
    const SystemError found = context_.platform.files.Read(fileName, bytes);
    if (found != SystemError::Success && !MeansMissing(found)) {
      throw RuntimeError(kErrorPathFileAccess, WhyUnreadable(context_.platform.strings, found, fileName));
    }
    CheckSystem(found, fileName);
    ReadFacts(bytes);
    IsMisread = TellOtherCodePage(context_.platform, fileName_, bytes);
    const std::string extension = OutputExtension(ProjectType);
    if (ExeName.empty() && !extension.empty()) ExeName = ParsePath(fileName, PathPart::Title) + extension;
    // Without a name the look-up would give any file of the folder.
    if (ExeName.empty() || Dir(context_.platform.files, OutputPath()).empty()) NeedsRebuild = true;
    if (!NeedsRebuild || ReadsUnbuilt) ReadMembers(bytes);
  } catch (...) {
    const RuntimeError error = CurrentError();
    const std::string forms = error.Number() == kErrorDuplicateKey ? "" : UnreadableForms(bytes);
    throw RuntimeError(kProjectReadError, forms.empty() ? error.what() : forms, error.Source());
  }
}

// The first pass: what the project is and what it makes. Section headings do not matter.
void CProject::ReadFacts(std::string_view bytes) {
  ServerKind server = ServerKind::None;
  LineReader reader(bytes);
  std::string_view line;
  std::string_view value;
  while (reader.Next(line)) {
    bool isText = false;
    for (const TextKey& known : kTextKeys) {
      if (!Follows(line, known.key, value)) continue;
      const std::string text = context_.platform.codePage.Decode(value);
      this->*known.property = known.quoted ? StripQuotes(text) : text;
      isText = true;
      break;
    }
    if (!isText) ReadType(line, server);
  }
}

// The later line decides: a server without classes and documents stays a plain executable, and its last
// member makes it what that member is.
void CProject::ReadType(std::string_view line, ServerKind& server) {
  if (StartsWith(line, "Type=Control")) {
    ProjectType = PTUserControl;
  } else if (StartsWith(line, "Type=Exe")) {
    ProjectType = PTStandardExe;
  } else if (StartsWith(line, "Type=OleDll")) {
    server = ServerKind::Dll;
    ProjectType = PTStandardExe;
  } else if (StartsWith(line, "Type=OleExe")) {
    server = ServerKind::Exe;
    ProjectType = PTStandardExe;
  } else if (StartsWith(line, "Class=")) {
    if (server == ServerKind::Dll) ProjectType = PTActiveXDLL;
    if (server == ServerKind::Exe) ProjectType = PTActiveXExe;
  } else if (StartsWith(line, "UserDocument=")) {
    if (server == ServerKind::Dll) ProjectType = PTActiveXDocDll;
    if (server == ServerKind::Exe) ProjectType = PTActiveXDocExe;
  }
}

// The second pass: the forms, controls and type libraries, in the file's order.
void CProject::ReadMembers(std::string_view bytes) {
  context_.user.ShowStatus(context_.platform.strings.Text(TextId::ScanningProject));
  context_.user.DoEvents();

  const CodePage& codePage = context_.platform.codePage;
  LineReader reader(bytes);
  std::string_view line;
  std::string_view value;
  while (reader.Next(line)) {
    const OriginScope origin(LineOrigin(fileName_, reader.Number()));
    if (Follows(line, "Form=", value)) {
      forms_.Add(codePage.Decode(value), Folder());
    } else if (Follows(line, "Object=", value)) {
      const std::string rawLine = codePage.Decode(value);
      sources_.AddControl(Sources::Lister::Project, rawLine);
      objects_.Add(rawLine);
    } else if (Follows(line, "Reference=", value)) {
      AddReference(codePage.Decode(value));
    } else {
      ReadSource(line);
      continue;
    }
    context_.user.DoEvents();  // each may have taken long
    context_.user.CheckCancelled();
  }
}

void CProject::ReadSource(std::string_view line) {
  for (const SourceKey& known : kSourceKeys) {
    std::string_view value;
    if (!Follows(line, known.key, value)) continue;
    if (known.isNamed) value.remove_prefix(value.find(';') + 1);  // all of it without one
    const std::string name = StripQuotes(TrimBlanks(context_.platform.codePage.Decode(value)));
    if (!name.empty()) sources_.ReadModule(NormalPath(context_.platform.files, SourcePath(Folder(), name)));
    return context_.user.DoEvents();
  }
}

// What is wrong with the forms of a project that could not be read; empty when that is something else.
std::string CProject::UnreadableForms(std::string_view bytes) {
  const StringTable& strings = context_.platform.strings;
  std::string reasons;
  std::string content;
  LineReader reader(bytes);
  std::string_view line;
  std::string_view value;
  while (reader.Next(line)) {
    if (!Follows(line, "Form=", value)) continue;
    const std::string path = SourcePath(Folder(), context_.platform.codePage.Decode(value));
    const SystemError error = context_.platform.files.Read(path, content);
    if (error == SystemError::Success) continue;
    const std::string origin = TextOf(strings, LineOrigin(fileName_, reader.Number()));
    const std::string reason = WhyUnreadable(strings, error, path);
    reasons += (reasons.empty() ? "" : "; ") + TextOf(strings, {TextId::NamedBy, {origin, reason}});
  }
  return reasons;
}

void CProject::AddReference(const std::string& rawLine) {
  const std::shared_ptr<CReference> reference = references_.Add(rawLine);
  reference->SetProjectPath(Folder());
  if (reference->RemoteServer) {
    ShowLibraryMessage(context_, TextId::RemoteServerUsed, kStyleInformation, reference->Name);
  }
}

std::string CProject::Folder() {
  return ProjectFolder(context_.platform.files, fileName_);
}

std::string CProject::OutputPath() const {
  return OutputFolder(context_.platform.files, fileName_, ExePath) + ExeName;
}

}  // namespace bxvbwiz
