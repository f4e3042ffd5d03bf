#include "analysis/LibraryChecks.h"

#include <algorithm>

#include "analysis/RegistrationChecks.h"
#include "project/basDependency.h"
#include "project/TypeLibrary.h"
#include "support/basFile.h"
#include "sysinfo/Key.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

struct Runtime {
  const char* version;
  const char* file;
};

constexpr Runtime kRuntimes[] = {{kVersion5, "MSVBVM50.DLL"}, {kVersion6, "MSVBVM60.DLL"}};

// The run times that a source copy imports.
std::vector<const Runtime*> RuntimesOf(const AuditSubject& subject, const CFile& file) {
  std::vector<const Runtime*> runtimes;
  if (!file.LinkResolves || IsBareTypeLibrary(file.FileName)) return runtimes;
  for (const std::string& import : subject.executables.Of(AuditSubject::SourceOf(file)).imports) {
    for (const Runtime& runtime : kRuntimes) {
      if (EqualsIgnoreCase(import, runtime.file)) runtimes.push_back(&runtime);
    }
  }
  return runtimes;
}

struct DataAccessLibrary {
  std::string_view name;        // of its file, in upper case
  std::string_view identifier;  // of its type library; empty when the file's name tells enough
  const char* family;
};

// Libraries of ADO and RDO that do not go by the names and identifiers by which the wizard knows a family.
constexpr DataAccessLibrary kDataAccessLibraries[] = {
    {"MSADO20.TLB", "{00000200-0000-0010-8000-00AA006D2EA4}", "ADO"},
    {"MSADO21.TLB", "{00000201-0000-0010-8000-00AA006D2EA4}", "ADO"},
    {"MSADO25.TLB", "{00000205-0000-0010-8000-00AA006D2EA4}", "ADO"},
    {"MSADO26.TLB", "{00000206-0000-0010-8000-00AA006D2EA4}", "ADO"},
    {"MSADO27.TLB", "{EF53050B-882E-4776-B643-EDA472E8E3F2}", "ADO"},
    {"MSADO28.TLB", "{2A75196C-D9EB-4129-B803-931327F72D5C}", "ADO"},
    {"MSADO60.TLB", "", "ADO"},
    {"MSADOX.DLL", "", "ADO"},
    {"MSADOR15.DLL", "", "ADO"},
    {"MSADODC.OCX", "", "ADO"},
    {"MSRDC20.OCX", "", "RDO"},
};

const DataAccessLibrary* FindDataAccess(const LibraryLine& line, const std::string& path) {
  const auto* const found = std::find_if(
      std::begin(kDataAccessLibraries), std::end(kDataAccessLibraries), [&](const DataAccessLibrary& known) {
        return EqualsIgnoreCase(known.name, line.fileName) ||
               EqualsIgnoreCase(known.name, GetPathFileName(path)) ||
               (!known.identifier.empty() && EqualsIgnoreCase(known.identifier, line.identifier));
      });
  return found == std::end(kDataAccessLibraries) ? nullptr : found;
}

// The version that is taken in place of `requested` without a question; empty when it is that version, or
// when the user was asked.
std::string VersionTakenSilently(Key& library, const std::string& requested) {
  // With letters it can only be hexadecimal.
  std::string comparable = requested;
  const bool hasLetters = requested.find_first_of("abcdefABCDEF") != std::string::npos;
  if (hasLetters && !ConvertHexVersion(requested, comparable)) comparable = requested;
  std::string taken;
  for (std::size_t position = 1; position <= library.SubKeys().Count(); ++position) {
    std::string name = library.SubKeys().Item(position)->Name();
    std::string version;
    if (EqualsIgnoreCase(name, requested) || !ConvertHexVersion(name, version)) return "";
    if (version == requested) return name;
    if (IsHigherVersion(version, comparable)) return "";
    taken = std::move(name);
  }
  return taken;
}

LibraryLine LineOf(const AuditedLibrary& library) {
  return library.isControl ? ReadControlLine(library.rawName) : ReadReferenceLine(library.rawName);
}

}  // namespace

void TellOtherRuntime(const AuditSubject& subject) {
  const std::string installed = subject.global.GetVBVer();
  if (installed.empty()) return;  // told when the component is made
  bool isKnown = false;
  for (const CFile& file : subject.files) {
    for (const Runtime* const runtime : RuntimesOf(subject, file)) {
      isKnown = isKnown || &file == subject.Output();
      if (installed == runtime->version || subject.Installed(runtime->file) != nullptr) continue;
      AddFinding({FindingId::RuntimeDiffers,
                  {AuditSubject::SourceOf(file), runtime->file, installed},
                  file.FirstAsker()});
    }
  }
  if (!isKnown && subject.global.FindVB().empty()) {
    AddFinding(
        {FindingId::RuntimeGuessed, {installed}, {TextId::OriginOutput, {subject.project.FileName()}}});
  }
}

void TellVersionsNotAsked(const AuditSubject& subject) {
  const auto root = Key::Root(subject.platform.registry, RegConstants::HKeyClassesRoot);
  for (const AuditedLibrary& library : subject.libraries) {
    const LibraryLine line = LineOf(library);
    if (!library.isIncluded || line.version.empty() || line.identifier.empty()) continue;
    const auto key = root->OpenSubKeyForReading("TypeLib\\" + line.identifier);
    const std::string taken = key == nullptr ? "" : VersionTakenSilently(*key, line.version);
    if (taken.empty()) continue;
    AddFinding(
        {FindingId::OtherVersionTaken, {library.name, line.version, taken}, library.record.FirstAsker()});
  }
}

void TellUnknownDataAccess(const AuditSubject& subject) {
  bool hasAdo = false;
  bool hasRdo = false;
  for (const CReference& reference : subject.project.References()) {
    hasAdo = hasAdo || reference.ADO;
    hasRdo = hasRdo || reference.RDO;
  }
  for (const AuditedLibrary& library : subject.libraries) {
    const DataAccessLibrary* const known = FindDataAccess(LineOf(library), library.name);
    if (known == nullptr || (known->family == std::string_view("ADO") ? hasAdo : hasRdo)) continue;
    AddFinding(
        {FindingId::DataAccessNotRecognised, {library.name, known->family}, library.record.FirstAsker()});
  }
}

}  // namespace bxvbwiz
