#include "analysis/Audit.h"
#include "setupgen/SetupAnswers.h"
#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// Versions of Visual Basic and their run time.
constexpr std::pair<const char*, const char*> kRuntimes[] = {{kVersion5, "MSVBVM50.DLL"},
                                                             {kVersion6, "MSVBVM60.DLL"}};

// Files and identifiers of type libraries of ADO and RDO that are not those by which the wizard knows a
// family.
constexpr std::pair<const char*, const char*> kDataAccessNames[] = {
    {"MSADO20.TLB", "ADO"},  {"{00000200-0000-0010-8000-00AA006D2EA4}", "ADO"},
    {"MSADO21.TLB", "ADO"},  {"{00000201-0000-0010-8000-00AA006D2EA4}", "ADO"},
    {"MSADO25.TLB", "ADO"},  {"{00000205-0000-0010-8000-00AA006D2EA4}", "ADO"},
    {"MSADO26.TLB", "ADO"},  {"{00000206-0000-0010-8000-00AA006D2EA4}", "ADO"},
    {"MSADO27.TLB", "ADO"},  {"{EF53050B-882E-4776-B643-EDA472E8E3F2}", "ADO"},
    {"MSADO28.TLB", "ADO"},  {"{2A75196C-D9EB-4129-B803-931327F72D5C}", "ADO"},
    {"MSADO60.TLB", "ADO"},  {"MSADOX.DLL", "ADO"},
    {"MSADOR15.DLL", "ADO"}, {"MSADODC.OCX", "ADO"},
    {"MSRDC20.OCX", "RDO"},
};

// Another run time of Visual Basic than the one that the setup installs.
void TellOtherRuntime(const AuditSubject& subject) {
  const std::string installed = subject.global.GetVBVer();
  if (installed.empty()) return;  // told when the component is made
  bool isKnown = false;
  for (const CFile& file : subject.files) {
    for (const std::string& import : subject.FactsOf(file).imports) {
      for (const auto& [version, runtime] : kRuntimes) {
        if (!EqualsIgnoreCase(import, runtime)) continue;
        isKnown = isKnown || &file == subject.output;
        if (installed == version || subject.Installed(runtime) != nullptr) continue;
        AddFinding({FindingId::RuntimeDiffers, {file.Source(), runtime, installed}, file.FirstAsker()});
      }
    }
  }
  if (isKnown || !subject.global.FindVB().empty()) return;
  AddFinding({FindingId::RuntimeGuessed, {installed}, {TextId::OriginOutput, {subject.project.FileName()}}});
}

// A library of another version than the project asks for, taken without a question.
void TellVersionNotAsked(const AuditSubject& /*subject*/, const Library& library) {
  const LibraryLookup& lookup = library.Lookup();
  if (library.Include && !lookup.takenUnasked.empty())
    AddFinding(FindingId::OtherVersionTaken, {library.Name, lookup.version, lookup.takenUnasked});
}

// Data access that the wizard does not recognise as such.
void TellUnknownDataAccess(const AuditSubject& subject, const Library& library) {
  const DataAccessNeeds needs = DataAccessOf(subject.project);
  const LibraryLookup& lookup = library.Lookup();
  for (const auto& [name, family] : kDataAccessNames) {
    const bool isIt = EqualsIgnoreCase(name, lookup.fileName) || EqualsIgnoreCase(name, lookup.identifier) ||
                      EqualsIgnoreCase(name, GetPathFileName(library.Name));
    const bool isRecognised = family == std::string_view("ADO") ? needs.ado : needs.rdo;
    if (isIt && !isRecognised) AddFinding(FindingId::DataAccessNotRecognised, {library.Name, family});
  }
}

}  // namespace

AuditChecks LibraryChecks() {
  return {TellOtherRuntime, ForEachLibrary<TellVersionNotAsked>, ForEachLibrary<TellUnknownDataAccess>};
}

}  // namespace bxvbwiz
