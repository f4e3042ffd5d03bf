#include "cli/JsonOutput.h"

#include <iostream>
#include <nlohmann/json.hpp>

#include "machine/CompiledStringTable.h"
#include "project/EXEFile.h"

namespace bxvbwiz {
namespace {

using Json = nlohmann::ordered_json;

// A text that is not valid UTF-8 must not spoil the document.
void Print(const Json& document) {
  std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

struct NumberName {
  std::int32_t number;
  const char* name;
};

// Programs read the name; the number is what hosts and other documents of the wizard show.
constexpr NumberName kExeTypes[] = {{0, "none"},        {kExeTypeDos, "dos"}, {kExeTypeNE, "ne"},
                                    {kExeTypeLE, "le"}, {kExeTypeXE, "xe"},   {kExeTypePE, "pe"}};
constexpr NumberName kErrorTypes[] = {
    {kExeErrorNone, "none"}, {kExeErrorNotValid, "notValid"}, {kExeErrorNoImports, "noImports"}};
constexpr NumberName kRegisterCodes[] = {{kRegisterNone, "none"},
                                         {kRegisterDll, "dll"},
                                         {kRegisterExe, "exe"},
                                         {kRegisterTypeLibrary, "typeLibrary"},
                                         {kRegisterRemote, "remote"},
                                         {kRegisterNoMacro, "noMacro"},
                                         {kRegisterUnknownMacro, "unknownMacro"}};
constexpr NumberName kStyles[] = {{kStyleRetryCancel, "retryCancel"},
                                  {kStyleCritical, "critical"},
                                  {kStyleYesNo, "yesNo"},
                                  {kStyleExclamation, "exclamation"},
                                  {kStyleExclamation | kStyleYesNo, "exclamationYesNo"},
                                  {kStyleInformation, "information"}};

template <std::size_t size>
const char* NameIn(const NumberName (&names)[size], std::int32_t number) {
  for (const NumberName& row : names) {
    if (row.number == number) return row.name;
  }
  return "unknown";
}

const char* NameOf(LibraryOutcome outcome) {
  constexpr const char* kNames[] = {"installed", "system", "dataAccess", "missing", "refused"};
  return kNames[static_cast<int>(outcome)];
}

Json TextsJson(const StringTable& strings, const std::vector<Sentence>& sentences) {
  Json array = Json::array();
  for (const Sentence& sentence : sentences) array.push_back(TextOf(strings, sentence));
  return array;
}

Json LookupJson(const LibraryLookup& lookup) {
  return {{"identifier", lookup.identifier},
          {"description", lookup.description},
          {"versionAsked", lookup.version},
          {"versionsRegistered", lookup.registered},
          {"versionTaken", lookup.taken},
          {"file", lookup.path.empty() ? lookup.fileName : lookup.path},
          {"registeredPath", lookup.hasRegisteredPath},
          {"outcome", NameOf(lookup.outcome)}};
}

// A reference or a control with the line that names it and the lines where it is named.
template <class Library>
Json LibrariesJson(const StringTable& strings, const KeyedCollection<Library>* libraries) {
  Json array = Json::array();
  if (libraries == nullptr) return array;
  for (const Library& library : *libraries) {
    Json entry = LookupJson(library.Lookup());
    entry["line"] = library.RawName();
    entry["usedBy"] = TextsJson(strings, library.askers);
    array.push_back(std::move(entry));
  }
  return array;
}

Json TreeJson(const TreeNodes& nodes) {
  Json array = Json::array();
  for (const auto& node : nodes)
    array.push_back({{"text", node->text}, {"children", TreeJson(node->children)}});
  return array;
}

// Without a project the document has its empty values.
Json ProjectJson(const CProject* project) {
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

Json FilesJson(const StringTable& strings, const Outcome& outcome) {
  Json array = Json::array();
  if (outcome.analysis == nullptr) return array;
  std::size_t index = 0;
  for (const CFile& file : outcome.analysis->Files()) {
    // A run that ended by an error may have no symbols for the last ones.
    const bool isComplete = index < outcome.components.size();
    const Sentence component = isComplete ? outcome.components[index] : Sentence{};
    std::vector<Sentence> why = file.reasons;
    if (isComplete) why.push_back(component);
    array.push_back({{"fileName", file.FileName},
                     {"destination", file.Destination},
                     {"symbol", isComplete ? outcome.symbols[index] : std::string()},
                     {"sharedFile", file.SharedFile},
                     {"selfRegister", file.SelfRegister},
                     {"selfRegisterName", NameIn(kRegisterCodes, file.SelfRegister)},
                     {"fileLinkPath", file.FileLinkPath},
                     {"linkResolves", file.LinkResolves},
                     {"fileGroup", file.FileGroup},
                     {"component", isComplete ? component.values.front() : std::string()},
                     {"askedBy", TextsJson(strings, file.askers)},
                     {"why", TextsJson(strings, why)}});
    ++index;
  }
  return array;
}

Json MessagesJson(const std::vector<ShownMessage>& messages) {
  Json array = Json::array();
  for (const ShownMessage& shown : messages) {
    array.push_back({{"string", NumberOf(shown.message.number)},
                     {"style", shown.message.style},
                     {"styleName", NameIn(kStyles, shown.message.style)},
                     {"text", shown.message.text},
                     {"detail", shown.message.detail},
                     {"answer", NameOfButton(shown.answer)}});
  }
  return array;
}

// The value of a finding that it is about; empty when it is about the machine.
std::string SubjectOf(const Finding& finding) {
  return finding.values.empty() ? std::string() : finding.values.front();
}

Json FindingsJson(const StringTable& strings, const std::vector<Finding>& findings) {
  Json array = Json::array();
  for (const Finding& finding : findings) {
    array.push_back({{"code", CodeOf(finding.id)},
                     {"severity", NameOf(SeverityOf(finding.id))},
                     {"subject", SubjectOf(finding)},
                     {"origin", TextOf(strings, finding.origin)},
                     {"text", TextOf(strings, {TextOf(finding.id), finding.values})},
                     {"advice", TextOf(strings, {AdviceOf(finding.id), finding.values})}});
  }
  return array;
}

Json DifferencesJson(const std::vector<Difference>& differences) {
  Json array = Json::array();
  for (const Difference& difference : differences) {
    array.push_back({{"sign", std::string(1, static_cast<char>(difference.sign))},
                     {"byHand", difference.byHand},
                     {"kind", difference.kind},
                     {"name", difference.name},
                     {"owner", difference.owner},
                     {"present", difference.present},
                     {"expected", difference.expected}});
  }
  return array;
}

Json WayJson(const StringTable& strings, const std::vector<Asker>& askers) {
  Json array = Json::array();
  for (const Asker& asker : askers) {
    array.push_back({{"origin", TextOf(strings, asker.origin)}, {"askedBy", WayJson(strings, asker.askers)}});
  }
  return array;
}

Json ExplanationJson(const StringTable& strings, const Explanation* explanation) {
  if (explanation == nullptr) return nullptr;
  Json lookUps = Json::array();
  for (const LibraryLookup& lookup : explanation->lookups) lookUps.push_back(LookupJson(lookup));
  return {{"name", explanation->name},
          {"known", explanation->isKnown},
          {"verdict", TextOf(strings, explanation->verdict)},
          {"near", explanation->near},
          {"askedBy", WayJson(strings, explanation->askers)},
          {"moreAskers", explanation->hasMoreAskers},
          {"lookUps", lookUps},
          {"why", TextsJson(strings, explanation->reasons)},
          {"findings", FindingsJson(strings, explanation->findings)}};
}

// How every document begins.
Json Head(Command command, int code, const std::string& error) {
  return {{"schema", "bxvbwiz/2"},
          {"command", NameOf(command)},
          {"version", BXVBWIZ_VERSION},
          {"exitCode", code},
          {"error", error}};
}

}  // namespace

void PrintJson(const Options& options, const Outcome& outcome, const StringTable& strings, int code) {
  const Analysis* const analysis = outcome.analysis.get();
  const CProject* const project = analysis == nullptr ? nullptr : analysis->Project();
  const DataAccessNeeds dataAccess = analysis == nullptr ? DataAccessNeeds() : analysis->DataAccess();
  const std::vector<Finding> nothing;
  const Json none = Json::array();
  Json document = Head(options.command, code, outcome.error);
  document.update(
      {{"finished", outcome.finished},
       {"returnCode", outcome.returnCode},
       {"project", ProjectJson(project)},
       {"references",
        LibrariesJson<CReference>(strings, project == nullptr ? nullptr : &project->References())},
       {"objects", LibrariesJson<CObject>(strings, project == nullptr ? nullptr : &project->AllControls())},
       {"projectView", analysis == nullptr ? none : TreeJson(analysis->ProjectView().Nodes())},
       {"fileGroupView", analysis == nullptr ? none : TreeJson(analysis->FileGroupView().Nodes())},
       {"files", FilesJson(strings, outcome)},
       {"dataAccess",
        {{"daoJet", dataAccess.daoJet},
         {"daoOdbcDirect", dataAccess.daoOdbcDirect},
         {"rdo", dataAccess.rdo},
         {"ado", dataAccess.ado}}},
       {"messages", MessagesJson(outcome.messages)},
       {"findings", FindingsJson(strings, outcome.Found() == nullptr ? nothing : outcome.Found()->All())}});
  if (options.command == Command::Explain)
    document["explanation"] = ExplanationJson(strings, outcome.explanation.get());
  if (options.command == Command::Check) {
    document["setup"] = outcome.comparison.setupFolder;
    document["isEqual"] = outcome.comparison.IsEqual();
    document["differences"] = DifferencesJson(outcome.comparison.differences);
  }
  if (options.command == Command::Generate || options.command == Command::Capture) {
    document["setupFolder"] = outcome.setup.folder;
    document["projectFile"] = outcome.projectFile;
    document["projectFileHere"] = outcome.projectFileHere;
    document["scriptDefinedVariables"] = outcome.setup.scriptDefinedVariables;
    document["report"] = outcome.setup.report;
    document["writtenFiles"] = outcome.writtenFiles;
  }
  Print(document);
}

void PrintJson(const Options& options, const std::string& error) {
  if (options.command == Command::Inspect) return PrintJson(std::vector<Inspection>(), error, kExitUsage);
  Outcome outcome;
  outcome.error = error;
  PrintJson(options, outcome, CompiledStringTable(), kExitUsage);
}

void PrintJson(const std::vector<Inspection>& inspections, const std::string& error, int code) {
  Json array = Json::array();
  for (const Inspection& inspection : inspections) {
    Json libraries = Json::array();
    for (const TypeLibraryFacts& library : inspection.typeLibraries.libraries) {
      libraries.push_back({{"identifier", library.identifier},
                           {"version", library.version},
                           {"language", library.language},
                           {"description", library.description},
                           {"flags", library.flags},
                           {"resource", library.resource}});
    }
    array.push_back({{"file", inspection.file},
                     {"valid", inspection.valid},
                     {"reason", inspection.reason},
                     {"exeType", inspection.exeType},
                     {"exeTypeName", NameIn(kExeTypes, inspection.exeType)},
                     {"errorType", inspection.errorType},
                     {"errorTypeName", NameIn(kErrorTypes, inspection.errorType)},
                     {"imports", inspection.imports},
                     {"exports", inspection.exports},
                     {"selfRegister", inspection.selfRegister},
                     {"selfRegisterName", NameIn(kRegisterCodes, inspection.selfRegister)},
                     {"typeLibraries", std::move(libraries)},
                     {"typeLibraryFaults", inspection.typeLibraries.faults}});
  }
  Json document = Head(Command::Inspect, code, error);
  document["files"] = std::move(array);
  Print(document);
}

}  // namespace bxvbwiz
