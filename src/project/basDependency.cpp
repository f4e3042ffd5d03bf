#include "project/basDependency.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/Conversion.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kUsesBuffer = 254;
constexpr std::size_t kSectionBuffer = 510;
constexpr std::size_t kListBuffer = 0xFFFF;  // bytes; some thousand names
constexpr const char* kListEnd = "NONE";     // reads where a key is missing

// Parts of an LCID: LANGIDFROMLCID, PRIMARYLANGID and LANG_ENGLISH of winnt.h.
constexpr std::uint32_t kLanguageOfLcid = 0xFFFF;
constexpr std::uint32_t kPrimaryLanguage = 0x3FF;
constexpr std::uint32_t kEnglish = 0x09;

std::string UsesKey(int number) {
  return "Uses" + std::to_string(number);
}

// The names of a section's keys, or of the file's sections.
std::vector<std::string> ProfileNames(ProfileStrings& profiles, ProfileText section,
                                      const std::string& file) {
  const std::string list = profiles.GetString(section, std::nullopt, "", kListBuffer, file);
  std::vector<std::string> names;
  for (std::size_t start = 0; start < list.size(); start += names.back().size() + 1)
    names.push_back(list.substr(start, list.find('\0', start) - start));
  return names;
}

bool SectionExists(Platform& platform, const std::string& file, const std::string& section) {
  return !platform.profiles.GetString(section, std::nullopt, "", kSectionBuffer, file).empty();
}

// The language of a section that is named "<name> <0009>", four hexadecimal digits; nothing when it is not.
std::optional<std::uint32_t> SectionLanguage(const std::string& section, const std::string& name) {
  constexpr std::size_t kTail = 7;  // " <0009>"
  if (section.size() <= kTail || !EndsWith(section, ">")) return std::nullopt;
  const std::size_t end = section.size() - kTail;
  if (section.compare(end, 2, " <") != 0) return std::nullopt;
  std::uint32_t language = 0;
  const char* digitsEnd = section.data() + section.size() - 1;
  const auto [rest, error] = std::from_chars(section.data() + end + 2, digitsEnd, language, 16);
  if (error != std::errc() || rest != digitsEnd) return std::nullopt;
  if (!EqualsIgnoreCase(std::string_view(section).substr(0, end), name)) return std::nullopt;
  return language;
}

// Where the facts say that the file lies; its name when they do not know.
std::string FoundPath(const CDependency& file) {
  return file.LinkResolves ? file.SourceOf(file.Name) : file.Name;
}

// The .dep file that describes a file, and the section of it that does; both empty when there is none.
struct Description {
  std::string depFile;
  std::string section;
};

// What `depFile` says of a file. One that merely has the file's title says nothing of it.
Description Describe(Platform& platform, const std::string& depFile, const std::string& name) {
  const std::string section = FindDepSection(platform, depFile, name);
  return section.empty() ? Description{} : Description{depFile, section};
}

// The walk over a file and everything that it needs: depth first, each file followed by what it needs before
// the next one is taken. The files under way are kept in a list, not on the stack: a chain of files is as
// long as its author likes.
class DependencyWalk {
 public:
  DependencyWalk(AnalysisContext& context, CDependencies& allDependencies)
      : context_(context), all_(allDependencies), systemFolder_(SystemFolder(context.platform)) {}

  // A file whose needs are being read: first the numbered keys of its .dep file, then its imports.
  struct Step {
    Step(std::string stepPath, Description stepUses, CDependencies& stepOwn)
        : path(std::move(stepPath)), uses(std::move(stepUses)), own(&stepOwn) {}

    std::string path;  // of the file, or its name
    Description uses;  // none when its list has ended
    CDependencies* own;
    int lastUses = 0;
    bool importsRead = false;
    std::string folder;                                 // where the importing file was found
    const std::vector<std::string>* imports = nullptr;  // as its import table gives them
    std::size_t nextImport = 0;
  };

  void Run(Step first) {
    steps_.push_back(std::move(first));
    while (!steps_.empty()) {
      if (!GoOn(steps_.back())) steps_.pop_back();
    }
  }

