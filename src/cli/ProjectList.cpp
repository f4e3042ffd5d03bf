#include "cli/ProjectList.h"

#include <algorithm>
#include <iostream>
#include <set>

#include "project/CProject.h"
#include "project/TypeLibraryFile.h"
#include "support/basFile.h"
#include "support/basStr.h"
#include "text/ProfileLine.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using Names = std::vector<std::string>;

constexpr std::string_view kGroupMark = "VBGROUP";
constexpr std::string_view kProjectMark = "*\\A";  // in front of the path of a project

bool IsGroup(const std::string& path) {
  return EndsWith(UpperCase(path), ".VBG");
}

// The libraries that a project makes and those that it needs, in upper case: file names of programs, full
// paths of project files, and identifiers with braces.
struct Links {
  std::set<std::string> offers;
  std::set<std::string> asks;

  bool Need(const Links& other) const {
    return std::any_of(other.offers.begin(), other.offers.end(),
                       [this](const std::string& name) { return asks.count(name) != 0; });
  }
};

class ListMaker {
 public:
  explicit ListMaker(Computer& computer) : computer_(computer), platform_(computer.platform()) {}

  std::vector<ListedProject> Make(const Options& options) {
    for (const std::string& given : options.projects) {
      std::string path = computer_.ProjectPath(given);
      if (NamesList(options)) path = NormalPath(platform_.files, path);
      if (path.empty()) {
        Add(given, WhyNotThere(given, options.machine));
      } else if (IsGroup(path)) {
        AddGroup(path);
      } else {
        Add(path, {});
      }
    }
    return projects_.size() < 2 ? projects_ : Ordered();
  }

 private:
  std::string Text(const Sentence& sentence) const { return TextOf(platform_.strings, sentence); }

  void Tell(TextId text, const std::string& value) const {
    std::cerr << "bxvbwiz: " << Text({text, {value}}) << '\n';
  }

  void Add(const std::string& path, const Sentence& error) {
    if (known_.insert(UpperCase(path)).second) {
      projects_.push_back({path, Text(error)});
    } else {
      Tell(TextId::ProjectTwice, path);
    }
  }

  void AddGroup(const std::string& path) {
    std::string bytes;
    const SystemError error = platform_.files.Read(path, bytes);
    const TextId why = MeansMissing(error) ? TextId::FileDoesNotExist : TextId::FileMayNotBeRead;
    if (error != SystemError::Success) return Add(path, {why, {path, ErrorCode(error)}});
    if (!EqualsIgnoreCase(bytes.substr(0, kGroupMark.size()), kGroupMark))
      return Add(path, {TextId::NoProjectGroup, {path}});
    bool isEmpty = true;
    LineReader reader(bytes);
    for (std::string_view line; reader.Next(line);) {
      const std::string text = platform_.codePage.Decode(line);
      const std::string key(KeyName(text));
      const std::string name(KeyValue(text));
      const bool isMember = EqualsIgnoreCase(key, "StartupProject") || EqualsIgnoreCase(key, "Project");
      if (name.empty() || !isMember) continue;
      AddMember(Beside(path, name), LineOrigin(path, reader.Number()));
      isEmpty = false;
    }
    if (isEmpty) Add(path, {TextId::EmptyProjectGroup, {path}});
  }

  void AddMember(const std::string& path, const Origin& line) {
    std::vector<FoundFile> found;
    const bool isThere = platform_.files.Find(path, found) == SystemError::Success;
    const Sentence fault = {isThere ? TextId::GroupInGroup : TextId::FileDoesNotExist, {path}};
    const bool isProject = isThere && !IsGroup(path);
    Add(path, isProject ? Sentence() : Sentence{TextId::NamedBy, {Text(line), Text(fault)}});
  }

  // The full path of a file that another names.
  std::string Beside(const std::string& path, const std::string& name) const {
    return NormalPath(platform_.files, SourcePath(GetPathFolder(path), name));
  }

  Links LinksOf(const std::string& path) const {
    std::string bytes;
    std::string program;
    std::string folder;
    Links links;
    platform_.files.Read(path, bytes);
    LineReader reader(bytes);
    for (std::string_view line; reader.Next(line);) {
      const std::string text = platform_.codePage.Decode(line);
      const std::string value = text.substr(text.find('=') + 1);
      const bool isReference = StartsWith(text, "Reference=");
      if (StartsWith(text, "ExeName32=")) program = StripQuotes(value);
      if (StartsWith(text, "Path32=")) folder = StripQuotes(value);
      if (!isReference && !StartsWith(text, "Object=")) continue;
      const LibraryLine library = isReference ? ReadReferenceLine(value) : ReadControlLine(value);
      links.asks.insert({UpperCase(library.identifier), UpperCase(library.fileName)});
      if (StartsWith(value, kProjectMark))
        links.asks.insert(UpperCase(Beside(path, value.substr(kProjectMark.size()))));
    }
    links.offers = {UpperCase(path)};
    const std::string title = ParsePath(path, PathPart::Title);
    // A project that names no program is called like its file.
    for (const std::string& name :
         program.empty() ? Names{title + ".dll", title + ".exe", title + ".ocx"} : Names{program}) {
      links.offers.insert(UpperCase(name));
      const std::string built = Beside(path, folder.empty() ? name : FixPath(folder) + name);
      for (const TypeLibraryFacts& library : ReadTypeLibraries(platform_, built).libraries)
        links.offers.insert(library.identifier);
    }
    return links;
  }

  std::vector<ListedProject> Ordered() const {
    const std::size_t count = projects_.size();
    std::vector<Links> links;
    for (const ListedProject& project : projects_) links.push_back(LinksOf(project.path));
    std::vector<std::set<std::size_t>> needs(count);  // of each those that it needs, also through others
    for (std::size_t a = 0; a < count; ++a) {
      for (std::size_t b = 0; b < count; ++b) {
        if (a != b && links[a].Need(links[b])) needs[a].insert(b);
      }
    }
    for (std::size_t through = 0; through < count; ++through) {
      const std::set<std::size_t> more = needs[through];
      for (std::set<std::size_t>& indexes : needs) {
        if (indexes.count(through) != 0) indexes.insert(more.begin(), more.end());
      }
    }
    TellCircles(needs);
    std::vector<ListedProject> ordered;
    std::vector<bool> isDone(count);
    while (ordered.size() < count) {
      std::size_t next = 0;
      const auto isAhead = [&](std::size_t b) { return !isDone[b] && needs[b].count(next) == 0; };
      while (isDone[next] || std::any_of(needs[next].begin(), needs[next].end(), isAhead)) ++next;
      isDone[next] = true;
      ordered.push_back(projects_[next]);
    }
    return ordered;
  }

  void TellCircles(const std::vector<std::set<std::size_t>>& needs) const {
    for (std::size_t a = 0; a < needs.size(); ++a) {
      std::vector<std::string> paths;
      for (const std::size_t b : needs[a]) {
        if (needs[b].count(a) != 0 && b < a) break;  // told already
        if (needs[b].count(a) != 0) paths.push_back(projects_[b].path);
      }
      if (!paths.empty()) Tell(TextId::ProjectCircle, Joined(paths));
    }
  }

  Computer& computer_;
  Platform& platform_;
  std::vector<ListedProject> projects_;
  std::set<std::string> known_;  // in upper case
};

}  // namespace

bool NamesList(const Options& options) {
  return options.projects.size() > 1 || IsGroup(options.projects.front());
}

std::vector<ListedProject> ListProjects(const Options& options, Computer& computer) {
  return ListMaker(computer).Make(options);
}

}  // namespace bxvbwiz
