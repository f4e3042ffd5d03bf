#include <iostream>
#include <map>
#include <nlohmann/json.hpp>

#include "cli/Output.h"
#include "machine/CompiledStringTable.h"
#include "project/EXEFile.h"
#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using Json = nlohmann::ordered_json;

// Programs read the name; the number is what hosts and other documents of the wizard show.
using NumberNames = std::map<std::int32_t, const char*>;

const NumberNames kExeTypes = {{0, "none"},        {kExeTypeDos, "dos"}, {kExeTypeNE, "ne"},
                               {kExeTypeLE, "le"}, {kExeTypeXE, "xe"},   {kExeTypePE, "pe"}};
const NumberNames kErrorTypes = {
    {kExeErrorNone, "none"}, {kExeErrorNotValid, "notValid"}, {kExeErrorNoImports, "noImports"}};
const NumberNames kRegisterCodes = {{kRegisterNone, "none"},
                                    {kRegisterDll, "dll"},
                                    {kRegisterExe, "exe"},
                                    {kRegisterTypeLibrary, "typeLibrary"},
                                    {kRegisterRemote, "remote"},
                                    {kRegisterNoMacro, "noMacro"},
                                    {kRegisterUnknownMacro, "unknownMacro"}};
const NumberNames kStyles = {{kStyleRetryCancel, "retryCancel"},
                             {kStyleCritical, "critical"},
                             {kStyleYesNo, "yesNo"},
                             {kStyleExclamation, "exclamation"},
                             {kStyleExclamation | kStyleYesNo, "exclamationYesNo"},
                             {kStyleInformation, "information"}};
constexpr const char* kOutcomes[] = {"installed", "system", "dataAccess", "missing", "refused"};

const char* NameIn(const NumberNames& names, std::int32_t number) {
  const auto found = names.find(number);
  return found == names.end() ? "unknown" : found->second;
}

// Makes the parts of a document, a row for each of their fields.
class Writer {
 public:
  explicit Writer(const StringTable& strings) : strings_(strings) {}

  template <class Items>
  Json Array(const Items& items) const {
    Json array = Json::array();
    for (const auto& item : items) array.push_back(Of(item));
    return array;
  }

  Json Of(const Sentence& sentence) const { return TextOf(strings_, sentence); }

  Json Of(const LibraryLookup& lookup) const {
    return {{"identifier", lookup.identifier},
            {"description", lookup.description},
            {"versionAsked", lookup.version},
            {"versionsRegistered", lookup.registered},
            {"versionTaken", lookup.taken},
            {"file", lookup.path.empty() ? lookup.fileName : lookup.path},
            {"registeredPath", lookup.hasRegisteredPath},
            {"outcome", kOutcomes[static_cast<int>(lookup.outcome)]}};
  }

  // A reference or a control: with the line that names it and the lines where it is named.
  template <class Library>
  Json Of(const Library& library) const {
    Json entry = Of(library.Lookup());
    entry["line"] = library.RawName();
    entry["usedBy"] = Array(library.askers);
    return entry;
  }

  // Without a project its values are empty.
  Json Of(const CProject* project) const {
    const auto text = [project](std::string CProject::*member) {
      return project == nullptr ? std::string() : project->*member;
    };
    return {{"fileName", project == nullptr ? "" : project->FileName()},
            {"name", text(&CProject::Name)},
            {"projectType", project == nullptr ? 0 : project->ProjectType},
            {"exeName", text(&CProject::ExeName)},
            {"exePath", text(&CProject::ExePath)},
            {"majorVer", text(&CProject::MajorVer)},
            {"minorVer", text(&CProject::MinorVer)},
            {"revisionVer", text(&CProject::RevisionVer)},
            {"versionCompanyName", text(&CProject::VersionCompanyName)},
            {"needsRebuild", project != nullptr && project->NeedsRebuild}};
  }