 private:
  // Takes the next file that the step's file needs and enters it. False when there is none. When there
  // is one, `step` is gone after the call.
  bool GoOn(Step& step) {
    std::string name;
    if (NextUsed(step, name)) {
      const OriginScope origin(UsesOrigin(step));
      Take(*step.own, name, name, Describe(context_.platform, step.uses.depFile, name));
      return true;
    }
    if (!NextImport(step, name)) return false;
    // The redistributables have a place of their own, which the facts know; what lies elsewhere beside its
    // importer is found by its path only.
    const bool besideImporter = !EqualsIgnoreCase(step.folder, context_.global.RedistributablesFolder()) &&
                                FolderHoldsFile(context_.platform.files, step.folder, name);
    const OriginScope origin(ImportsOrigin(step));
    Take(*step.own, name, besideImporter ? step.folder + name : name, {});
    return true;
  }

  bool NextUsed(Step& step, std::string& name) {
    while (!step.uses.depFile.empty()) {
      name = context_.platform.profiles.GetString(step.uses.section, UsesKey(++step.lastUses), kListEnd,
                                                  kUsesBuffer, step.uses.depFile);
      if (name == kListEnd || TrimBlanks(name).empty()) {
        NoteUsesAfterGap(step);
        step.uses = {};
        return false;
      }
      name = NormalPath(context_.platform.files, name);
      if (IsNew(name, UsesOrigin(step))) return true;
    }
    return false;
  }

  // Notes what the section names behind the end of its list, where nothing reads it.
  void NoteUsesAfterGap(const Step& step) {
    const auto& [depFile, section] = step.uses;
    ProfileStrings& profiles = context_.platform.profiles;
    for (const std::string& key : ProfileNames(profiles, section, depFile)) {
      constexpr std::string_view kUses = "USES";
      const bool isUses = StartsWith(UpperCase(key), kUses);
      if (!isUses || TextToNumber(key.substr(kUses.size())).value_or(0) <= step.lastUses) continue;
      const std::string name(TrimBlanks(profiles.GetString(section, key, "", kUsesBuffer, depFile)));
      if (name.empty() || name == kListEnd) continue;
      step.own->afterGap.push_back({FindingId::UsesAfterGap,
                                    {name, UsesKey(step.lastUses)},
                                    {TextId::OriginUses, {depFile, section, key}}});
    }
  }

  bool NextImport(Step& step, std::string& name) {
    if (!step.importsRead) {
      const CallStackEntry entry("FindDependencies");
      step.importsRead = true;
      step.folder = Locate(step.path);
      step.imports = &context_.executables.Of(step.folder + GetPathFileName(step.path)).imports;
    }
    while (step.nextImport < step.imports->size()) {
      name = GetPathFileName((*step.imports)[step.nextImport++]);
      if (!name.empty() && IsNew(name, ImportsOrigin(step))) return true;
    }
    return false;
  }

  // False for a file of the system and for one that is known, which is then asked for once more.
  bool IsNew(const std::string& name, const Origin& origin) const {
    if (context_.global.IsSystemFile(name)) {
      if (context_.passedOver == nullptr) return false;
      FileRecord& file = (*context_.passedOver)[UpperCase(name)];
      if (file.askers.size() < kMostAskers) file.AddAsker(origin);
      return false;
    }
    CDependency* const known = all_.FindName(name);
    if (known != nullptr) known->AddAsker(origin);
    return known == nullptr;
  }

  static Origin UsesOrigin(const Step& step) {
    return {TextId::OriginUses, {step.uses.depFile, step.uses.section, UsesKey(step.lastUses)}};
  }
  static Origin ImportsOrigin(const Step& step) {
    return {TextId::OriginImports, {step.folder + GetPathFileName(step.path)}};
  }

  // Adds a file, has its facts filled and begins to read what it needs. `known` describes it, or is none.
  void Take(CDependencies& own, const std::string& name, const std::string& path, Description known) {
    const CallStackEntry entry("CDependency:GetDependencies");
    const std::shared_ptr<CDependency> file = own.Add(name);
    file->AddAsker(CurrentOrigin());
    if (&own != &all_) all_.AddShared(file);
    context_.builder.GetFileGroupInfo("", path, known.depFile, nullptr, *file);
    if (known.depFile.empty()) {
      // A .dep file of its own is known only when the file has been found; it then changes the facts.
      known = Describe(context_.platform, FindDepFile(context_, FoundPath(*file)), name);
      if (!known.depFile.empty()) DecideAnew(*file, path, known);
    }
    file->FileName = known.depFile;
    file->Dependencies().FileName = known.depFile;
    steps_.emplace_back(file->LinkResolves ? FoundPath(*file) : path, std::move(known), file->Dependencies());
  }

