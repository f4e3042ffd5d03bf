#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string_view>

#include "cli/Output.h"
#include "cli/Page.h"
#include "machine/FileBytes.h"
#include "support/basFile.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using Json = nlohmann::ordered_json;

// Null for a value that there is none of.
const Json& ValueOf(const Json& values, const std::string& name) {
  static const Json kNone;
  if (name == ".") return values;
  const auto value = values.find(name);
  return value == values.end() ? kNone : *value;
}

bool IsThere(const Json& value) {
  if (value.is_boolean()) return value.get<bool>();
  return value.is_string() ? !value.get_ref<const std::string&>().empty() : !value.empty();
}

// Takes what is before the mark off the text, and the mark.
std::string_view TakeBefore(std::string_view& text, const std::string& mark) {
  const std::string_view before = text.substr(0, text.find(mark));
  text = text.substr(before.size() + mark.size());  // throws when the mark is missing
  return before;
}

// A page that is filled with values, which always become text and never markup. {{name}} stands for a value
// and {{.}} for the element of a list. {{#name}}...{{/name}} is there once for each element of a list, or
// once for a value that is there, {{^name}}...{{/name}} once for one that is not. {{=name}}...{{/name}} is
// what {{>name}} inserts.
class Page {
 public:
  const std::string& Text() const { return page_; }

  void Fill(std::string_view text, const Json& values) {
    while (text.find("{{") != std::string_view::npos) {
      page_ += TakeBefore(text, "{{");
      const std::string place(TakeBefore(text, "}}"));
      const std::string name = place.substr(1);
      if (place[0] == '>') {
        Fill(parts_.at(name), values);
      } else if (place[0] == '=') {
        parts_[name] = TakeBefore(text, "{{/" + name + "}}");
      } else if (place[0] == '#' || place[0] == '^') {
        FillPart(TakeBefore(text, "{{/" + name + "}}"), place[0] == '#', ValueOf(values, name), values);
      } else {
        AddText(ValueOf(values, place));
      }
    }
    page_ += text;
  }

 private:
  void FillPart(std::string_view part, bool isForThere, const Json& value, const Json& values) {
    if (isForThere && value.is_array()) {
      for (const Json& element : value) Fill(part, element);
    } else if (IsThere(value) == isForThere) {
      Fill(part, value.is_object() ? value : values);
    }
  }

  void AddText(const Json& value) {
    for (const char c : value.is_string() ? value.get<std::string>() : value.dump()) {
      constexpr std::string_view kMarkup = "<>&\"'";
      page_ +=
          kMarkup.find(c) == std::string_view::npos ? std::string(1, c) : "&#" + std::to_string(+c) + ";";
    }
  }

  std::string page_;
  std::map<std::string, std::string_view> parts_;
};

// The name by which files, libraries, nodes and findings are joined. It may stand behind a description.
std::string NameIn(const std::string& value) {
  std::string name = UpperCase(GetPathFileName(value));
  if (EndsWith(name, ")")) name = name.substr(name.rfind('(') + 1, name.size() - name.rfind('(') - 2);
  return name;
}

// What a finding names: its subject first, the file that holds its origin last.
std::vector<std::string> NamesIn(const Finding& finding) {
  std::vector<std::string> names = finding.values;
  if (!finding.origin.values.empty()) names.push_back(finding.origin.values.front());
  for (std::string& name : names) name = NameIn(name);
  return names;
}

// Adds to the JSON document of a run what its page shows besides: what belongs together, and links to it.
class Joiner {
 public:
  void Join(Json& document, const Analysis& analysis) {
    Json& findings = document["findings"];
    const std::vector<Finding>& found = analysis.Found().All();
    for (std::size_t i = 0; i < found.size(); ++i) {
      for (const std::string& name : NamesIn(found[i])) {
        Json& known = findings_[name];
        if (known.empty() || known.back() != findings[i]) known.push_back(findings[i]);
      }
    }
    JoinAll(document, analysis);
    for (std::size_t i = 0; i < found.size(); ++i) {
      for (const std::string& name : NamesIn(found[i])) {
        if (!findings[i].contains("target") && ids_.count(name) != 0) findings[i]["target"] = ids_[name];
      }
    }
  }

 private:
  void JoinAll(Json& document, const Analysis& analysis) {
    for (const char* kind : {"references", "objects"}) {
      for (const Json& library : document[kind]) libraries_[NameIn(library["file"])].push_back(library);
    }
    for (Json& file : document["files"]) {
      Take(NameIn(file["fileName"]), "f", file);
      file["missing"] = !file["linkResolves"].get<bool>();
    }
    document["projectView"] = NodesOf(analysis.ProjectView().Nodes());
    document["fileGroupView"] = NodesOf(analysis.FileGroupView().Nodes());
    for (const char* kind : {"references", "objects"}) {
      for (Json& library : document[kind]) Take(NameIn(library["file"]), "l", library);
    }
  }

  // The first of a name is where links lead to: a file of the setup, if there is one.
  void Take(const std::string& name, const char* kind, Json& values) {
    if (name.empty()) return;
    const auto [id, isNew] = ids_.emplace(name, kind + std::to_string(ids_.size()));
    if (isNew) values["id"] = id->second;
    if (id->second[0] == 'f') values["facts"] = id->second;
    values["findings"] = findings_[name];
    values["libraries"] = libraries_[name];
  }

  Json NodesOf(const TreeNodes& nodes) {
    Json array = Json::array();
    for (const auto& node : nodes) {
      const bool isHeading = node->image == NodeImage::Project || node->image == NodeImage::Heading;
      Json entry = {
          {"text", node->text}, {"missing", node->image == NodeImage::MissingFile}, {"open", isHeading}};
      if (!isHeading) Take(NameIn(node->text), "n", entry);
      entry["children"] = NodesOf(node->children);
      entry["folds"] = !node->children.empty();
      array.push_back(std::move(entry));
    }
    return array;
  }

  std::map<std::string, Json> findings_;  // by the names that they name
  std::map<std::string, Json> libraries_;
  std::map<std::string, std::string> ids_;
};

}  // namespace

SystemError WriteHtml(const Options& options, const Outcome& outcome, const StringTable& strings) {
  Json values = PartsOf(options, outcome, strings);
  values["error"] = outcome.error;
  const std::string project = values["project"]["fileName"];  // empty when it was not even begun
  values["title"] = GetPathFileName(project.empty() ? options.projects.front() : project);
  if (outcome.analysis != nullptr) Joiner().Join(values, *outcome.analysis);
  Page page;
  page.Fill(kPage, values);
  if (options.html != "-") {
    std::error_code ignored;  // an empty path cannot be written
    const auto path = std::filesystem::absolute(std::filesystem::u8path(options.html), ignored);
    return WriteWholeFile(path.generic_u8string(), page.Text());
  }
  std::cout << page.Text();
  return SystemError::Success;
}

}  // namespace bxvbwiz