  Json Of(const InstalledFile& installed) const {
    const CFile& file = *installed.record;
    return {
        {"fileName", file.FileName},         {"destination", file.Destination},
        {"symbol", installed.symbol},        {"sharedFile", file.SharedFile},
        {"selfRegister", file.SelfRegister}, {"selfRegisterName", NameIn(kRegisterCodes, file.SelfRegister)},
        {"fileLinkPath", file.FileLinkPath}, {"linkResolves", file.LinkResolves},
        {"fileGroup", file.FileGroup},       {"component", installed.Component()},
        {"askedBy", Array(file.askers)},     {"why", Array(installed.Why())}};
  }

  Json Of(const ShownMessage& shown) const {
    return {{"string", NumberOf(shown.message.number)},
            {"style", shown.message.style},
            {"styleName", NameIn(kStyles, shown.message.style)},
            {"text", shown.message.text},
            {"detail", shown.message.detail},
            {"answer", NameOfButton(shown.answer)}};
  }

  // What a finding is about is its first value; without one it is about the machine.
  Json Of(const Finding& finding) const {
    return {{"code", CodeOf(finding.id)},
            {"severity", NameOf(SeverityOf(finding.id))},
            {"subject", finding.values.empty() ? "" : finding.values.front()},
            {"origin", Of(finding.origin)},
            {"text", TextOf(strings_, {TextOf(finding.id), finding.values})},
            {"advice", TextOf(strings_, {AdviceOf(finding.id), finding.values})}};
  }

  Json Of(const Difference& difference) const {
    return {{"sign", std::string(1, static_cast<char>(difference.sign))},
            {"byHand", difference.byHand},
            {"kind", difference.kind},
            {"name", difference.name},
            {"owner", difference.owner},
            {"present", difference.present},
            {"expected", difference.expected}};
  }

  Json Of(const Explanation& explanation) const {
    return {{"name", explanation.name},
            {"known", explanation.isKnown},
            {"verdict", Of(explanation.verdict)},
            {"near", explanation.near},
            {"askedBy", Tree(explanation.askers.children, "origin", "askedBy")},
            {"moreAskers", explanation.hasMoreAskers},
            {"lookUps", Array(explanation.lookups)},
            {"why", Array(explanation.why)},
            {"findings", Array(explanation.findings)}};
  }

  Json Of(const TypeLibraryFacts& library) const {
    return {{"identifier", library.identifier}, {"version", library.version},
            {"language", library.language},     {"description", library.description},
            {"flags", library.flags},           {"resource", library.resource}};
  }

  Json Of(const Dependency& import) const { return import.ShortName; }
  Json Of(const std::string& text) const { return text; }

  Json Of(const Inspection& inspection) const {
    const EXEFile& file = inspection.executable;
    return {{"file", inspection.file},
            {"valid", file.IsValid},
            {"reason", inspection.reason},
            {"exeType", file.ExeType},
            {"exeTypeName", NameIn(kExeTypes, file.ExeType)},
            {"errorType", file.ErrorType},
            {"errorTypeName", NameIn(kErrorTypes, file.ErrorType)},
            {"imports", Array(file.Dependencies)},
            {"exports", Array(file.Exports)},
            {"selfRegister", inspection.selfRegister},
            {"selfRegisterName", NameIn(kRegisterCodes, inspection.selfRegister)},
            {"typeLibraries", Array(inspection.typeLibraries.libraries)},
            {"typeLibraryFaults", inspection.typeLibraries.faults}};
  }

  // A tree, with the names that its fields have.
  Json Tree(const TreeNodes& nodes, const char* text = "text", const char* children = "children") const {
    Json array = Json::array();
    for (const auto& node : nodes)
      array.push_back({{text, node->text}, {children, Tree(node->children, text, children)}});
    return array;
  }

 private:
  const StringTable& strings_;
};