  // Lets a file's own .dep file decide its facts. A file that was found stays where it was found; and where
  // the .dep file names no destination, the one that the search gave stays as well.
  void DecideAnew(CDependency& file, const std::string& path, const Description& known) {
    if (!file.LinkResolves) {
      context_.builder.GetFileGroupInfo("", path, known.depFile, nullptr, file);
      return;
    }
    constexpr std::size_t kDestBuffer = 255;
    const bool saysWhere =
        !context_.platform.profiles.GetString(known.section, "Dest", "", kDestBuffer, known.depFile).empty();
    std::string destination = saysWhere ? "" : file.Destination;
    if (!saysWhere && destination.empty()) destination = kApplicationMacro;
    const std::vector<Sentence> before = file.reasons;
    context_.builder.GetFileGroupInfo(destination, FoundPath(file), known.depFile, nullptr, file);
    // The first reason is that of the destination.
    if (!saysWhere && !before.empty() && !file.reasons.empty()) file.reasons.front() = before.front();
  }

  // The folder of a file: its own, that of the redistributables, or else the system folder.
  std::string Locate(const std::string& path) {
    FileSystem& files = context_.platform.files;
    const std::string name = GetPathFileName(path);
    // A name without a folder is not looked for in the root of the current drive.
    const std::string own = GetPathFolder(path);
    if (!own.empty() && FolderHoldsFile(files, FixPath(own), name)) return FixPath(own);
    const std::string& redistributables = context_.global.RedistributablesFolder();
    if (!redistributables.empty() && FolderHoldsFile(files, redistributables, name)) return redistributables;
    return systemFolder_;
  }

  AnalysisContext& context_;
  CDependencies& all_;
  std::vector<Step> steps_;
  std::string systemFolder_;
};

}  // namespace

std::string SystemFolder(Platform& platform) {
  constexpr std::size_t kBuffer = 254;
  return FixPath(platform.facts.SystemDirectory(kBuffer));
}

std::string FindDepSection(Platform& platform, const std::string& depFile, const std::string& name) {
  if (depFile.empty() || name.empty()) return "";
  if (SectionExists(platform, depFile, name)) return name;
  const std::uint32_t language = platform.facts.UserLanguage() & kLanguageOfLcid;
  const std::uint32_t wanted[] = {language, language & kPrimaryLanguage, kEnglish};
  std::size_t bestRank = std::size(wanted) + 1;
  std::string best;
  for (const std::string& section : ProfileNames(platform.profiles, std::nullopt, depFile)) {
    const std::optional<std::uint32_t> found = SectionLanguage(section, name);
    if (!found) continue;
    const auto* place = std::find(std::begin(wanted), std::end(wanted), *found);
    const auto rank = static_cast<std::size_t>(place - std::begin(wanted));
    if (rank >= bestRank || !SectionExists(platform, depFile, section)) continue;
    bestRank = rank;
    best = section;
  }
  return best;
}

std::string FindDepFile(AnalysisContext& context, const std::string& filePath) {
  const std::string name = ParsePath(filePath, PathPart::Title) + ".dep";
  const std::string folder = GetPathFolder(filePath);
  const std::string systemFolder = SystemFolder(context.platform);
  if (!folder.empty() && FolderHoldsFile(context.platform.files, FixPath(folder), name)) {
    return FixPath(folder) + name;
  }
  return FolderHoldsFile(context.platform.files, systemFolder, name) ? systemFolder + name : "";
}

void ReadDependencies(AnalysisContext& context, const std::string& name, const std::string& filePath,
                      const std::string& depFile, CDependencies& ownDependencies,
                      CDependencies& allDependencies) {
  if (!depFile.empty()) ownDependencies.FileName = depFile;
  DependencyWalk(context, allDependencies)
      .Run({filePath, Describe(context.platform, depFile, name), ownDependencies});
}

}  // namespace bxvbwiz
