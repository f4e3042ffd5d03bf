#include "cli/Explain.h"

#include <algorithm>
#include <iostream>
#include <numeric>
#include <set>

#include "support/basFile.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kWidth = 100;
constexpr std::size_t kMostNear = 5;

bool IsOneOf(const std::vector<std::string>& upperNames, const std::string& path) {
  const std::string name = UpperCase(GetPathFileName(path));
  return std::find(upperNames.begin(), upperNames.end(), name) != upperNames.end();
}

// How many characters differ between two names.
std::size_t Distance(const std::string& left, const std::string& right) {
  std::vector<std::size_t> row(right.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < left.size(); ++i) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 0; j < right.size(); ++j) {
      const std::size_t replaced = diagonal + (left[i] == right[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

// The name of the file that asks for another; empty for a line of the project.
std::string AskingFile(const Origin& origin) {
  if (origin.id == TextId::OriginImports) return GetPathFileName(origin.values.front());
  // A section may have a language behind the file's name.
  if (origin.id == TextId::OriginUses) return origin.values[1].substr(0, origin.values[1].find(" <"));
  return {};
}

// One name that is to be explained, and what is known of it.
class Question {
 public:
  Question(const Outcome& outcome, const std::string& name, const std::string& list)
      : analysis_(*outcome.analysis), outcome_(outcome), list_(list), upperName_(UpperCase(name)) {
    answer_.name = name;
    upperNames_.push_back(UpperCase(GetPathFileName(name)));
  }

  Explanation Answer() {
    for (const CObject& control : analysis_.Project()->AllControls()) TakeLibrary(control.Lookup(), control);
    for (const CReference& reference : analysis_.Project()->References())
      TakeLibrary(reference.Lookup(), reference);
    TakeFindings();
    TakeSystemFile();
    TakeFile();
    if (!answer_.isKnown) NameNear();
    followed_.insert(UpperCase(GetPathFileName(answer_.name)));  // a file may need itself in the end
    answer_.askers = WayOf(asked_.askers, 0);
    return std::move(answer_);
  }

 private:
  // A name with a folder means the file in that folder only.
  bool IsMeant(const std::string& path) const {
    if (upperName_.find('\\') != std::string::npos) return EqualsIgnoreCase(path, answer_.name);
    return IsOneOf(upperNames_, path);
  }

  bool IsLibraryMeant(const LibraryLookup& lookup) const {
    return (!lookup.description.empty() && EqualsIgnoreCase(lookup.description, answer_.name)) ||
           (!lookup.identifier.empty() && (EqualsIgnoreCase(lookup.identifier, answer_.name) ||
                                           EqualsIgnoreCase(lookup.identifier, "{" + answer_.name + "}")));
  }

  void TakeLibrary(const LibraryLookup& lookup, const FileRecord& record) {
    NoteNear({lookup.fileName, GetPathFileName(lookup.path), lookup.description});
    const bool isNamed = IsLibraryMeant(lookup);
    if (!isNamed && !IsMeant(lookup.path) && !IsMeant(lookup.fileName)) return;
    if (isNamed) {
      library_ = true;
      for (const std::string& path : {lookup.path, lookup.fileName})
        if (!path.empty()) upperNames_.push_back(UpperCase(GetPathFileName(path)));
    }
    answer_.lookups.push_back(lookup);
    TakeAskers(record);
    answer_.isKnown = true;
    if (lookup.outcome != LibraryOutcome::Installed) SetVerdict(VerdictOf(lookup.outcome));
  }

  Sentence VerdictOf(LibraryOutcome outcome) const {
    switch (outcome) {
      case LibraryOutcome::System:
        return SystemVerdict();
      case LibraryOutcome::DataAccess:
        return {TextId::ExplainDataAccess, {}};
      case LibraryOutcome::Refused:
        return {TextId::ExplainRefused, {}};
      default:
        return {TextId::ExplainMissing, {}};
    }
  }

  Sentence SystemVerdict() const { return {TextId::ExplainSystem, {list_}}; }

  void TakeSystemFile() {
    for (const auto& [upperName, file] : analysis_.SystemFiles().Files()) {
      NoteNear({upperName});
      if (!IsMeant(upperName)) continue;
      TakeAskers(file);
      answer_.hasMoreAskers = file.askers.size() >= PassedOver::kMostAskers;
      SetVerdict(SystemVerdict());
    }
  }

  // What is in the setup says more than anything else that is known.
  void TakeFile() {
    std::size_t index = 0;
    for (const CFile& file : analysis_.Files()) {
      const std::string& symbol = outcome_.symbols.at(index);
      const Sentence& component = outcome_.components.at(index++);
      const std::string name = GetPathFileName(file.FileName);
      NoteNear({name});
      if (isInSetup_ || !IsFileMeant(FixPath(file.FileLinkPath) + name)) continue;
      answer_.isKnown = isInSetup_ = true;
      answer_.name = name;
      answer_.verdict = {file.LinkResolves ? TextId::ExplainInstalled : TextId::ExplainNotFound,
                         {symbol, file.FileLinkPath}};
      TakeAskers(file);
      answer_.reasons = file.reasons;
      answer_.reasons.push_back(component);
    }
  }

  bool IsFileMeant(const std::string& path) const {
    return library_ ? IsOneOf(upperNames_, path) : IsMeant(path);
  }

  void TakeFindings() {
    for (const Finding& finding : analysis_.Found().All()) {
      const auto names = [this](const std::string& value) { return NamesIt(value); };
      if (!std::any_of(finding.values.begin(), finding.values.end(), names)) continue;
      answer_.findings.push_back(finding);
      const bool isLeftOut =
          finding.id == FindingId::FileLeftOut || finding.id == FindingId::FoundFileLeftOut;
      if (!isLeftOut || !IsMeant(finding.values.front())) continue;
      asked_.AddAsker(finding.origin);
      SetVerdict({TextId::ExplainLeftOut, {}});
    }
  }

  // Whether a finding's value is the file, with its folder or behind a description.
  bool NamesIt(const std::string& value) const {
    const std::string upper = UpperCase(value);
    const auto isIt = [&](const std::string& name) {
      return !name.empty() &&
             (upper == name || EndsWith(upper, "\\" + name) || EndsWith(upper, "(" + name + ")"));
    };
    return std::any_of(upperNames_.begin(), upperNames_.end(), isIt);
  }

  void TakeAskers(const FileRecord& record) {
    for (const Origin& asker : record.askers) asked_.AddAsker(asker);
  }

  // Who asks for something, up to the lines of the project. Each file is followed once.
  std::vector<Asker> WayOf(const std::vector<Origin>& origins, int step) {
    constexpr int kMostSteps = 20;
    std::vector<Asker> way;
    for (const Origin& origin : origins) {
      way.push_back({origin, {}});
      const std::string name = AskingFile(origin);
      if (name.empty() || step == kMostSteps || !followed_.insert(UpperCase(name)).second) continue;
      const CFiles& files = analysis_.Files();
      if (const auto file = files.FindItem(files.KeyOf(name)))
        way.back().askers = WayOf(file->askers, step + 1);
    }
    return way;
  }

  // The first one stays.
  void SetVerdict(const Sentence& verdict) {
    answer_.isKnown = true;
    if (answer_.verdict.id == TextId{}) answer_.verdict = verdict;
  }

  void NoteNear(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
      const std::string upper = UpperCase(name);
      const std::string& wanted = upperNames_.front();
      const bool isPart = upper.find(wanted) != std::string::npos;
      constexpr std::size_t kMostDifferences = 2;
      if (name.empty() || near_.size() >= kMostNear ||
          (!isPart && Distance(upper, wanted) > kMostDifferences))
        continue;
      const auto isSame = [&](const std::string& known) { return EqualsIgnoreCase(known, name); };
      if (std::none_of(near_.begin(), near_.end(), isSame)) near_.push_back(name);
    }
  }

  void NameNear() {
    answer_.verdict = {TextId::ExplainUnknown, {answer_.name}};
    answer_.near = near_;
  }

  const Analysis& analysis_;
  const Outcome& outcome_;
  const std::string list_;
  const std::string upperName_;
  std::vector<std::string> upperNames_;  // of the file, as it and the libraries of the name have it
  bool library_ = false;                 // a library is meant by its description or identifier
  bool isInSetup_ = false;
  std::vector<std::string> near_;
  FileRecord asked_;
  std::set<std::string> followed_;  // in upper case
  Explanation answer_;
};

// Prints a line, broken at blanks when it is too long.
void PrintLine(std::string line, std::string indent) {
  const std::size_t blanks = std::min(line.find_first_not_of(' '), line.size());
  indent.append(blanks, ' ');
  line.erase(0, blanks);
  std::string lead = indent;
  while (lead.size() + CharacterCount(line) > kWidth) {
    const std::size_t at = line.rfind(' ', kWidth - lead.size());
    if (at == std::string::npos || at == 0) break;
    std::cout << lead << line.substr(0, at) << '\n';
    line.erase(0, at + 1);
    lead = indent + "  ";
  }
  std::cout << lead << line << '\n';
}

void PrintGroup(const StringTable& strings, TextId heading, const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  std::cout << '\n' << strings.Text(heading) << '\n';
  for (const std::string& line : lines) PrintLine(line, "  ");
}

std::vector<std::string> TextsOf(const StringTable& strings, const std::vector<Sentence>& sentences) {
  std::vector<std::string> texts;
  texts.reserve(sentences.size());
  for (const Sentence& sentence : sentences) texts.push_back(TextOf(strings, sentence));
  return texts;
}

std::vector<Sentence> LookUpLines(const StringTable& strings, const LibraryLookup& lookup) {
  const auto orNone = [&](const std::string& text) {
    return text.empty() ? strings.Text(TextId::NoneThere) : text;
  };
  std::vector<Sentence> lines{
      {TextId::ExplainLibrary,
       {orNone(lookup.identifier), orNone(lookup.version), orNone(Joined(lookup.registered))}}};
  if (!lookup.path.empty()) {
    lines.push_back({lookup.hasRegisteredPath ? TextId::ExplainRegisteredPath : TextId::ExplainSystemPath,
                     {orNone(lookup.taken), lookup.path}});
  }
  return lines;
}

void AddWay(const StringTable& strings, const std::vector<Asker>& askers, const std::string& indent,
            std::vector<std::string>& lines) {
  for (const Asker& asker : askers) {
    lines.push_back(indent + TextOf(strings, asker.origin));
    AddWay(strings, asker.askers, indent + "  ", lines);
  }
}

}  // namespace

Explanation Explain(const Outcome& outcome, const std::string& name, const std::string& list) {
  return Question(outcome, name, list).Answer();
}

void PrintText(const Explanation& explanation, const StringTable& strings) {
  std::cout << explanation.name << '\n';
  PrintLine(TextOf(strings, explanation.verdict), "  ");
  for (const std::string& name : explanation.near)
    PrintLine(TextOf(strings, {TextId::ExplainNear, {name}}), "  ");
  std::vector<std::string> askers;
  AddWay(strings, explanation.askers, "", askers);
  if (explanation.hasMoreAskers) askers.push_back(strings.Text(TextId::ExplainOthers));
  PrintGroup(strings, TextId::ExplainAskedBy, askers);
  std::vector<std::string> lookups;
  for (const LibraryLookup& lookup : explanation.lookups) {
    for (const std::string& line : TextsOf(strings, LookUpLines(strings, lookup))) lookups.push_back(line);
  }
  PrintGroup(strings, TextId::ExplainLookUp, lookups);
  PrintGroup(strings, TextId::ExplainDecided, TextsOf(strings, explanation.reasons));
  std::vector<std::string> findings;
  for (const Finding& finding : explanation.findings) {
    for (const std::string& line : LinesOf(strings, finding)) findings.push_back(line);
  }
  PrintGroup(strings, TextId::ExplainFindings, findings);
}

}  // namespace bxvbwiz
