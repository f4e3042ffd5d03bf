#include "cli/JsonOutput.h"

#include <iostream>
#include <nlohmann/json.hpp>

namespace bxvbwiz {
namespace {

using Json = nlohmann::ordered_json;

// A text that is not valid UTF-8 must not spoil the document.
void Print(const Json& document) {
  std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
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

Json FilesJson(const Outcome& outcome) {
  Json array = Json::array();
  if (outcome.analysis == nullptr) return array;
  std::size_t index = 0;
  for (const CFile& file : outcome.analysis->Files()) {
    array.push_back({{"fileName", file.FileName},
                     {"destination", file.Destination},
                     {"symbol", outcome.symbols.at(index++)},
                     {"sharedFile", file.SharedFile},
                     {"selfRegister", file.SelfRegister},
                     {"fileLinkPath", file.FileLinkPath},
                     {"linkResolves", file.LinkResolves},
                     {"fileGroup", file.FileGroup}});
  }
  return array;
}

Json MessagesJson(const std::vector<ShownMessage>& messages) {
  Json array = Json::array();
  for (const ShownMessage& shown : messages) {
    array.push_back({{"string", NumberOf(shown.message.number)},
                     {"style", shown.message.style},
                     {"text", shown.message.text},
                     {"answer", NameOfButton(shown.answer)}});
  }
  return array;
}

// The value of a finding that it is about; empty when it is about the machine.
std::string SubjectOf(const Finding& finding) {
  return finding.values.empty() ? std::string() : finding.values.front();
}

Json FindingsJson(const StringTable& strings, const Findings* findings) {
  Json array = Json::array();
  if (findings == nullptr) return array;
  for (const Finding& finding : findings->All()) {
    array.push_back({{"code", CodeOf(finding.id)},
                     {"severity", NameOf(SeverityOf(finding.id))},
                     {"subject", SubjectOf(finding)},
                     {"origin", TextOf(strings, finding.origin)},
                     {"text", TextOf(strings, {TextOf(finding.id), finding.values})},
                     {"advice", TextOf(strings, {AdviceOf(finding.id), finding.values})}});
  }
  return array;
}

const char* NameOf(Command command) {
  switch (command) {
    case Command::Capture:
      return "capture";
    case Command::Generate:
      return "generate";
    default:
      return "analyse";
  }
}

}  // namespace

void PrintJson(const Options& options, const Outcome& outcome, const StringTable& strings) {
  const Analysis* const analysis = outcome.analysis.get();
  const DataAccessNeeds dataAccess = analysis == nullptr ? DataAccessNeeds() : analysis->DataAccess();
  const Json none = Json::array();
  Json document = {
      {"schema", "bxvbwiz/2"},
      {"command", NameOf(options.command)},
      {"version", BXVBWIZ_VERSION},
      {"finished", outcome.finished},
      {"returnCode", outcome.returnCode},
      {"project", ProjectJson(analysis == nullptr ? nullptr : analysis->Project())},
      {"projectView", analysis == nullptr ? none : TreeJson(analysis->ProjectView().Nodes())},
      {"fileGroupView", analysis == nullptr ? none : TreeJson(analysis->FileGroupView().Nodes())},
      {"files", FilesJson(outcome)},
      {"dataAccess",
       {{"daoJet", dataAccess.daoJet},
        {"daoOdbcDirect", dataAccess.daoOdbcDirect},
        {"rdo", dataAccess.rdo},
        {"ado", dataAccess.ado}}},
      {"messages", MessagesJson(outcome.messages)},
      {"findings", FindingsJson(strings, outcome.Found())}};
  if (options.command != Command::Analyse) {
    document["setupFolder"] = outcome.setup.folder;
    document["projectFile"] = outcome.projectFile;
    document["projectFileHere"] = outcome.projectFileHere;
    document["scriptDefinedVariables"] = outcome.setup.scriptDefinedVariables;
    document["report"] = outcome.setup.report;
  }
  Print(document);
}

void PrintJson(const std::vector<Inspection>& inspections) {
  Json array = Json::array();
  for (const Inspection& inspection : inspections) {
    array.push_back({{"file", inspection.file},
                     {"valid", inspection.valid},
                     {"exeType", inspection.exeType},
                     {"errorType", inspection.errorType},
                     {"imports", inspection.imports},
                     {"exports", inspection.exports},
                     {"selfRegister", inspection.selfRegister}});
  }
  Print(array);
}

}  // namespace bxvbwiz