// Prints a document of these parts. A text that is not valid UTF-8 must not spoil it.
void Print(Command command, int code, const std::string& error, const Json& parts,
           std::ostream& out = std::cout) {
  Json document = {{"schema", "bxvbwiz/2"},
                   {"command", NameOf(command)},
                   {"version", BXVBWIZ_VERSION},
                   {"exitCode", code},
                   {"error", error}};
  document.update(parts);
  out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace

Json PartsOf(const Options& options, const Outcome& outcome, const StringTable& strings) {
  const Writer writer(strings);
  const Analysis* const analysis = outcome.analysis.get();
  const CProject* const project = analysis == nullptr ? nullptr : analysis->Project();
  const DataAccessNeeds dataAccess = analysis == nullptr ? DataAccessNeeds() : analysis->DataAccess();
  const Json none = Json::array();
  Json parts = {
      {"finished", outcome.finished},
      {"returnCode", outcome.returnCode},
      {"project", writer.Of(project)},
      {"references", project == nullptr ? none : writer.Array(project->References())},
      {"objects", project == nullptr ? none : writer.Array(project->AllControls())},
      {"projectView", analysis == nullptr ? none : writer.Tree(analysis->ProjectView().Nodes())},
      {"fileGroupView", analysis == nullptr ? none : writer.Tree(analysis->FileGroupView().Nodes())},
      {"files", writer.Array(outcome.files)},
      {"dataAccess",
       {{"daoJet", dataAccess.daoJet},
        {"daoOdbcDirect", dataAccess.daoOdbcDirect},
        {"rdo", dataAccess.rdo},
        {"ado", dataAccess.ado}}},
      {"messages", writer.Array(outcome.messages)},
      {"findings", analysis == nullptr ? none : writer.Array(analysis->Found().All())}};
  if (options.command == Command::Explain)
    parts["explanation"] = outcome.explanation == nullptr ? Json() : writer.Of(*outcome.explanation);
  if (options.command == Command::Check) {
    parts["setup"] = outcome.comparison.setupFolder;
    parts["isEqual"] = outcome.comparison.IsEqual();
    parts["differences"] = writer.Array(outcome.comparison.differences);
  }
  if (options.command == Command::Generate || options.command == Command::Capture) {
    parts["setupFolder"] = outcome.setup.folder;
    parts["projectFile"] = outcome.projectFile;
    parts["projectFileHere"] = outcome.projectFileHere;
    parts["scriptDefinedVariables"] = outcome.setup.scriptDefinedVariables;
    parts["report"] = outcome.setup.report;
    parts["writtenFiles"] = outcome.writtenFiles;
  }
  return parts;
}

void PrintJson(const Options& options, const Outcome& outcome, const StringTable& strings, int code,
               std::ostream& out) {
  Print(options.command, code, outcome.error, PartsOf(options, outcome, strings), out);
}

void PrintJson(const Options& options, const std::string& error, int code) {
  if (options.command == Command::Inspect) return PrintJson(std::vector<Inspection>(), error, code);
  if (StartsWith(NameOf(options.command), "machine")) return PrintJson(options, "", error, code);
  Outcome outcome;
  outcome.error = error;
  PrintJson(options, outcome, CompiledStringTable(), code, std::cout);
}

void PrintJson(Command command, const std::vector<std::string>& documents, int code) {
  Json projects = Json::array();
  for (const std::string& document : documents) projects.push_back(Json::parse(document));
  Print(command, code, "", {{"projects", std::move(projects)}});
}

void PrintJson(const Options& options, const std::string& lines, const std::string& error, int code) {
  Json array = Json::array();
  LineReader reader(lines);
  for (std::string_view line; reader.Next(line);) array.push_back(line);
  Print(options.command, code, error, {{"lines", array}});
}

void PrintJson(const std::vector<Inspection>& inspections, const std::string& error, int code) {
  const CompiledStringTable strings;
  Print(Command::Inspect, code, error, {{"files", Writer(strings).Array(inspections)}});
}

}  // namespace bxvbwiz
