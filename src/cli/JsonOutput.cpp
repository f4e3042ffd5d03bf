#include "cli/JsonOutput.h"

#include <iostream>
#include <nlohmann/json.hpp>

namespace bxvbwiz {
namespace {

using Json = nlohmann::ordered_json;

// A text that is no UTF-8 must not spoil the document.
void Print(const Json& document) {
  std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

Json TreeJson(const std::vector<TreeText>& nodes) {
  Json array = Json::array();
  for (const TreeText& node : nodes)
    array.push_back({{"text", node.text}, {"children", TreeJson(node.children)}});
  return array;
}

Json ProjectJson(const ProjectFacts& project) {
  return {{"fileName", project.fileName},
          {"name", project.name},
          {"projectType", project.projectType},
          {"exeName", project.exeName},
          {"exePath", project.exePath},
          {"majorVer", project.majorVer},
          {"minorVer", project.minorVer},
          {"revisionVer", project.revisionVer},
          {"versionCompanyName", project.versionCompanyName},
          {"needsRebuild", project.needsRebuild}};
}

Json FilesJson(const std::vector<FileFacts>& files) {
  Json array = Json::array();
  for (const FileFacts& file : files) {
    array.push_back({{"fileName", file.fileName},
                     {"destination", file.destination},
                     {"symbol", file.symbol},
                     {"sharedFile", file.sharedFile},
                     {"selfRegister", file.selfRegister},
                     {"fileLinkPath", file.fileLinkPath},
                     {"linkResolves", file.linkResolves},
                     {"fileGroup", file.fileGroup}});
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

void PrintJson(const Options& options, const Outcome& outcome) {
  Json document = {{"schema", "bxvbwiz/1"},
                   {"command", NameOf(options.command)},
                   {"version", BXVBWIZ_VERSION},
                   {"finished", outcome.finished},
                   {"returnCode", outcome.returnCode},
                   {"project", ProjectJson(outcome.project)},
                   {"projectView", TreeJson(outcome.projectView)},
                   {"fileGroupView", TreeJson(outcome.fileGroupView)},
                   {"files", FilesJson(outcome.files)},
                   {"dataAccess",
                    {{"daoJet", outcome.dataAccess.daoJet},
                     {"daoOdbcDirect", outcome.dataAccess.daoOdbcDirect},
                     {"rdo", outcome.dataAccess.rdo},
                     {"ado", outcome.dataAccess.ado}}},
                   {"messages", MessagesJson(outcome.messages)},
                   {"incomplete", outcome.incomplete}};
  if (options.command != Command::Analyse) {
    document["setupFolder"] = outcome.setupFolder;
    document["projectFile"] = outcome.projectFile;
    document["projectFileHere"] = outcome.projectFileHere;
    document["scriptDefinedVariables"] = outcome.scriptDefinedVariables;
    document["report"] = outcome.report;
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
