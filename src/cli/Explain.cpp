#include "cli/Explain.h"

#include <algorithm>
#include <set>

#include "cli/Words.h"
#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The name of the file that asks for another; empty for a line of the project.
std::string AskingFile(const Origin& origin) {
  if (origin.id == TextId::OriginImports) return GetPathFileName(origin.values.front());
  // A section may have a language behind the file's name.
  if (origin.id == TextId::OriginUses) return origin.values[1].substr(0, origin.values[1].find(" <"));
  return {};
}

// Why a library is not in the setup, by its outcome.
constexpr TextId kVerdicts[] = {TextId{}, TextId::ExplainSystem, TextId::ExplainDataAccess,
                                TextId::ExplainMissing, TextId::ExplainRefused};

// One name that is to be explained, and what is known of it.
class Question {
 public:
  Question(const Outcome& outcome, const StringTable& strings, const std::string& name,
           const std::string& list)
      : outcome_(outcome), strings_(strings), list_(list) {
    answer_.name = name;
    upperNames_.push_back(UpperCase(GetPathFileName(name)));
    if (name.find('\\') != std::string::npos) upperPath_ = UpperCase(name);
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
    AddWay(asked_.askers, answer_.askers, 0);
    return std::move(answer_);
  }

 private:
  // Whether it is the file of the name, which with a folder means the file in that folder only. The path is
  // remembered, as one that the name may be like.
  bool IsMeant(const std::string& path) {
    seen_.push_back(GetPathFileName(path));
    const std::string upper = UpperCase(path);
    if (!upperPath_.empty()) return upper == upperPath_;
    return std::find(upperNames_.begin(), upperNames_.end(), GetPathFileName(upper)) != upperNames_.end();
  }

  // Whether the name is the library's description or identifier. It then means its file, too.
  bool IsNameOf(const LibraryLookup& lookup) {
    seen_.push_back(lookup.description);
    const std::string& name = answer_.name;
    if (!EqualsIgnoreCase(lookup.description, name) && !EqualsIgnoreCase(lookup.identifier, name) &&
        !EqualsIgnoreCase(lookup.identifier, "{" + name + "}"))
      return false;
    upperPath_.clear();
    for (const std::string& path : {lookup.path, lookup.fileName}) {
      if (!path.empty()) upperNames_.push_back(UpperCase(GetPathFileName(path)));
    }
    return true;
  }

  void TakeLibrary(const LibraryLookup& lookup, const FileRecord& record) {
    if (!IsMeant(lookup.fileName) && !IsMeant(lookup.path) && !IsNameOf(lookup)) return;
    answer_.lookups.push_back(lookup);
    answer_.isKnown = true;
    TakeAskers(record);
    if (lookup.outcome != LibraryOutcome::Installed)
      SetVerdict(kVerdicts[static_cast<std::size_t>(lookup.outcome)]);
  }

  void TakeFindings() {
    for (const Finding& finding : analysis_.Found().All()) {
      const auto names = [this](const std::string& value) { return NamesIt(value); };
      // A folder that could not be searched may hold it.
      if (finding.id != FindingId::FileSearchFailed &&
          !std::any_of(finding.values.begin(), finding.values.end(), names))
        continue;
      answer_.findings.push_back(finding);
      const bool isLeftOut =
          finding.id == FindingId::FileLeftOut || finding.id == FindingId::FoundFileLeftOut;
      if (!isLeftOut || !IsMeant(finding.values.front())) continue;
      asked_.AddAsker(finding.origin);
      SetVerdict(TextId::ExplainLeftOut);
    }
  }

  // Whether a finding's value is the file, with its folder or behind a description.
  bool NamesIt(const std::string& value) const {
    const std::string upper = UpperCase(value);
    return std::any_of(upperNames_.begin(), upperNames_.end(), [&](const std::string& name) {
      return !name.empty() &&
             (upper == name || EndsWith(upper, "\\" + name) || EndsWith(upper, "(" + name + ")"));
    });
  }

  void TakeSystemFile() {
    for (const auto& [upperName, file] : analysis_.SystemFiles()) {
      if (!IsMeant(upperName)) continue;
      TakeAskers(file);
      answer_.hasMoreAskers = file.askers.size() >= kMostAskers;
      SetVerdict(TextId::ExplainSystem);
    }
  }

  // What is in the setup says more than anything else that is known.
  void TakeFile() {
    for (const InstalledFile& file : outcome_.files) {
      const CFile& record = *file.record;
      const std::string name = GetPathFileName(record.FileName);
      if (!IsMeant(record.Source())) continue;
      answer_.isKnown = true;
      answer_.name = name;
      answer_.verdict = {record.LinkResolves ? TextId::ExplainInstalled : TextId::ExplainNotFound,
                         {file.symbol, record.FileLinkPath}};
      answer_.why = file.Why();
      return TakeAskers(record);
    }
  }

  void TakeAskers(const FileRecord& record) {
    for (const Origin& asker : record.askers) asked_.AddAsker(asker);
  }

  // Adds who asks for something, up to the lines of the project. Each file is followed once.
  void AddWay(const std::vector<Origin>& askers, TreeNode& asked, int step) {
    constexpr int kMostSteps = 20;
    for (const Origin& origin : askers) {
      TreeNode& asker = asked.Add("", TextOf(strings_, origin), NodeImage::File);
      const std::string name = AskingFile(origin);
      if (name.empty() || step == kMostSteps || !followed_.insert(UpperCase(name)).second) continue;
      const CFiles& files = analysis_.Files();
      if (const auto file = files.FindItem(files.KeyOf(name))) AddWay(file->askers, asker, step + 1);
    }
  }

  // The first one stays.
  void SetVerdict(TextId verdict) {
    answer_.isKnown = true;
    if (answer_.verdict.id == TextId{}) answer_.verdict = {verdict, {list_}};
  }

  void NameNear() {
    constexpr std::size_t kMostNear = 5;
    constexpr std::size_t kMostDifferences = 2;
    answer_.verdict = {TextId::ExplainUnknown, {answer_.name}};
    const std::string& wanted = upperNames_.front();
    std::set<std::string> taken;
    for (const std::string& name : seen_) {
      const std::string upper = UpperCase(name);
      const bool isNear = upper.find(wanted) != std::string::npos || IsLike(upper, wanted, kMostDifferences);
      if (!name.empty() && isNear && answer_.near.size() < kMostNear && taken.insert(upper).second)
        answer_.near.push_back(name);
    }
  }

  const Outcome& outcome_;
  const Analysis& analysis_ = *outcome_.analysis;
  const StringTable& strings_;
  const std::string list_;
  std::string upperPath_;                // empty when any folder will do
  std::vector<std::string> upperNames_;  // of the file, as it and the libraries of the name have it
  std::vector<std::string> seen_;
  FileRecord asked_;
  std::set<std::string> followed_;  // in upper case
  Explanation answer_;
};

}  // namespace

Explanation Explain(const Outcome& outcome, const StringTable& strings, const std::string& name,
                    const std::string& list) {
  return Question(outcome, strings, name, list).Answer();
}

}  // namespace bxvbwiz
